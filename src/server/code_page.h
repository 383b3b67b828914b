#pragma once

#include <cstdint>

namespace vantrel {

// The 8-bit code of one UTF-16 character in Windows-1252. A character the
// code page cannot write becomes '?' (63), as the platform's conversion does.
std::uint8_t Windows1252Code(char16_t character);

// The 8-bit code of one character in the system's 8-bit code page, so that a
// character that came from a single byte yields that byte: the ANSI code page
// on Windows, Windows-1252 everywhere else.
std::uint8_t AnsiCode(char16_t character);

}  // namespace vantrel
