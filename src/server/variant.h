#pragma once

#include "text.h"

#include <cstdint>
#include <variant>

namespace vantrel {

// An automation value: what goes to the server and what comes back.
class Variant {
public:
    enum class Kind {
        Empty,
        Null,
        Text,
        Int16,
        Int32,
        Double,
        Boolean,
        Single,    // a 32-bit real
        Currency,  // a fixed point number of four decimals
        Date,      // a point in time, with the platform's text for it
    };

    Variant() = default;
    static Variant Null();
    static Variant OfText(Text value);
    static Variant OfInt16(std::int16_t value);
    static Variant OfInt32(std::int32_t value);
    static Variant OfDouble(double value);
    static Variant OfBoolean(bool value);
    static Variant OfSingle(float value);
    // In ten-thousandths, as the platform keeps a Currency: 15 is 0.0015.
    static Variant OfCurrency(std::int64_t tenThousandths);
    // The serial number (days since 30 December 1899, the time of day as
    // its fraction) and the text the platform's conversion gives it, in the
    // system's short date and time.
    static Variant OfDate(double serial, Text shown);

    Kind kind() const;
    bool is(Kind k) const { return kind() == k; }

    // Accessors for the kind the value holds; asking for another kind is a
    // programming error and yields a default value.
    const Text& text() const;
    // The text itself, taken out of a value that is not kept.
    Text TakeText() &&;
    std::int16_t int16() const;
    std::int32_t int32() const;
    double real() const;
    bool boolean() const;
    float single() const;
    std::int64_t currency() const;  // ten-thousandths
    double dateSerial() const;
    const Text& dateText() const;

    friend bool operator==(const Variant&, const Variant&) = default;

private:
    struct NullTag {
        friend bool operator==(NullTag, NullTag) = default;
    };
    struct CurrencyValue {
        std::int64_t tenThousandths = 0;
        friend bool operator==(const CurrencyValue&, const CurrencyValue&) = default;
    };
    struct DateValue {
        double serial = 0;
        Text shown;
        friend bool operator==(const DateValue&, const DateValue&) = default;
    };
    // In the order of Kind.
    using Storage = std::variant<std::monostate, NullTag, Text, std::int16_t, std::int32_t, double, bool, float,
                                 CurrencyValue, DateValue>;
    explicit Variant(Storage storage);
    Storage storage_;
};

// Conversions with the platform's rules, used on every result. A Single
// shows seven significant digits ("1.1", "1.677722E+07"), a Currency its
// decimals up to four ("123456789012.3456"), a Date the platform's text; as
// numbers they round as a Double does, a Date by its serial number.
// Empty gives "" and 0; Null cannot be converted (error 94); a text that is no
// number is a type mismatch (13); a value outside -32768..32767 overflows (6);
// fractions round to the nearest whole number, halves to the even neighbour.
Text ToText(const Variant& value);
// The same, taking a text over rather than copying it: a result of many
// megabytes is not held twice.
Text ToText(Variant&& value);
std::int16_t ToInt16(const Variant& value);

// Parses a whole text as a number the way the platform's numeric conversion
// does, in the user's locale: blanks around it, a sign before or after it,
// parentheses for a negative number, the currency sign before or after it,
// digits with thousands separators and one decimal point, an exponent, or
// &H / &O radix prefixes. Returns false when the text is no number.
bool ParseNumber(TextView text, double& result);

// Rounds to the nearest whole number, a half to the even neighbour, and checks
// the 16-bit range (error 6 outside it).
std::int16_t RoundToInt16(double value);

}  // namespace vantrel
