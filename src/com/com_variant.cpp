#include "com_variant.h"

#include "com/com_errors.h"
#include "server/runtime_error.h"

#include <cstdint>
#include <limits>
#include <utility>

namespace vantrel::com {

BSTR AllocateText(TextView text) {
    // SysAllocStringLen takes a UINT count and needs the bytes to fit a DWORD.
    if (text.size() > std::numeric_limits<UINT>::max() / sizeof(OLECHAR) - 1) {
        throw OutOfMemory();
    }
    const auto* data = reinterpret_cast<const OLECHAR*>(text.data());
    BSTR value = SysAllocStringLen(text.empty() ? L"" : data, static_cast<UINT>(text.size()));
    if (!value) {
        throw OutOfMemory();
    }
    return value;
}

Text TextOf(BSTR value) {
    if (!value) {
        return {};
    }
    return Text(reinterpret_cast<const char16_t*>(value), SysStringLen(value));
}

std::wstring WideName(std::string_view name) {
    const Text wide = FromUtf8(name);
    return std::wstring(wide.begin(), wide.end());
}

ScopedVariant::ScopedVariant() { VariantInit(&value_); }

ScopedVariant::ScopedVariant(const Variant& value) {
    VariantInit(&value_);
    ToComVariant(value, value_);
}

ScopedVariant::~ScopedVariant() { VariantClear(&value_); }

void ToComVariant(const Variant& value, VARIANT& out) {
    VariantInit(&out);
    switch (value.kind()) {
    case Variant::Kind::Empty: break;
    case Variant::Kind::Null: V_VT(&out) = VT_NULL; break;
    case Variant::Kind::Text:
        V_BSTR(&out) = AllocateText(value.text());
        V_VT(&out) = VT_BSTR;
        break;
    case Variant::Kind::Int16:
        V_VT(&out) = VT_I2;
        V_I2(&out) = value.int16();
        break;
    case Variant::Kind::Int32:
        V_VT(&out) = VT_I4;
        V_I4(&out) = value.int32();
        break;
    case Variant::Kind::Double:
        V_VT(&out) = VT_R8;
        V_R8(&out) = value.real();
        break;
    case Variant::Kind::Boolean:
        V_VT(&out) = VT_BOOL;
        V_BOOL(&out) = value.boolean() ? VARIANT_TRUE : VARIANT_FALSE;
        break;
    case Variant::Kind::Single:
        V_VT(&out) = VT_R4;
        V_R4(&out) = value.single();
        break;
    case Variant::Kind::Currency:
        V_VT(&out) = VT_CY;
        V_CY(&out).int64 = value.currency();
        break;
    case Variant::Kind::Date:
        V_VT(&out) = VT_DATE;
        V_DATE(&out) = value.dateSerial();
        break;
    }
}

namespace {

// Some headers declare the source of a conversion without const; it is only read.
VARIANT* Source(const VARIANT& value) { return const_cast<VARIANT*>(&value); }

// Lets the platform convert; a failure is the run-time error of its HRESULT.
void ChangeType(const VARIANT& value, VARTYPE type, ScopedVariant& out) {
    const HRESULT result = VariantChangeType(out.get(), Source(value), 0, type);
    if (FAILED(result)) {
        throw ErrorFromHresult(result);
    }
}

// Read directly rather than through the platform's conversion, which does
// not report an overflow everywhere.
template <typename Number>
Variant WholeNumber(Number value) {
    if (std::in_range<std::int32_t>(value)) {
        return Variant::OfInt32(static_cast<std::int32_t>(value));
    }
    return Variant::OfDouble(static_cast<double>(value));
}

}  // namespace

Variant FromComVariant(const VARIANT& value) {
    const VARTYPE type = V_VT(&value);
    if (type == (VT_BYREF | VT_VARIANT)) {
        if (!V_VARIANTREF(&value)) {
            throw errors::TypeMismatch();
        }
        return FromComVariant(*V_VARIANTREF(&value));
    }
    if (type & VT_BYREF) {
        ScopedVariant target;
        const HRESULT result = VariantCopyInd(target.get(), Source(value));
        if (FAILED(result)) {
            throw ErrorFromHresult(result);
        }
        return FromComVariant(*target);
    }
    switch (type) {
    case VT_EMPTY: return Variant();
    case VT_NULL: return Variant::Null();
    case VT_BSTR: return Variant::OfText(TextOf(V_BSTR(&value)));
    case VT_I2: return Variant::OfInt16(V_I2(&value));
    case VT_I4: return Variant::OfInt32(V_I4(&value));
    case VT_R8: return Variant::OfDouble(V_R8(&value));
    case VT_BOOL: return Variant::OfBoolean(V_BOOL(&value) != VARIANT_FALSE);
    case VT_I1: return Variant::OfInt16(static_cast<std::int16_t>(V_I1(&value)));
    case VT_UI1: return Variant::OfInt16(static_cast<std::int16_t>(V_UI1(&value)));
    case VT_UI2: return WholeNumber(V_UI2(&value));
    case VT_UI4: return WholeNumber(V_UI4(&value));
    case VT_INT: return WholeNumber(V_INT(&value));
    case VT_UINT: return WholeNumber(V_UINT(&value));
    case VT_I8: return WholeNumber(V_I8(&value));
    case VT_UI8: return WholeNumber(V_UI8(&value));
    case VT_R4: return Variant::OfSingle(V_R4(&value));
    case VT_CY: return Variant::OfCurrency(V_CY(&value).int64);
    case VT_DATE: {
        // The platform's own text for it: the system's short date and time.
        ScopedVariant converted;
        ChangeType(value, VT_BSTR, converted);
        return Variant::OfDate(V_DATE(&value), TextOf(V_BSTR(converted.get())));
    }
    case VT_DISPATCH:
    case VT_UNKNOWN:
        // Nothing where a value was wanted.
        if (!V_UNKNOWN(&value)) {
            throw errors::ObjectNotSet();
        }
        break;
    case VT_DECIMAL: {
        ScopedVariant converted;
        ChangeType(value, VT_R8, converted);
        return Variant::OfDouble(V_R8(converted.get()));
    }
    default: break;
    }
    ScopedVariant converted;
    ChangeType(value, VT_BSTR, converted);
    return Variant::OfText(TextOf(V_BSTR(converted.get())));
}

}  // namespace vantrel::com
