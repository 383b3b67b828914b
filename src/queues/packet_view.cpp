#include "packet_view.h"

#include "server/code_page.h"
#include "server/variant.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>

namespace vantrel {

namespace {

constexpr std::size_t kHeaderLength = 47;
constexpr std::size_t kCountStart = 31;  // character 32
constexpr std::size_t kCountLength = 3;

bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

// The number a field begins with: blanks before it are skipped, then a sign,
// digits with one decimal point and an exponent are taken as far as they go;
// whatever follows is ignored, and a field that begins with no number is 0.
double LeadingNumber(TextView field) {
    std::size_t at = 0;
    while (at < field.size() && (field[at] == u' ' || field[at] == u'\t')) {
        ++at;
    }
    bool negative = false;
    if (at < field.size() && (field[at] == u'+' || field[at] == u'-')) {
        negative = field[at] == u'-';
        ++at;
    }
    std::string number;
    std::size_t digits = 0;
    for (; at < field.size() && IsDigit(field[at]); ++at, ++digits) {
        number.push_back(static_cast<char>(field[at]));
    }
    if (at < field.size() && field[at] == u'.') {
        number.push_back('.');
        for (++at; at < field.size() && IsDigit(field[at]); ++at, ++digits) {
            number.push_back(static_cast<char>(field[at]));
        }
    }
    if (digits == 0) {
        return 0;
    }
    // An exponent counts only with at least one digit: "1E" reads as 1.
    if (at < field.size() && (field[at] == u'E' || field[at] == u'e' || field[at] == u'D' || field[at] == u'd')) {
        std::size_t next = at + 1;
        std::string exponent = "E";
        if (next < field.size() && (field[next] == u'+' || field[next] == u'-')) {
            exponent.push_back(static_cast<char>(field[next]));
            ++next;
        }
        if (next < field.size() && IsDigit(field[next])) {
            for (; next < field.size() && IsDigit(field[next]); ++next) {
                exponent.push_back(static_cast<char>(field[next]));
            }
            number += exponent;
        }
    }
    // from_chars, unlike strtod, ignores the locale the windowing toolkit sets.
    double value = 0;
    std::from_chars(number.data(), number.data() + number.size(), value);
    return negative ? -value : value;
}

void AppendHex(Text& text, std::uint8_t code) {
    constexpr char16_t kDigits[] = u"0123456789ABCDEF";
    if (code >= 16) {
        text.push_back(kDigits[code >> 4]);
    }
    text.push_back(kDigits[code & 15]);
}

}  // namespace

PacketView ViewPacketInput(TextView answer) {
    PacketView view;
    view.text.assign(answer.substr(0, kHeaderLength));

    const TextView field = answer.size() > kCountStart ? answer.substr(kCountStart, kCountLength) : TextView();
    std::int16_t count = 0;
    try {
        count = RoundToInt16(LeadingNumber(field));
    } catch (const RuntimeError& overflow) {
        view.error = overflow;
        return view;
    }

    const std::size_t items = count > 0 ? static_cast<std::size_t>(count) : 0;
    // At most three characters an item, and never more items than the answer
    // holds: a short answer must not reserve what it will not fill.
    const std::size_t present = answer.size() > kHeaderLength ? answer.size() - kHeaderLength : 0;
    view.text.reserve(view.text.size() + 3 * std::min(items, present));

    for (std::size_t item = 0; item < items; ++item) {
        const std::size_t at = kHeaderLength + item;
        if (at >= answer.size()) {
            // Taking the code of a character past the end is an invalid call;
            // what was made so far stays on show.
            view.error = errors::InvalidProcedureCall();
            return view;
        }
        const char16_t character = answer[at];
        const std::uint8_t code = AnsiCode(character);
        view.text.push_back(u' ');
        if (code >= 33 && code <= 126) {
            view.text.push_back(character);
        } else {
            AppendHex(view.text, code);
        }
    }
    return view;
}

}  // namespace vantrel
