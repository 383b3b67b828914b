#include "text.h"

#include <cstdint>

namespace vantrel {

Text FromUtf8(std::string_view utf8) {
    Text out;
    out.reserve(utf8.size());
    std::size_t i = 0;
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(utf8[k]); };
    while (i < utf8.size()) {
        const unsigned char lead = byte(i);
        std::uint32_t code = 0xFFFD;
        std::size_t length = 1;
        if (lead < 0x80) {
            code = lead;
        } else if ((lead & 0xE0) == 0xC0) {
            length = 2;
        } else if ((lead & 0xF0) == 0xE0) {
            length = 3;
        } else if ((lead & 0xF8) == 0xF0) {
            length = 4;
        }
        if (length > 1) {
            bool valid = i + length <= utf8.size();
            std::uint32_t value = lead & (0xFF >> (length + 1));
            for (std::size_t k = 1; valid && k < length; ++k) {
                if ((byte(i + k) & 0xC0) != 0x80) {
                    valid = false;
                } else {
                    value = (value << 6) | (byte(i + k) & 0x3F);
                }
            }
            if (valid) {
                code = value;
            } else {
                length = 1;
            }
        }
        if (code >= 0x10000 && code <= 0x10FFFF) {
            code -= 0x10000;
            out.push_back(static_cast<char16_t>(0xD800 + (code >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + (code & 0x3FF)));
        } else if (code > 0x10FFFF) {
            out.push_back(u'\uFFFD');
        } else {
            out.push_back(static_cast<char16_t>(code));
        }
        i += length;
    }
    return out;
}

std::string ToUtf8(TextView text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::uint32_t code = text[i];
        if (code >= 0xD800 && code <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            code = 0x10000 + ((code - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            ++i;
        }
        if (code < 0x80) {
            out.push_back(static_cast<char>(code));
        } else if (code < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (code >> 6)));
            out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
        } else if (code < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (code >> 12)));
            out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (code >> 18)));
            out.push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
        }
    }
    return out;
}

Text Joined(std::initializer_list<TextView> parts) {
    std::size_t length = 0;
    for (const TextView part : parts) {
        length += part.size();
    }
    Text joined;
    joined.reserve(length);
    for (const TextView part : parts) {
        joined.append(part);
    }
    return joined;
}

Text FromBytes(std::string_view bytes) {
    Text out;
    AppendBytes(out, bytes);
    return out;
}

void AppendBytes(Text& text, std::string_view bytes) {
    const std::size_t at = text.size();
    text.resize(at + bytes.size());
    // Plain pointers keep this loop fast in unoptimised builds too, where a
    // large image file passes through it.
    const char* from = bytes.data();
    char16_t* to = text.data() + at;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        to[i] = static_cast<unsigned char>(from[i]);
    }
}

std::string Escaped(TextView text) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out;
    out.reserve(text.size() + 8);
    for (const char16_t c : text) {
        switch (c) {
        case u'\r': out += "\\r"; break;
        case u'\n': out += "\\n"; break;
        case u'\t': out += "\\t"; break;
        case u'\0': out += "\\0"; break;
        case kEsc: out += "\\e"; break;
        case u'\\': out += "\\\\"; break;
        case u'"': out += "\\\""; break;
        default:
            if (c >= 0x20 && c < 0x7F) {
                out.push_back(static_cast<char>(c));
            } else if (c < 0x100) {
                out += "\\x";
                out.push_back(kHex[c >> 4]);
                out.push_back(kHex[c & 0xF]);
            } else {
                out += "\\u";
                for (int shift = 12; shift >= 0; shift -= 4) {
                    out.push_back(kHex[(c >> shift) & 0xF]);
                }
            }
        }
    }
    return out;
}

std::string WithControlsEscaped(std::string_view message, ControlEscapes which) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out;
    out.reserve(message.size());
    for (const char c : message) {
        const auto code = static_cast<unsigned char>(c);
        if (code >= 0x20 && code != 0x7F) {
            out.push_back(c);
            continue;
        }
        switch (c) {
        case '\n': out += which == ControlEscapes::ButLineFeeds ? "\n" : "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        case '\0': out += "\\0"; break;
        case '\x1B': out += "\\e"; break;
        default:
            out += "\\x";
            out.push_back(kHex[code >> 4]);
            out.push_back(kHex[code & 0xF]);
        }
    }
    return out;
}

}  // namespace vantrel
