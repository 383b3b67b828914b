#pragma once

#include "server/text.h"
#include "server/variant.h"

#include <string>
#include <string_view>

#include <windows.h>
#include <oleauto.h>

namespace vantrel::com {

// OLECHAR and char16_t are both 16-bit code units on this platform, so a text
// travels into a BSTR unchanged, one unit to one unit.
static_assert(sizeof(OLECHAR) == sizeof(char16_t));

// A BSTR made with the text's exact length, so NULs and every control
// character survive. Throws error 7 when it cannot be allocated.
BSTR AllocateText(TextView text);

// The whole BSTR, by its stored length; a null BSTR is the empty text.
Text TextOf(BSTR value);

// A member name or ProgID as a NUL-terminated wide string.
std::wstring WideName(std::string_view name);

// A VARIANT that clears itself, for arguments and results.
class ScopedVariant {
public:
    ScopedVariant();
    explicit ScopedVariant(const Variant& value);
    ~ScopedVariant();
    ScopedVariant(const ScopedVariant&) = delete;
    ScopedVariant& operator=(const ScopedVariant&) = delete;

    VARIANT* get() { return &value_; }
    const VARIANT& operator*() const { return value_; }

private:
    VARIANT value_;
};

// Fills an empty VARIANT with the value: VT_EMPTY, VT_NULL, VT_BSTR, VT_I2,
// VT_I4, VT_R8 or VT_BOOL.
void ToComVariant(const Variant& value, VARIANT& out);

// Any VARIANT to the nearest kind a result can have:
// - VT_EMPTY, VT_NULL, VT_BSTR, VT_I2, VT_I4, VT_R8, VT_BOOL as they are;
// - VT_I1 and VT_UI1 as a 16-bit number;
// - the other whole numbers as a 32-bit number where they fit, else a double;
// - VT_R4, VT_CY and VT_DECIMAL as a double;
// - anything else (dates, objects with a default value) as its text;
// - a reference as the value it refers to.
// What the platform cannot convert raises the error its HRESULT maps to,
// normally 13 (type mismatch).
Variant FromComVariant(const VARIANT& value);

}  // namespace vantrel::com
