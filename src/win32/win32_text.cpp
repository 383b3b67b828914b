#include "win32_text.h"

namespace vantrel::win32 {

std::wstring Wide(TextView text) { return std::wstring(text.begin(), text.end()); }

Text FromWide(std::wstring_view text) { return Text(text.begin(), text.end()); }

std::wstring WideFromUtf8(std::string_view text) { return Wide(FromUtf8(text)); }

std::string Utf8(std::wstring_view text) { return ToUtf8(FromWide(text)); }

std::wstring ShownWide(TextView text, LineBreaks breaks) {
    const Text shown = ShownText(text, breaks);
    std::wstring out;
    out.reserve(shown.size() + shown.size() / 16);
    for (const char16_t c : shown) {
        if (c == u'\n') {
            out += L"\r\n";
        } else {
            out += static_cast<wchar_t>(c);
        }
    }
    return out;
}

}  // namespace vantrel::win32
