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
    };

    Variant() = default;
    static Variant Null();
    static Variant OfText(Text value);
    static Variant OfInt16(std::int16_t value);
    static Variant OfInt32(std::int32_t value);
    static Variant OfDouble(double value);
    static Variant OfBoolean(bool value);

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

    friend bool operator==(const Variant&, const Variant&) = default;

private:
    struct NullTag {
        friend bool operator==(NullTag, NullTag) = default;
    };
    using Storage = std::variant<std::monostate, NullTag, Text, std::int16_t, std::int32_t, double, bool>;
    explicit Variant(Storage storage);
    Storage storage_;
};

// Conversions with the platform's rules, used on every result.
// Empty gives "" and 0; Null cannot be converted (error 94); a text that is no
// number is a type mismatch (13); a value outside -32768..32767 overflows (6);
// fractions round to the nearest whole number, halves to the even neighbour.
Text ToText(const Variant& value);
// The same, taking a text over rather than copying it: a result of many
// megabytes is not held twice.
Text ToText(Variant&& value);
std::int16_t ToInt16(const Variant& value);

// Parses a whole text as a number the way the platform's numeric conversion
// does: blanks around it, a sign, digits with one decimal point, an exponent,
// or &H / &O radix prefixes. Returns false when the text is no number.
bool ParseNumber(TextView text, double& result);

// Rounds to the nearest whole number, a half to the even neighbour, and checks
// the 16-bit range (error 6 outside it).
std::int16_t RoundToInt16(double value);

}  // namespace vantrel
