#include "com_dispatch.h"

#include "com/com_errors.h"
#include "com/com_variant.h"

#include <string>

namespace vantrel {

void RegisterComServer(ServerRegistry& registry, std::string progId) {
    const std::string name = progId;
    registry.Register(std::move(progId),
                      [name]() -> std::unique_ptr<AutomationObject> { return com::ComObject::Create(name); });
}

namespace com {

Apartment::Apartment() {
    const HRESULT result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (result == RPC_E_CHANGED_MODE) {
        return;  // the thread is in a multithreaded apartment; calls still work from there
    }
    if (FAILED(result)) {
        throw ErrorFromCreation(result);
    }
    initialised_ = true;  // S_OK, or S_FALSE when it already was: both are balanced
}

Apartment::~Apartment() {
    if (initialised_) {
        CoUninitialize();
    }
}

std::unique_ptr<ComObject> ComObject::Create(std::string_view progId, Host host) {
    std::unique_ptr<ComObject> object(new ComObject());
    const std::wstring name = WideName(progId);
    CLSID classId{};
    HRESULT result =
        name.find(L'\0') == std::wstring::npos ? CLSIDFromProgID(name.c_str(), &classId) : CO_E_CLASSSTRING;
    if (SUCCEEDED(result)) {
        // No host name: an in-process server or one on this workstation.
        const DWORD where = host == Host::OwnProcess ? CLSCTX_LOCAL_SERVER : CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER;
        result = CoCreateInstance(classId, nullptr, where, IID_IDispatch, reinterpret_cast<void**>(&object->dispatch_));
    }
    if (FAILED(result) || !object->dispatch_) {
        throw ErrorFromCreation(result);
    }
    return object;
}

ComObject::ComObject(IDispatch* dispatch)
    : dispatch_(dispatch) {
    if (!dispatch_) {
        throw errors::ObjectNotSet();
    }
    dispatch_->AddRef();
}

ComObject::~ComObject() {
    if (dispatch_) {
        dispatch_->Release();
    }
}

DISPID ComObject::Lookup(std::string_view member) {
    std::wstring name = WideName(member);
    if (name.empty() || name.find(L'\0') != std::wstring::npos) {
        throw errors::UnsupportedMember();  // no member can have such a name
    }
    LPOLESTR names[] = {name.data()};
    DISPID id = DISPID_UNKNOWN;
    const HRESULT result = dispatch_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(result)) {
        throw ErrorFromHresult(result);
    }
    return id;
}

void ComObject::Invoke(std::string_view member, WORD flags, DISPPARAMS& parameters, VARIANT* result) {
    const DISPID id = Lookup(member);
    EXCEPINFO exception{};
    UINT argumentError = 0;
    const HRESULT outcome =
        dispatch_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, &exception, &argumentError);
    if (outcome == DISP_E_EXCEPTION) {
        const RuntimeError error = ErrorFromException(exception);
        ClearException(exception);
        throw error;
    }
    ClearException(exception);  // a server may fill it and still answer otherwise
    if (FAILED(outcome)) {
        throw ErrorFromHresult(outcome);
    }
}

void ComObject::Put(std::string_view member, const Variant& value) {
    ScopedVariant argument(value);
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{argument.get(), &named, 1, 1};
    Invoke(member, DISPATCH_PROPERTYPUT, parameters, nullptr);
}

Variant ComObject::Call(std::string_view member) {
    ScopedVariant result;
    DISPPARAMS parameters{nullptr, nullptr, 0, 0};
    Invoke(member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, parameters, result.get());
    return FromComVariant(*result);
}

Variant ComObject::Call(std::string_view member, const Variant& argument) {
    ScopedVariant value(argument);
    ScopedVariant result;
    DISPPARAMS parameters{value.get(), nullptr, 1, 0};
    Invoke(member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, parameters, result.get());
    return FromComVariant(*result);
}

Variant ComObject::CallByRef(std::string_view member, Variant& argument) {
    ScopedVariant held(argument);
    VARIANT reference;
    VariantInit(&reference);
    V_VT(&reference) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&reference) = held.get();
    ScopedVariant result;
    DISPPARAMS parameters{&reference, nullptr, 1, 0};
    Invoke(member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, parameters, result.get());
    Variant answer = FromComVariant(*result);
    argument = FromComVariant(*held);
    return answer;
}

}  // namespace com
}  // namespace vantrel
