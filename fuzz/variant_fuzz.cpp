// The conversions of a server's result to text and to a 16-bit number, over
// values of every kind: they fail only with the platform's errors 6, 13 and
// 94, and what they write they read back.

#include "fuzz_input.h"
#include "server/runtime_error.h"
#include "server/variant.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <variant>

namespace {

using vantrel::Text;
using vantrel::Variant;
using vantrel::fuzz::Require;

// A 16-bit number, or the number of the error the conversion raised.
using Outcome = std::variant<std::int16_t, int>;

Outcome Int16Of(const Variant& value) {
    try {
        return vantrel::ToInt16(value);
    } catch (const vantrel::RuntimeError& error) {
        Require(error.number() == 6 || error.number() == 13 || error.number() == 94,
                "ToInt16 fails only with overflow, type mismatch or invalid use of Null");
        return error.number();
    }
}

template <typename T>
T Read(const std::uint8_t* data, std::size_t size) {
    T value{};
    std::memcpy(&value, data, std::min(size, sizeof value));
    return value;
}

Variant MakeValue(const std::uint8_t* data, std::size_t size) {
    const std::uint8_t* rest = data + 1;
    const std::size_t length = size - 1;
    switch (data[0] % 10) {
    case 0: return Variant();
    case 1: return Variant::Null();
    case 2:
    case 3: return Variant::OfText(vantrel::fuzz::TextFromBytes(data, size));
    case 4: return Variant::OfInt16(Read<std::int16_t>(rest, length));
    case 5: return Variant::OfInt32(Read<std::int32_t>(rest, length));
    case 6: return Variant::OfDouble(Read<double>(rest, length));
    case 7: return Variant::OfBoolean(length > 0 && (rest[0] & 1) != 0);
    case 8: return Variant::OfSingle(Read<float>(rest, length));
    default: return Variant::OfCurrency(Read<std::int64_t>(rest, length));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const Variant value = MakeValue(data, size);
    const Outcome number = Int16Of(value);

    std::optional<Text> text;
    try {
        text = vantrel::ToText(value);
    } catch (const vantrel::RuntimeError& error) {
        Require(value.is(Variant::Kind::Null) && error.number() == 94, "only Null cannot become text");
    }

    switch (value.kind()) {
    case Variant::Kind::Text:
        Require(*text == value.text(), "a text is shown exactly as it came");
        // Blanks around a number do not change it; an empty text is 0 but a
        // text of blanks alone is no number.
        if (!value.text().empty()) {
            Require(Int16Of(Variant::OfText(u" " + value.text() + u"\t")) == number,
                    "blanks around a text do not change its number");
        }
        break;
    case Variant::Kind::Int16:
        Require(number == Outcome(value.int16()), "a 16-bit number converts to itself");
        Require(Int16Of(Variant::OfText(*text)) == number, "a 16-bit number reads back from its text");
        break;
    case Variant::Kind::Int32: {
        const std::int32_t whole = value.int32();
        const bool fits = whole >= -32768 && whole <= 32767;
        Require(number == (fits ? Outcome(static_cast<std::int16_t>(whole)) : Outcome(6)),
                "a 32-bit number converts when it fits and overflows otherwise");
        Require(Int16Of(Variant::OfText(*text)) == number, "a 32-bit number reads back from its text");
        break;
    }
    case Variant::Kind::Double: {
        const double real = value.real();
        double parsed = 0;
        if (std::isfinite(real)) {
            Require(vantrel::ParseNumber(*text, parsed), "a finite double's text is a number");
        } else {
            Require(std::holds_alternative<int>(number) && std::get<int>(number) == 6, "NaN and infinities overflow");
        }
        break;
    }
    case Variant::Kind::Empty:
        Require(text->empty() && number == Outcome(std::int16_t{0}), "Empty is the empty text and 0");
        break;
    case Variant::Kind::Null: Require(!text && number == Outcome(94), "Null converts to nothing"); break;
    case Variant::Kind::Boolean:
        Require(number == Outcome(static_cast<std::int16_t>(value.boolean() ? -1 : 0)), "True is -1, False is 0");
        break;
    case Variant::Kind::Single: {
        // Seven digits may round a half differently from the value itself;
        // a finite Single's text is still a number.
        double parsed = 0;
        Require(!std::isfinite(value.single()) || vantrel::ParseNumber(*text, parsed), "a Single's text is a number");
        break;
    }
    case Variant::Kind::Currency:
        Require(Int16Of(Variant::OfText(*text)) == number, "a Currency reads back from its text exactly");
        break;
    case Variant::Kind::Date: break;  // only the COM path makes dates
    }
    return 0;
}
