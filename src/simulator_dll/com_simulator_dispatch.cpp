#include "com_simulator_dispatch.h"

#include "com/com_errors.h"
#include "com/com_variant.h"

#include <new>

namespace vantrel::com {

std::atomic<long> gModuleReferences{0};

namespace {

constexpr wchar_t kSource[] = L"Vantrel.Application";

char16_t LowerAscii(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c; }

bool SameName(const std::string& known, const Text& asked) {
    if (known.size() != asked.size()) {
        return false;
    }
    for (std::size_t i = 0; i < known.size(); ++i) {
        if (LowerAscii(static_cast<char16_t>(known[i])) != LowerAscii(asked[i])) {
            return false;
        }
    }
    return true;
}

// Writes a by-reference argument back where the caller's value lives.
void WriteBack(VARIANT& argument, const Variant& value) {
    if (V_VT(&argument) == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(&argument)) {
        VARIANT& target = *V_VARIANTREF(&argument);
        VARIANT replacement;
        ToComVariant(value, replacement);
        VariantClear(&target);
        target = replacement;
    } else if (V_VT(&argument) == (VT_BYREF | VT_I2) && V_I2REF(&argument)) {
        *V_I2REF(&argument) = ToInt16(value);
    }
}

}  // namespace

SimulatorDispatch::SimulatorDispatch() {
    for (const auto& member : simulator_.Members()) {
        names_.push_back(member.first);
    }
    ++gModuleReferences;
}

SimulatorDispatch::~SimulatorDispatch() { --gModuleReferences; }

HRESULT SimulatorDispatch::QueryInterface(REFIID id, void** object) {
    if (!object) {
        return E_POINTER;
    }
    if (IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch)) {
        *object = static_cast<IDispatch*>(this);
    } else if (IsEqualIID(id, kSimulatorControlId)) {
        *object = static_cast<ISimulatorControl*>(this);
    } else {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

ULONG SimulatorDispatch::AddRef() { return ++references_; }

ULONG SimulatorDispatch::Release() {
    const ULONG left = --references_;
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT SimulatorDispatch::GetTypeInfoCount(UINT* count) {
    if (!count) {
        return E_POINTER;
    }
    *count = 0;  // late binding only: no type description
    return S_OK;
}

HRESULT SimulatorDispatch::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info) {
        *info = nullptr;
    }
    return DISP_E_BADINDEX;
}

HRESULT SimulatorDispatch::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!IsEqualIID(id, IID_NULL)) {
        return DISP_E_UNKNOWNINTERFACE;
    }
    if (!names || !ids || count == 0) {
        return E_INVALIDARG;
    }
    // No member has named parameters: any name after the first is unknown.
    HRESULT outcome = S_OK;
    for (UINT i = 0; i < count; ++i) {
        ids[i] = DISPID_UNKNOWN;
    }
    if (!names[0]) {
        return DISP_E_UNKNOWNNAME;
    }
    const Text asked(reinterpret_cast<const char16_t*>(names[0]));
    if (count == 1 && _wcsicmp(names[0], kSteeringMember) == 0) {
        ids[0] = kSteeringMemberId;
        return S_OK;
    }
    for (std::size_t i = 0; i < names_.size(); ++i) {
        if (SameName(names_[i], asked)) {
            ids[0] = static_cast<DISPID>(i + 1);
        }
    }
    if (ids[0] == DISPID_UNKNOWN || count > 1) {
        outcome = DISP_E_UNKNOWNNAME;
    }
    return outcome;
}

HRESULT SimulatorDispatch::Invoke(DISPID member, REFIID id, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                  EXCEPINFO* exception, UINT*) {
    if (!IsEqualIID(id, IID_NULL)) {
        return DISP_E_UNKNOWNINTERFACE;
    }
    if (member == kSteeringMemberId && (flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)) && result) {
        auto* steering = new (std::nothrow) SimulatorSteeringDispatch(*this, simulator_);
        if (!steering) {
            return E_OUTOFMEMORY;
        }
        VariantInit(result);
        V_VT(result) = VT_DISPATCH;
        V_DISPATCH(result) = steering;  // the one reference goes to the caller
        return S_OK;
    }
    if (member < 1 || static_cast<std::size_t>(member) > names_.size()) {
        return DISP_E_MEMBERNOTFOUND;
    }
    if (!parameters || (parameters->cArgs > 0 && !parameters->rgvarg)) {
        return E_INVALIDARG;
    }
    // Nothing may leave a COM method as a C++ exception.
    try {
        return Dispatch(names_[static_cast<std::size_t>(member) - 1], flags, *parameters, result);
    } catch (const RuntimeError& error) {
        if (!exception) {
            return ScodeOf(error);
        }
        FillException(error, kSource, *exception);
        return DISP_E_EXCEPTION;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

HRESULT SimulatorDispatch::Dispatch(const std::string& name, WORD flags, DISPPARAMS& parameters, VARIANT* result) {
    if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
        if (parameters.cArgs != 1) {
            return DISP_E_BADPARAMCOUNT;
        }
        if (parameters.cNamedArgs != 1 || !parameters.rgdispidNamedArgs ||
            parameters.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT) {
            return DISP_E_PARAMNOTFOUND;
        }
        simulator_.Put(name, FromComVariant(parameters.rgvarg[0]));
        return S_OK;
    }
    if (!(flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET))) {
        return DISP_E_MEMBERNOTFOUND;
    }
    if (parameters.cNamedArgs != 0) {
        return DISP_E_NONAMEDARGS;
    }
    Variant answer;
    if (parameters.cArgs == 0) {
        answer = simulator_.Call(name);
    } else if (parameters.cArgs == 1) {
        VARIANT& argument = parameters.rgvarg[0];
        Variant value = FromComVariant(argument);
        if (V_VT(&argument) & VT_BYREF) {
            const Variant before = value;
            answer = simulator_.CallByRef(name, value);
            if (!(value == before)) {
                WriteBack(argument, value);
            }
        } else {
            answer = simulator_.Call(name, value);
        }
    } else {
        return DISP_E_BADPARAMCOUNT;
    }
    if (result) {
        ToComVariant(answer, *result);
    }
    return S_OK;
}

HRESULT SimulatorDispatch::QueueAnswer(BSTR member, const VARIANT* answer) {
    if (!answer) {
        return E_POINTER;
    }
    try {
        simulator_.QueueAnswer(ToUtf8(TextOf(member)), FromComVariant(*answer));
        return S_OK;
    } catch (const RuntimeError& error) {
        return ScodeOf(error);
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

HRESULT SimulatorDispatch::QueueFailure(BSTR member, LONG number, BSTR description) {
    try {
        simulator_.QueueFailure(ToUtf8(TextOf(member)),
                                RuntimeError(static_cast<int>(number), ToUtf8(TextOf(description))));
        return S_OK;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

HRESULT SimulatorDispatch::LastAssignment(BSTR* member, VARIANT* value) {
    if (!member || !value) {
        return E_POINTER;
    }
    *member = nullptr;
    VariantInit(value);
    const auto last = simulator_.LastAssignment();
    if (!last) {
        return S_FALSE;
    }
    try {
        *member = AllocateText(FromUtf8(last->first));
        ToComVariant(last->second, *value);
        return S_OK;
    } catch (...) {
        SysFreeString(*member);
        *member = nullptr;
        return E_OUTOFMEMORY;
    }
}

}  // namespace vantrel::com
