#include "variant.h"

#include "runtime_error.h"

#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <string>

namespace vantrel {

Variant::Variant(Storage storage)
    : storage_(std::move(storage)) {}

Variant Variant::Null() { return Variant(Storage(NullTag{})); }
Variant Variant::OfText(Text value) { return Variant(Storage(std::move(value))); }
Variant Variant::OfInt16(std::int16_t value) { return Variant(Storage(value)); }
Variant Variant::OfInt32(std::int32_t value) { return Variant(Storage(value)); }
Variant Variant::OfDouble(double value) { return Variant(Storage(value)); }
Variant Variant::OfBoolean(bool value) { return Variant(Storage(value)); }
Variant Variant::OfSingle(float value) { return Variant(Storage(value)); }
Variant Variant::OfCurrency(std::int64_t tenThousandths) { return Variant(Storage(CurrencyValue{tenThousandths})); }
Variant Variant::OfDate(double serial, Text shown) { return Variant(Storage(DateValue{serial, std::move(shown)})); }

Variant::Kind Variant::kind() const { return static_cast<Kind>(storage_.index()); }

const Text& Variant::text() const {
    static const Text empty;
    const auto* value = std::get_if<Text>(&storage_);
    return value ? *value : empty;
}

Text Variant::TakeText() && {
    if (Text* text = std::get_if<Text>(&storage_)) {
        return std::move(*text);
    }
    return {};
}

std::int16_t Variant::int16() const {
    const auto* value = std::get_if<std::int16_t>(&storage_);
    return value ? *value : 0;
}

std::int32_t Variant::int32() const {
    const auto* value = std::get_if<std::int32_t>(&storage_);
    return value ? *value : 0;
}

double Variant::real() const {
    const auto* value = std::get_if<double>(&storage_);
    return value ? *value : 0.0;
}

bool Variant::boolean() const {
    const auto* value = std::get_if<bool>(&storage_);
    return value ? *value : false;
}

float Variant::single() const {
    const auto* value = std::get_if<float>(&storage_);
    return value ? *value : 0.0f;
}

std::int64_t Variant::currency() const {
    const auto* value = std::get_if<CurrencyValue>(&storage_);
    return value ? value->tenThousandths : 0;
}

double Variant::dateSerial() const {
    const auto* value = std::get_if<DateValue>(&storage_);
    return value ? value->serial : 0.0;
}

const Text& Variant::dateText() const {
    static const Text empty;
    const auto* value = std::get_if<DateValue>(&storage_);
    return value ? value->shown : empty;
}

namespace {

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }

Text FormatDouble(double value) {
    if (std::isnan(value)) {
        return u"NaN";
    }
    if (std::isinf(value)) {
        return value > 0 ? u"Infinity" : u"-Infinity";
    }
    // Fifteen significant digits and a two-digit exponent, as the platform
    // writes a double: 2.5, 0.0001, 1E-05, 1E+20.
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.15G", value);
    std::string text(buffer);
    if (text == "-0") {
        text = "0";
    }
    return FromUtf8(text);
}

// Seven significant digits, as the platform writes a Single.
Text FormatSingle(float value) {
    if (std::isnan(value) || std::isinf(value)) {
        return FormatDouble(value);
    }
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.7G", static_cast<double>(value));
    std::string text(buffer);
    if (text == "-0") {
        text = "0";
    }
    return FromUtf8(text);
}

// The whole part, then the decimals without trailing zeros.
Text FormatCurrency(std::int64_t tenThousandths) {
    const bool negative = tenThousandths < 0;
    const std::uint64_t magnitude =
        negative ? static_cast<std::uint64_t>(-(tenThousandths + 1)) + 1 : static_cast<std::uint64_t>(tenThousandths);
    std::string text;
    if (negative) {
        text.push_back('-');
    }
    text += std::to_string(magnitude / 10000);
    std::string decimals = std::to_string(magnitude % 10000);
    decimals.insert(0, 4 - decimals.size(), '0');
    while (!decimals.empty() && decimals.back() == '0') {
        decimals.pop_back();
    }
    if (!decimals.empty()) {
        text += "." + decimals;
    }
    return FromUtf8(text);
}

// The signs of numbers in the user's locale (the program takes it from the
// environment at start). Where the locale names no thousands separator or
// currency sign, those of the platform's default locale stand in: a comma,
// or a point beside a decimal comma, and "$".
struct NumberSigns {
    char16_t decimal = u'.';
    char16_t thousands = u',';
    Text currency = u"$";
};

NumberSigns UserNumberSigns() {
    NumberSigns signs;
    const std::lconv* locale = std::localeconv();
    if (locale && locale->decimal_point && locale->decimal_point[0] != '\0' &&
        static_cast<unsigned char>(locale->decimal_point[0]) < 0x80 && locale->decimal_point[1] == '\0') {
        signs.decimal = static_cast<char16_t>(locale->decimal_point[0]);
    }
    signs.thousands = signs.decimal == u',' ? u'.' : u',';
    if (locale && locale->thousands_sep && locale->thousands_sep[0] != '\0') {
        const Text separator = FromUtf8(locale->thousands_sep);
        if (separator.size() == 1 && separator[0] != signs.decimal) {
            signs.thousands = separator[0];
        }
    }
    if (locale && locale->currency_symbol && locale->currency_symbol[0] != '\0') {
        signs.currency = FromUtf8(locale->currency_symbol);
    }
    return signs;
}

bool ParseRadix(TextView digits, int radix, double& result) {
    if (digits.empty() || digits.size() > 16) {
        return false;
    }
    std::uint64_t value = 0;
    for (const char16_t c : digits) {
        int digit = -1;
        if (c >= u'0' && c <= u'9') {
            digit = c - u'0';
        } else if (c >= u'a' && c <= u'f') {
            digit = c - u'a' + 10;
        } else if (c >= u'A' && c <= u'F') {
            digit = c - u'A' + 10;
        }
        if (digit < 0 || digit >= radix) {
            return false;
        }
        value = value * static_cast<unsigned>(radix) + static_cast<unsigned>(digit);
    }
    // &H and &O literals are 16-bit where they fit, as the platform reads them.
    if (value <= 0xFFFF) {
        result = static_cast<std::int16_t>(static_cast<std::uint16_t>(value));
    } else if (value <= 0xFFFFFFFFu) {
        result = static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
    } else {
        return false;
    }
    return true;
}

}  // namespace

