#pragma once

#include "simulator_dll/com_simulator_control.h"
#include "simulator_dll/com_simulator_steering.h"
#include "simulator/simulator.h"

#include <atomic>
#include <string>
#include <vector>

#include <windows.h>
#include <oaidl.h>

namespace vantrel::com {

// Objects and locks alive in the module; the DLL may unload at zero.
extern std::atomic<long> gModuleReferences;

// The built-in simulator behind IDispatch: a name table built from the
// simulator's members (DISPIDs from 1 in that order) and an Invoke that
// accepts the styles the console uses. Its errors go out as EXCEPINFO with
// the simulator's number and description.
class SimulatorDispatch final : public IDispatch, public ISimulatorControl {
public:
    SimulatorDispatch();
    ~SimulatorDispatch();
    SimulatorDispatch(const SimulatorDispatch&) = delete;
    SimulatorDispatch& operator=(const SimulatorDispatch&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* argumentError) override;

    HRESULT STDMETHODCALLTYPE QueueAnswer(BSTR member, const VARIANT* answer) override;
    HRESULT STDMETHODCALLTYPE QueueFailure(BSTR member, LONG number, BSTR description) override;
    HRESULT STDMETHODCALLTYPE LastAssignment(BSTR* member, VARIANT* value) override;

private:
    HRESULT Dispatch(const std::string& name, WORD flags, DISPPARAMS& parameters, VARIANT* result);

    std::atomic<ULONG> references_{1};
    Simulator simulator_;
    std::vector<std::string> names_;  // DISPID n is names_[n - 1]
};

}  // namespace vantrel::com
