#include "answer_text.h"

namespace vantrel::simulation {

void AnswerText::Key(std::string_view key) {
    for (const char c : key) {
        text_.push_back(static_cast<char16_t>(c));
    }
    text_.push_back(u'=');
}

AnswerText& AnswerText::Add(std::string_view key, TextView value) {
    Key(key);
    text_.append(value);
    text_.append(u"\r\n");
    return *this;
}

AnswerText& AnswerText::Add(std::string_view key, std::string_view value) {
    Key(key);
    for (const char c : value) {
        text_.push_back(static_cast<char16_t>(static_cast<unsigned char>(c)));
    }
    text_.append(u"\r\n");
    return *this;
}

AnswerText& AnswerText::Add(std::string_view key, std::int64_t number) { return Add(key, std::to_string(number)); }

Text Ascii(std::string_view text) {
    Text out(text.size(), u'\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        out[i] = static_cast<unsigned char>(text[i]);
    }
    return out;
}

bool SameAscii(TextView text, std::string_view ascii) {
    if (text.size() != ascii.size()) {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != static_cast<unsigned char>(ascii[i])) {
            return false;
        }
    }
    return true;
}

namespace {

Text Fixed(std::int64_t value, std::int64_t unit, int decimals) {
    const bool negative = value < 0;
    const std::uint64_t magnitude =
        negative ? static_cast<std::uint64_t>(-(value + 1)) + 1 : static_cast<std::uint64_t>(value);
    const std::string fraction = std::to_string(magnitude % static_cast<std::uint64_t>(unit));
    std::string text = negative ? "-" : "";
    text += std::to_string(magnitude / static_cast<std::uint64_t>(unit));
    text += '.';
    text.append(static_cast<std::size_t>(decimals) - fraction.size(), '0');
    text += fraction;
    return Ascii(text);
}

}  // namespace

Text Litres(std::int64_t microlitres) { return Fixed(microlitres / 1000, 1000, 3); }
Text Money(std::int64_t cents) { return Fixed(cents, 100, 2); }
Text UnitPrice(std::int64_t thousandths) { return Fixed(thousandths, 1000, 3); }

Text OneLine(TextView text, std::size_t limit) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    Text out;
    const std::size_t shown = text.size() > limit ? limit : text.size();
    out.reserve(shown + 8);
    for (std::size_t i = 0; i < shown; ++i) {
        const char16_t c = text[i];
        switch (c) {
        case u'\r': out += u"<CR>"; break;
        case u'\n': out += u"<LF>"; break;
        case kNul: out += u"<NUL>"; break;
        case kEsc: out += u"<ESC>"; break;
        default:
            if (c < 0x20 || c == 0x7F || (c >= 0x80 && c < 0xA0)) {
                out += u"<x";
                out.push_back(static_cast<char16_t>(kHex[c >> 4]));
                out.push_back(static_cast<char16_t>(kHex[c & 0xF]));
                out.push_back(u'>');
            } else {
                out.push_back(c);
            }
        }
    }
    if (shown < text.size()) {
        out += u"...";
    }
    return out;
}

std::string Readable(TextView text, std::size_t limit) { return ToUtf8(OneLine(text, limit)); }

std::string Quoted(TextView text, std::size_t limit) {
    std::string quoted(1, '"');
    quoted += Readable(text, limit);
    quoted += '"';
    return quoted;
}

}  // namespace vantrel::simulation