bool ParseNumber(TextView text, double& result) {
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && IsBlank(text[begin])) {
        ++begin;
    }
    while (end > begin && IsBlank(text[end - 1])) {
        --end;
    }
    TextView body = text.substr(begin, end - begin);
    if (body.size() >= 2 && body[0] == u'&') {
        const char16_t kind = body[1];
        if (kind == u'H' || kind == u'h') {
            return ParseRadix(body.substr(2), 16, result);
        }
        if (kind == u'O' || kind == u'o') {
            return ParseRadix(body.substr(2), 8, result);
        }
        return false;
    }
    // A sign before or after the number, or parentheses around it.
    bool negative = false;
    if (body.size() >= 2 && body.front() == u'(' && body.back() == u')') {
        negative = true;
        body = body.substr(1, body.size() - 2);
    } else if (!body.empty() && (body.front() == u'+' || body.front() == u'-')) {
        negative = body.front() == u'-';
        body.remove_prefix(1);
    } else if (!body.empty() && (body.back() == u'+' || body.back() == u'-')) {
        negative = body.back() == u'-';
        body.remove_suffix(1);
    }
    const NumberSigns signs = UserNumberSigns();
    if (!signs.currency.empty() && body.starts_with(signs.currency)) {
        body.remove_prefix(signs.currency.size());
    } else if (!signs.currency.empty() && body.ends_with(signs.currency)) {
        body.remove_suffix(signs.currency.size());
    }
    std::string ascii;
    ascii.reserve(body.size());
    std::size_t i = 0;
    std::size_t mantissaDigits = 0;
    // Thousands separators between the digits of the whole part.
    while (i < body.size() && ((body[i] >= u'0' && body[i] <= u'9') ||
                               (body[i] == signs.thousands && mantissaDigits > 0 && i + 1 < body.size() &&
                                body[i + 1] >= u'0' && body[i + 1] <= u'9'))) {
        if (body[i] != signs.thousands) {
            ascii.push_back(static_cast<char>(body[i]));
            ++mantissaDigits;
        }
        ++i;
    }
    if (i < body.size() && body[i] == signs.decimal) {
        ascii.push_back('.');
        ++i;
        while (i < body.size() && body[i] >= u'0' && body[i] <= u'9') {
            ascii.push_back(static_cast<char>(body[i]));
            ++i;
            ++mantissaDigits;
        }
    }
    if (mantissaDigits == 0) {
        return false;
    }
    if (i < body.size() && (body[i] == u'E' || body[i] == u'e' || body[i] == u'D' || body[i] == u'd')) {
        ascii.push_back('E');
        ++i;
        if (i < body.size() && (body[i] == u'+' || body[i] == u'-')) {
            ascii.push_back(static_cast<char>(body[i]));
            ++i;
        }
        std::size_t exponentDigits = 0;
        while (i < body.size() && body[i] >= u'0' && body[i] <= u'9') {
            ascii.push_back(static_cast<char>(body[i]));
            ++i;
            ++exponentDigits;
        }
        if (exponentDigits == 0) {
            return false;
        }
    }
    if (i != body.size()) {
        return false;
    }
    // The signs are the locale's, read above; from_chars itself ignores it.
    double magnitude = 0;
    const auto [stop, status] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), magnitude);
    if (status == std::errc::result_out_of_range) {
        magnitude = HUGE_VAL;  // far outside every range the console converts to
    } else if (status != std::errc() || stop != ascii.data() + ascii.size()) {
        return false;
    }
    result = negative ? -magnitude : magnitude;
    return true;
}

