#include "com_errors.h"

#include "com/com_variant.h"
#include "server/text.h"

#include <string>

namespace vantrel::com {

namespace {

constexpr int kAutomationError = 440;

RuntimeError Numbered(int number, std::string description) { return {number, std::move(description)}; }

// The platform's text for the numbers a call can fail with.
std::string PlatformText(int number) {
    switch (number) {
    case 5: return errors::InvalidProcedureCall().description();
    case 6: return errors::Overflow().description();
    case 7: return "Out of memory";
    case 13: return errors::TypeMismatch().description();
    case 91: return errors::ObjectNotSet().description();
    case 94: return errors::InvalidUseOfNull().description();
    case 429: return errors::CannotCreateObject().description();
    case 430: return "Class does not support Automation or does not support expected interface";
    case 438: return errors::UnsupportedMember().description();
    case 448: return "Named argument not found";
    case 449: return "Argument not optional";
    case 450: return "Wrong number of arguments or invalid property assignment";
    default: return "Application-defined or object-defined error";
    }
}

std::string SystemText(HRESULT result) {
    LPWSTR buffer = nullptr;
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                       nullptr, static_cast<DWORD>(result), 0, reinterpret_cast<LPWSTR>(&buffer), 0, nullptr);
    if (length == 0 || !buffer) {
        return {};
    }
    Text text(reinterpret_cast<const char16_t*>(buffer), length);
    LocalFree(buffer);
    while (!text.empty() && (text.back() == u'\r' || text.back() == u'\n' || text.back() == u' ')) {
        text.pop_back();
    }
    return ToUtf8(text);
}

RuntimeError AutomationError(HRESULT result) {
    const std::string system = SystemText(result);
    return Numbered(static_cast<int>(result), system.empty() ? "Automation error" : "Automation error: " + system);
}

bool IsControlFacility(HRESULT result) { return HRESULT_FACILITY(result) == FACILITY_CONTROL; }

}  // namespace

RuntimeError OutOfMemory() { return Numbered(7, PlatformText(7)); }

RuntimeError ErrorFromHresult(HRESULT result) {
    switch (result) {
    case DISP_E_UNKNOWNNAME:
    case DISP_E_MEMBERNOTFOUND: return errors::UnsupportedMember();
    case DISP_E_BADPARAMCOUNT: return Numbered(450, PlatformText(450));
    case DISP_E_PARAMNOTOPTIONAL: return Numbered(449, PlatformText(449));
    case DISP_E_PARAMNOTFOUND:
    case DISP_E_NONAMEDARGS: return Numbered(448, PlatformText(448));
    case DISP_E_TYPEMISMATCH:
    case DISP_E_BADVARTYPE: return errors::TypeMismatch();
    case DISP_E_OVERFLOW: return errors::Overflow();
    case E_OUTOFMEMORY: return OutOfMemory();
    case DISP_E_EXCEPTION: return Numbered(kAutomationError, "Automation error");
    default: break;
    }
    if (IsControlFacility(result)) {
        const int number = HRESULT_CODE(result);
        return Numbered(number, PlatformText(number));
    }
    return AutomationError(result);
}

RuntimeError ErrorFromException(EXCEPINFO& exception) {
    if (exception.pfnDeferredFillIn) {
        exception.pfnDeferredFillIn(&exception);
        exception.pfnDeferredFillIn = nullptr;
    }
    const std::string description = ToUtf8(TextOf(exception.bstrDescription));
    int number = kAutomationError;
    std::string fallback = "Automation error";
    if (exception.wCode != 0) {
        number = exception.wCode;
        fallback = PlatformText(number);
    } else if (exception.scode != 0 && IsControlFacility(exception.scode)) {
        number = HRESULT_CODE(exception.scode);
        fallback = PlatformText(number);
    } else if (exception.scode != 0) {
        const RuntimeError mapped = AutomationError(exception.scode);
        number = mapped.number();
        fallback = mapped.description();
    }
    return Numbered(number, description.empty() ? fallback : description);
}

RuntimeError ErrorFromCreation(HRESULT result) {
    if (result == E_NOINTERFACE) {
        return Numbered(430, PlatformText(430));
    }
    return errors::CannotCreateObject();
}

HRESULT ScodeOf(const RuntimeError& error) {
    const int number = error.number();
    if (number >= 1 && number <= 0xFFFF) {
        return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number);
    }
    if (number < 0) {
        return static_cast<HRESULT>(number);
    }
    return E_FAIL;
}

void FillException(const RuntimeError& error, std::wstring_view source, EXCEPINFO& exception) {
    // The caller owns what the structure held before; it is only written.
    exception = EXCEPINFO{};
    exception.scode = ScodeOf(error);
    const Text description = FromUtf8(error.description());
    exception.bstrSource = SysAllocStringLen(source.data(), static_cast<UINT>(source.size()));
    exception.bstrDescription =
        SysAllocStringLen(reinterpret_cast<const OLECHAR*>(description.data()), static_cast<UINT>(description.size()));
}

void ClearException(EXCEPINFO& exception) {
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    exception = EXCEPINFO{};
}

}  // namespace vantrel::com
