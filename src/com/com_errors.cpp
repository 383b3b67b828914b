#include "com_errors.h"

#include "com/com_variant.h"
#include "server/text.h"

#include <string>

namespace vantrel::com {

namespace {

constexpr int kAutomationError = 440;

RuntimeError Numbered(int number, std::string description) { return {number, std::move(description)}; }

std::string PlatformText(int number) { return std::string(RunTimeErrorText(number)); }

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
    case DISP_E_MEMBERNOTFOUND:
    case DISP_E_UNKNOWNINTERFACE: return errors::UnsupportedMember();
    case E_NOTIMPL: return RunTimeErrorOf(445);
    case DISP_E_NOTACOLLECTION: return RunTimeErrorOf(451);
    case DISP_E_BADINDEX:
    case TYPE_E_OUTOFBOUNDS: return RunTimeErrorOf(9);
    case DISP_E_UNKNOWNLCID: return RunTimeErrorOf(447);
    case DISP_E_ARRAYISLOCKED: return RunTimeErrorOf(10);
    case E_NOINTERFACE: return RunTimeErrorOf(430);
    case E_INVALIDARG: return RunTimeErrorOf(5);
    case E_ACCESSDENIED: return RunTimeErrorOf(70);
    case TYPE_E_TYPEMISMATCH: return errors::TypeMismatch();
    case DISP_E_BADPARAMCOUNT: return Numbered(450, PlatformText(450));
    case DISP_E_PARAMNOTOPTIONAL: return Numbered(449, PlatformText(449));
    case DISP_E_PARAMNOTFOUND:
    case DISP_E_NONAMEDARGS: return Numbered(448, PlatformText(448));
    case DISP_E_TYPEMISMATCH:
    case DISP_E_BADVARTYPE: return errors::TypeMismatch();
    case DISP_E_OVERFLOW: return errors::Overflow();
    case DISP_E_DIVBYZERO: return RunTimeErrorOf(11);
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
        const RuntimeError mapped = ErrorFromHresult(exception.scode);
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
