#include "window_list.h"

#include <cstdio>
#include <sstream>

namespace vantrel::bench {

namespace {

// A UTF-16 literal of exactly the text with its length, every unit outside
// plain ASCII (and the quote, backslash and question mark) escaped.
std::string Literal(TextView text) {
    std::string out = "std::u16string_view(u\"";
    for (const char16_t c : text) {
        if (c >= 0x20 && c < 0x7F && c != u'"' && c != u'\\' && c != u'?') {
            out += static_cast<char>(c);
        } else {
            // The literal ends after the escape, so that no digit that
            // follows is read as part of it.
            char escaped[16];
            std::snprintf(escaped, sizeof(escaped), "\\x%X\" u\"", static_cast<unsigned>(c));
            out += escaped;
        }
    }
    return out + "\", " + std::to_string(text.size()) + ")";
}

const char* KindName(ControlKind kind) {
    switch (kind) {
    case ControlKind::CommandButton: return "CommandButton";
    case ControlKind::OptionButton: return "OptionButton";
    case ControlKind::Label: return "Label";
    case ControlKind::TextBox: return "TextBox";
    case ControlKind::Frame: return "Frame";
    case ControlKind::Timer: return "Timer";
    }
    return "Timer";
}

const char* ScrollBarsName(ScrollBars bars) {
    switch (bars) {
    case ScrollBars::None: return "None";
    case ScrollBars::Horizontal: return "Horizontal";
    case ScrollBars::Vertical: return "Vertical";
    case ScrollBars::Both: return "Both";
    }
    return "None";
}

long long ColorOrNone(const std::optional<Color>& color) { return color ? static_cast<long long>(*color) : -1; }

}  // namespace

std::string WindowList(const FormDescription& form, const std::vector<std::vector<Text>>& menus) {
    std::vector<Font> fonts;
    std::ostringstream controls;
    controls << std::boolalpha;
    for (const Control& control : form.controls) {
        if (control.kind == ControlKind::Timer) {
            continue;  // no window of its own
        }
        int left = control.left;
        int top = control.top;
        for (const Control* frame = form.Find(control.container); frame; frame = form.Find(frame->container)) {
            left += frame->left;
            top += frame->top;
        }
        int font = -1;
        if (control.font) {
            font = 0;
            while (font < static_cast<int>(fonts.size()) &&
                   (fonts[font].family != control.font->family || fonts[font].points != control.font->points ||
                    fonts[font].bold != control.font->bold)) {
                ++font;
            }
            if (font == static_cast<int>(fonts.size())) {
                fonts.push_back(*control.font);
            }
        }
        controls << "    {ControlKind::" << KindName(control.kind)
                 << ", ButtonStyle::" << (control.style == ButtonStyle::Graphical ? "Graphical" : "Standard") << ", "
                 << control.multiLine << ", ScrollBars::" << ScrollBarsName(control.scrollBars) << ", "
                 << control.centred << ", " << control.readOnly << ", " << static_cast<bool>(control.click) << ", "
                 << control.checked << ", " << left << ", " << top << ", " << control.width << ", " << control.height
                 << ", " << ColorOrNone(control.backColor) << ", " << ColorOrNone(control.foreColor) << ", " << font
                 << ", " << Literal(control.caption) << "},\n";
    }
    std::ostringstream out;
    out << std::boolalpha
        << "// Written by vantrel_console_window_list from the console window's\n"
           "// description at build time.\n"
           "#pragma once\n\n#include \"listed_control.h\"\n\n"
           "namespace vantrel::bench {\n\n";
    out << "inline constexpr std::u16string_view kListedCaption = " << Literal(form.caption) << ";\n";
    out << "inline constexpr int kListedWidth = " << form.clientWidth << ";\n";
    out << "inline constexpr int kListedHeight = " << form.clientHeight << ";\n";
    out << "inline constexpr long long kListedBackColor = " << ColorOrNone(form.backColor) << ";\n\n";
    out << "inline constexpr ListedFont kListedFonts[] = {\n";
    for (const Font& font : fonts) {
        out << "    {\"" << font.family << "\", " << font.points << ", " << font.bold << "},\n";
    }
    out << "};\n\ninline constexpr ListedMenu kListedMenus[] = {\n";
    std::size_t first = 0;
    for (const std::vector<Text>& menu : menus) {
        out << "    {" << Literal(menu.front()) << ", " << first << ", " << menu.size() - 1 << "},\n";
        first += menu.size() - 1;
    }
    out << "};\n\ninline constexpr std::u16string_view kListedMenuEntries[] = {\n";
    for (const std::vector<Text>& menu : menus) {
        for (std::size_t entry = 1; entry < menu.size(); ++entry) {
            out << "    " << Literal(menu[entry]) << ",\n";
        }
    }
    out << "};\n\ninline constexpr ListedControl kListedControls[] = {\n" << controls.str() << "};\n\n";
    out << "}  // namespace vantrel::bench\n";
    return out.str();
}

}  // namespace vantrel::bench
