#pragma once

#include "com/com_variant.h"
#include "server/text.h"
#include "server/variant.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <windows.h>
#include <oaidl.h>

#include <ostream>

namespace vantrel {
// Readable values in failure messages.
void PrintTo(const Variant& value, std::ostream* out);
}  // namespace vantrel

namespace vantrel::testing {

// A text that must cross the wire unchanged, named for the test's name.
struct BlockCase {
    const char* name;
    Text text;
};
void PrintTo(const BlockCase& block, std::ostream* out);

// The blocks the native tests check, texts with characters above 127, the
// empty text, and every code unit from 0 to 0xFFFF once (NUL, every control
// character, lone surrogates).
std::vector<BlockCase> Blocks();

// The other end of the wire for the backend's tests: a dispatch object that
// records every lookup and invocation exactly as it arrives and answers as
// the test sets it up. It lives on the test's stack; its reference count is
// only counted.
class Probe final : public IDispatch {
public:
    struct Invocation {
        DISPID id = DISPID_UNKNOWN;
        WORD flags = 0;
        UINT argumentCount = 0;
        std::vector<DISPID> named;
        VARTYPE argumentType = VT_EMPTY;    // of the one argument
        VARTYPE referencedType = VT_EMPTY;  // what a VT_BYREF | VT_VARIANT points to
        std::optional<Variant> argument;    // its value, dereferenced
        bool nullText = false;              // a text argument came as a null BSTR
        bool resultRequested = false;
    };

    Probe();
    ~Probe();

    // Members it knows, DISPIDs from 1 in this order; others are unknown.
    std::vector<std::wstring> members = {L"Authorize", L"SystemVersions", L"FuelingPositionInformation",
                                         L"DispenserInformation"};
    // What Invoke answers and returns.
    void Answer(const VARIANT& value);
    void Answer(const Variant& value);
    HRESULT outcome = S_OK;
    std::function<void(EXCEPINFO&)> raise;  // fills EXCEPINFO when outcome is DISP_E_EXCEPTION
    std::optional<Variant> writeBack;       // written into a by-reference argument

    std::vector<std::wstring> lookups;
    std::vector<Invocation> invocations;
    long references() const { return references_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references_); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references_); }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* argumentError) override;

private:
    long references_ = 0;
    com::ScopedVariant answer_;
};

}  // namespace vantrel::testing
