#pragma once

#include "base/shown_text.h"
#include "server/text.h"

#include <string>
#include <string_view>

namespace vantrel::win32 {

// On Windows wchar_t holds UTF-16 as the model's texts do: the same units.
std::wstring Wide(TextView text);
Text FromWide(std::wstring_view text);
std::wstring WideFromUtf8(std::string_view text);
std::string Utf8(std::wstring_view text);

// What an edit box or label shows of an exact text: control characters by
// name (an edit box ends its text at a NUL and shows a lone CR or LF as
// nothing readable), and a line break as the CR LF a multi-line box needs.
std::wstring ShownWide(TextView text, LineBreaks breaks);

}  // namespace vantrel::win32
