#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace vantrel {

// Every text the console shows or sends: 16-bit characters, embedded NUL and
// control characters included. Never treat it as NUL-terminated.
using Text = std::u16string;
using TextView = std::u16string_view;

inline constexpr char16_t kCr = 13;
inline constexpr char16_t kLf = 10;
inline constexpr char16_t kNul = 0;
inline constexpr char16_t kEsc = 27;
inline constexpr char16_t kSub = 26;
inline constexpr char16_t kEtx = 3;

inline const Text kCrLf = u"\r\n";

// UTF-8 <-> UTF-16 for file names, command lines and diagnostics. Invalid
// sequences become U+FFFD; nothing throws.
Text FromUtf8(std::string_view utf8);
std::string ToUtf8(TextView text);

// Builds a text from bytes, one byte to one character (Latin-1 style), for
// data that is defined as "one byte of the file is one character".
Text FromBytes(std::string_view bytes);
// The same, appended to a text.
void AppendBytes(Text& text, std::string_view bytes);

// The parts one after the other, in one allocation.
Text Joined(std::initializer_list<TextView> parts);

// A C-style escaped rendering (\r \n \0 \e \xHH \uHHHH), so that a failing
// comparison says which character differs.
std::string Escaped(TextView text);

// A message (UTF-8) with its control characters written as escapes (\0, \r,
// \t, \e, \xHH), so that a NUL in a name does not end the message where it
// is printed. Line feeds stay line breaks with ButLineFeeds.
enum class ControlEscapes {
    All,
    ButLineFeeds,
};
std::string WithControlsEscaped(std::string_view message, ControlEscapes which);

}  // namespace vantrel
