#include "script_file.h"

#include "server/text.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace vantrel {

namespace {

constexpr const char* kAccepted =
    "a script is read as UTF-8 (with or without a byte order mark) "
    "or as UTF-16 with its byte order mark";

std::string Hex(unsigned value) {
    char text[8];
    std::snprintf(text, sizeof text, "0x%02X", value);
    return text;
}

// The line (from 1) that the byte at offset lies on, counting line feeds in
// the bytes before it.
std::size_t LineOf(std::string_view bytes, std::size_t offset, std::size_t unit = 1, bool bigEndian = false) {
    std::size_t line = 1;
    for (std::size_t i = 0; i + unit <= offset; i += unit) {
        const bool feed =
            unit == 1 ? bytes[i] == '\n'
                      : (bigEndian ? bytes[i] == 0 && bytes[i + 1] == '\n' : bytes[i] == '\n' && bytes[i + 1] == 0);
        line += feed ? 1 : 0;
    }
    return line;
}

std::string Where(std::string_view bytes, std::size_t offset, std::size_t unit = 1, bool bigEndian = false) {
    return "line " + std::to_string(LineOf(bytes, offset, unit, bigEndian)) + ", byte offset " + std::to_string(offset);
}

using Decoded = std::variant<std::string, std::string>;

Decoded Refusal(std::string why) { return Decoded(std::in_place_index<1>, std::move(why)); }

// The offset of the first byte that is not part of well-formed UTF-8
// (shortest forms only, no surrogates, nothing above U+10FFFF), or npos.
std::size_t FirstInvalidUtf8(std::string_view bytes) {
    std::size_t i = 0;
    const auto at = [&](std::size_t k) { return static_cast<unsigned char>(bytes[k]); };
    while (i < bytes.size()) {
        const unsigned char lead = at(i);
        if (lead < 0x80) {
            ++i;
            continue;
        }
        std::size_t length = 0;
        unsigned char low = 0x80;
        unsigned char high = 0xBF;  // the bounds of the second byte
        if (lead >= 0xC2 && lead <= 0xDF) {
            length = 2;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            length = 3;
            low = lead == 0xE0 ? 0xA0 : 0x80;
            high = lead == 0xED ? 0x9F : 0xBF;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            length = 4;
            low = lead == 0xF0 ? 0x90 : 0x80;
            high = lead == 0xF4 ? 0x8F : 0xBF;
        } else {
            return i;
        }
        if (i + 1 >= bytes.size() || at(i + 1) < low || at(i + 1) > high) {
            return i;
        }
        for (std::size_t k = 2; k < length; ++k) {
            if (i + k >= bytes.size() || (at(i + k) & 0xC0) != 0x80) {
                return i;
            }
        }
        i += length;
    }
    return std::string_view::npos;
}

// UTF-16 after its byte order mark, as UTF-8; an odd byte or a lone
// surrogate is refused, never replaced.
Decoded FromUtf16(std::string_view bytes, bool bigEndian) {
    if (bytes.size() % 2 != 0) {
        return Refusal("a UTF-16 script has an even number of bytes, this one " + std::to_string(bytes.size()) + "; " +
                       kAccepted);
    }
    const auto unit = [&](std::size_t k) {
        const auto first = static_cast<unsigned char>(bytes[k]);
        const auto second = static_cast<unsigned char>(bytes[k + 1]);
        return static_cast<char16_t>(bigEndian ? (first << 8) | second : (second << 8) | first);
    };
    Text units;
    units.reserve(bytes.size() / 2 - 1);
    for (std::size_t i = 2; i < bytes.size(); i += 2) {
        const char16_t code = unit(i);
        const bool high = code >= 0xD800 && code <= 0xDBFF;
        const bool low = code >= 0xDC00 && code <= 0xDFFF;
        const bool paired = high && i + 2 < bytes.size() && unit(i + 2) >= 0xDC00 && unit(i + 2) <= 0xDFFF;
        if ((high && !paired) || low) {
            return Refusal(Where(bytes, i, 2, bigEndian) + ": a lone UTF-16 surrogate " + Hex(code) + "; " + kAccepted);
        }
        units.push_back(code);
        if (paired) {
            units.push_back(unit(i + 2));
            i += 2;
        }
    }
    std::string out = ToUtf8(units);
    return Decoded(std::in_place_index<0>, std::move(out));
}

}  // namespace

std::variant<std::string, std::string> DecodeScript(std::string bytes) {
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        return FromUtf16(bytes, bytes[0] == '\xFE');
    }
    const std::size_t skipped = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    const std::size_t invalid = FirstInvalidUtf8(std::string_view(bytes).substr(skipped));
    if (invalid != std::string_view::npos) {
        const std::size_t offset = skipped + invalid;
        return Refusal(Where(bytes, offset) + ": the byte " + Hex(static_cast<unsigned char>(bytes[offset])) +
                       " is not UTF-8; " + kAccepted);
    }
    bytes.erase(0, skipped);
    return Decoded(std::in_place_index<0>, std::move(bytes));
}

std::variant<std::vector<std::string>, std::string> ReadScriptFile(const std::string& path) {
    const std::string cannot = "cannot read the script " + path + ": ";
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        return cannot + "it is a folder";
    }
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) {
        return cannot + std::strerror(errno);
    }
    std::string bytes;
    char buffer[64 * 1024];
    std::size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0) {
        bytes.append(buffer, got);
    }
    const bool failed = std::ferror(file) != 0;
    const int reason = errno;
    std::fclose(file);
    if (failed) {
        return cannot + (reason != 0 ? std::strerror(reason) : "the read failed") + " (after " +
               std::to_string(bytes.size()) + " bytes)";
    }
    auto decoded = DecodeScript(std::move(bytes));
    if (decoded.index() == 1) {
        return cannot + std::get<1>(decoded);
    }
    const std::string& text = std::get<0>(decoded);
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find('\n', start);
        if (end == std::string::npos) {
            lines.push_back(text.substr(start));
            break;
        }
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

}  // namespace vantrel
