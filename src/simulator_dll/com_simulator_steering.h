#pragma once

#include "simulator/simulator.h"

#include <atomic>

#include <windows.h>
#include <oaidl.h>

namespace vantrel::com {

// The steering object of a simulator (see kSteeringMember): an object of
// its own, which keeps the simulator's object alive while it lives.
class SimulatorSteeringDispatch final : public IDispatch {
public:
    // Takes a reference to `owner`, the object that holds `simulator`.
    SimulatorSteeringDispatch(IDispatch& owner, Simulator& simulator);
    ~SimulatorSteeringDispatch();
    SimulatorSteeringDispatch(const SimulatorSteeringDispatch&) = delete;
    SimulatorSteeringDispatch& operator=(const SimulatorSteeringDispatch&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* argumentError) override;

private:
    std::atomic<ULONG> references_{1};
    IDispatch& owner_;
    Simulator& simulator_;
};

}  // namespace vantrel::com
