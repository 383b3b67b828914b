#include "win32_text.h"

#include <windows.h>

namespace vantrel::win32 {

std::wstring Wide(TextView text) { return std::wstring(text.begin(), text.end()); }

Text FromWide(std::wstring_view text) { return Text(text.begin(), text.end()); }

std::wstring WideFromUtf8(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(), size);
    return wide;
}

std::string Utf8(std::wstring_view text) {
    if (text.empty()) {
        return {};
    }
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), narrow.data(), size, nullptr, nullptr);
    return narrow;
}

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