std::int16_t RoundToInt16(double value) {
    if (std::isnan(value)) {
        throw errors::Overflow();
    }
    const double rounded = std::nearbyint(value);  // default mode: half to even
    if (rounded < -32768.0 || rounded > 32767.0) {
        throw errors::Overflow();
    }
    return static_cast<std::int16_t>(rounded);
}

Text ToText(Variant&& value) {
    if (value.is(Variant::Kind::Text)) {
        return std::move(value).TakeText();
    }
    return ToText(static_cast<const Variant&>(value));
}

Text ToText(const Variant& value) {
    switch (value.kind()) {
    case Variant::Kind::Empty: return {};
    case Variant::Kind::Null: throw errors::InvalidUseOfNull();
    case Variant::Kind::Text: return value.text();
    case Variant::Kind::Int16: return FromUtf8(std::to_string(value.int16()));
    case Variant::Kind::Int32: return FromUtf8(std::to_string(value.int32()));
    case Variant::Kind::Double: return FormatDouble(value.real());
    case Variant::Kind::Boolean: return value.boolean() ? u"True" : u"False";
    case Variant::Kind::Single: return FormatSingle(value.single());
    case Variant::Kind::Currency: return FormatCurrency(value.currency());
    case Variant::Kind::Date: return value.dateText();
    }
    return {};
}

std::int16_t ToInt16(const Variant& value) {
    switch (value.kind()) {
    case Variant::Kind::Empty: return 0;
    case Variant::Kind::Null: throw errors::InvalidUseOfNull();
    case Variant::Kind::Text: {
        if (value.text().empty()) {
            return 0;  // an empty answer counts as 0
        }
        double number = 0;
        if (!ParseNumber(value.text(), number)) {
            throw errors::TypeMismatch();
        }
        return RoundToInt16(number);
    }
    case Variant::Kind::Int16: return value.int16();
    case Variant::Kind::Int32: return RoundToInt16(value.int32());
    case Variant::Kind::Double: return RoundToInt16(value.real());
    case Variant::Kind::Boolean: return value.boolean() ? -1 : 0;
    case Variant::Kind::Single: return RoundToInt16(value.single());
    case Variant::Kind::Currency: return RoundToInt16(static_cast<double>(value.currency()) / 10000.0);
    case Variant::Kind::Date: return RoundToInt16(value.dateSerial());
    }
    return 0;
}

}  // namespace vantrel
