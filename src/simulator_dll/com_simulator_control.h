#pragma once

#include <windows.h>
#include <oaidl.h>

namespace vantrel::com {

// The class of the built-in simulator as a COM server.
// {65D1ACEB-751F-4312-ACA3-5C15CB65C66D}
inline constexpr CLSID kSimulatorClassId = {
    0x65d1aceb, 0x751f, 0x4312, {0xac, 0xa3, 0x5c, 0x15, 0xcb, 0x65, 0xc6, 0x6d}};

// {CB9F0632-FBFB-4ADF-9151-B44C0D182B1A}
inline constexpr IID kSimulatorControlId = {
    0xcb9f0632, 0xfbfb, 0x4adf, {0x91, 0x51, 0xb4, 0x4c, 0x0d, 0x18, 0x2b, 0x1a}};

// A member outside the server's names, for script mode's server and
// forecourt lines: reading it gives a dispatch object of its own, which the
// system's dispatch marshaller takes to a simulator in another process too.
// That object's members:
//   Steer(line As String) As String   carries out one server or forecourt
//                                     line; "" when done, else the reason
//   UseScriptClock()                  starts the simulator over on a clock
//                                     that only "server time" lines move
inline constexpr wchar_t kSteeringMember[] = L"SimulatorSteering";
inline constexpr DISPID kSteeringMemberId = 0x10000;  // past the member table's DISPIDs
inline constexpr DISPID kSteerId = 1;
inline constexpr DISPID kUseScriptClockId = 2;

// Steers the simulator behind the dispatch interface, for tests in the same
// process (there is no proxy for it). The console never sees it: its members
// are not in the dispatch name table, so the server's names stay the real
// server's.
class ISimulatorControl : public IUnknown {
public:
    // The next call of the member answers this value.
    virtual HRESULT STDMETHODCALLTYPE QueueAnswer(BSTR member, const VARIANT* answer) = 0;
    // The next call or assignment of the member raises this error.
    virtual HRESULT STDMETHODCALLTYPE QueueFailure(BSTR member, LONG number, BSTR description) = 0;
    // The most recent assignment as the simulator received it; S_FALSE when
    // there was none yet.
    virtual HRESULT STDMETHODCALLTYPE LastAssignment(BSTR* member, VARIANT* value) = 0;
};

}  // namespace vantrel::com
