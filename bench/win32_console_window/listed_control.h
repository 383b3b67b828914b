#pragma once

#include "base/form.h"

#include <cstddef>
#include <string_view>

namespace vantrel::bench {

// One control of the console window as the list written at build time has
// it: what the row says that the system control needs, its place from the
// window's corner (its frames' places added), and the text it shows first.
struct ListedControl {
    ControlKind kind;
    ButtonStyle style;
    bool multiLine;
    ScrollBars scrollBars;
    bool centred;
    bool readOnly;
    bool clickable;
    bool checked;
    int left;  // twips
    int top;
    int width;
    int height;
    long long backColor;  // 0x00BBGGRR, or -1 for none
    long long foreColor;
    int font;  // in kListedFonts, or -1 for the form's
    std::u16string_view text;
};

struct ListedFont {
    std::string_view family;
    double points;
    bool bold;
};

struct ListedMenu {
    std::u16string_view caption;
    std::size_t first;  // its entries in kListedMenuEntries
    std::size_t count;
};

}  // namespace vantrel::bench
