#include "com_simulator_steering.h"

#include "com/com_variant.h"
#include "com_simulator_control.h"
#include "script/script_line.h"
#include "script/simulator_steering.h"

#include <memory>
#include <string>

namespace vantrel::com {

SimulatorSteeringDispatch::SimulatorSteeringDispatch(IDispatch& owner, Simulator& simulator)
    : owner_(owner)
    , simulator_(simulator) {
    owner_.AddRef();
}

SimulatorSteeringDispatch::~SimulatorSteeringDispatch() { owner_.Release(); }

HRESULT SimulatorSteeringDispatch::QueryInterface(REFIID id, void** object) {
    if (!object) {
        return E_POINTER;
    }
    if (!IsEqualIID(id, IID_IUnknown) && !IsEqualIID(id, IID_IDispatch)) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

ULONG SimulatorSteeringDispatch::Release() {
    const ULONG left = --references_;
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT SimulatorSteeringDispatch::GetTypeInfoCount(UINT* count) {
    if (!count) {
        return E_POINTER;
    }
    *count = 0;
    return S_OK;
}

HRESULT SimulatorSteeringDispatch::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info) {
        *info = nullptr;
    }
    return DISP_E_BADINDEX;
}

HRESULT SimulatorSteeringDispatch::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!names || !ids || count != 1 || !names[0]) {
        return E_INVALIDARG;
    }
    const std::wstring name = names[0];
    ids[0] = name == L"Steer" ? kSteerId : name == L"UseScriptClock" ? kUseScriptClockId : DISPID_UNKNOWN;
    return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT SimulatorSteeringDispatch::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                          VARIANT* result, EXCEPINFO*, UINT*) {
    if (!(flags & DISPATCH_METHOD) || !parameters) {
        return DISP_E_MEMBERNOTFOUND;
    }
    try {
        if (member == kUseScriptClockId) {
            simulator_.RestartOnScriptClock();
            return S_OK;
        }
        if (member != kSteerId) {
            return DISP_E_MEMBERNOTFOUND;
        }
        if (parameters->cArgs != 1 || V_VT(&parameters->rgvarg[0]) != VT_BSTR) {
            return DISP_E_BADPARAMCOUNT;
        }
        const BSTR line = V_BSTR(&parameters->rgvarg[0]);
        const ParsedLine parsed = ParseScriptLine(ToUtf8(TextOf(line)));
        std::string outcome;
        if (const auto* command = std::get_if<ScriptCommand>(&parsed)) {
            outcome = SteerSimulator(simulator_, *command);
        } else if (const auto* error = std::get_if<ScriptError>(&parsed)) {
            outcome = error->message;
        } else {
            outcome = "not a server or forecourt line";
        }
        if (result) {
            VariantInit(result);
            V_VT(result) = VT_BSTR;
            V_BSTR(result) = AllocateText(FromUtf8(outcome));
        }
        return S_OK;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

}  // namespace vantrel::com
