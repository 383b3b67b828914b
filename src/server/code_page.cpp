#include "code_page.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace vantrel {

namespace {

constexpr std::uint8_t kUnmappable = '?';

// Bytes 0x80 to 0x9F of Windows-1252, in byte order. The five bytes the code
// page leaves undefined (81, 8D, 8F, 90, 9D) pass through as the C1 controls
// of the same value, as the platform's table does.
constexpr char16_t kHighBytes[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  //
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  //
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  //
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  //
};

}  // namespace

std::uint8_t Windows1252Code(char16_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
        return static_cast<std::uint8_t>(character);
    }
    for (unsigned offset = 0; offset < 32; ++offset) {
        if (kHighBytes[offset] == character) {
            return static_cast<std::uint8_t>(0x80 + offset);
        }
    }
    return kUnmappable;
}

#ifdef _WIN32

std::uint8_t AnsiCode(char16_t character) {
    const wchar_t wide = static_cast<wchar_t>(character);
    char bytes[2] = {};
    // A character the code page writes as two bytes has no 8-bit code.
    const int written = WideCharToMultiByte(CP_ACP, 0, &wide, 1, bytes, sizeof bytes, nullptr, nullptr);
    return written == 1 ? static_cast<std::uint8_t>(bytes[0]) : kUnmappable;
}

#else

std::uint8_t AnsiCode(char16_t character) { return Windows1252Code(character); }

#endif

}  // namespace vantrel
