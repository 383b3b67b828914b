#include "window_list.h"

#include <gtest/gtest.h>

#include <string>

namespace vantrel::bench {
namespace {

// A small window: a frame holding a label, a timer, a bold text box, a
// graphical button in the same font, and a checked option; two menus.
FormDescription SmallWindow() {
    FormDescription form = MakeForm("Small", u"Small \"one\"", 3000, 2000, 0x00C0C0C0);
    Control label = Label("Note", u"A\r\nB\"\u00e9", 10, 20, 300, 200).Fore(0x000000FF).In("Box");
    Control box = TextBox("Entry", u"12", 50, 60, 700, 285);
    box.font = Font{"Arial", 9.75, true};
    Control button = CommandButton("Go", u"G&O", 900, 60, 600, 400, [](Console&) {}).Graphical(0x0000FF00);
    button.font = Font{"Arial", 9.75, true};
    Control option = OptionButton("One", u"One", 900, 600, 600, 300);
    option.checked = true;
    form.controls = {
        Frame("Box", u"Box", 100, 200, 1000, 800), label, Timer("Tick", 100, [](Console&) {}), box, button, option};
    return form;
}

TEST(WindowList, EveryControlButTimersAtItsPlaceWithItsExactText) {
    const std::string list = WindowList(SmallWindow(), {{u"&Tools", u"&Keep"}, {u"&Set-up", u"A", u"B"}});
    const char* rows[] = {
        "    {ControlKind::Frame, ButtonStyle::Standard, false, ScrollBars::None, false, false, false, false, 100, "
        "200, 1000, 800, -1, -1, -1, std::u16string_view(u\"Box\", 3)},\n",
        // Inside the frame: its place added; CR LF, the quote and the é escaped.
        "    {ControlKind::Label, ButtonStyle::Standard, false, ScrollBars::None, false, false, false, false, 110, "
        "220, 300, 200, -1, 255, -1, std::u16string_view(u\"A\\xD\" u\"\\xA\" u\"B\\x22\" u\"\\xE9\" u\"\", 6)},\n",
        "    {ControlKind::TextBox, ButtonStyle::Standard, false, ScrollBars::None, false, false, false, false, 50, "
        "60, 700, 285, -1, -1, 0, std::u16string_view(u\"12\", 2)},\n",
        "    {ControlKind::CommandButton, ButtonStyle::Graphical, false, ScrollBars::None, false, false, true, false, "
        "900, 60, 600, 400, 65280, -1, 0, std::u16string_view(u\"G&O\", 3)},\n",
        "    {ControlKind::OptionButton, ButtonStyle::Standard, false, ScrollBars::None, false, false, false, true, "
        "900, 600, 600, 300, -1, -1, -1, std::u16string_view(u\"One\", 3)},\n",
    };
    std::string expected = "inline constexpr ListedControl kListedControls[] = {\n";
    for (const char* row : rows) {
        expected += row;
    }
    expected += "};\n";
    EXPECT_NE(std::string::npos, list.find(expected)) << list;
    EXPECT_EQ(std::string::npos, list.find("Timer")) << list;
}

TEST(WindowList, TheWindowItsFontsOnceAndItsMenus) {
    const std::string list = WindowList(SmallWindow(), {{u"&Tools", u"&Keep"}, {u"&Set-up", u"A", u"B"}});
    for (const char* part : {
             "inline constexpr std::u16string_view kListedCaption = std::u16string_view(u\"Small \\x22\" u\"one\\x22\" "
             "u\"\", 11);\n",
             "inline constexpr int kListedWidth = 3000;\ninline constexpr int kListedHeight = 2000;\n"
             "inline constexpr long long kListedBackColor = 12632256;\n",
             "inline constexpr ListedFont kListedFonts[] = {\n    {\"Arial\", 9.75, true},\n};\n",
             "inline constexpr ListedMenu kListedMenus[] = {\n    {std::u16string_view(u\"&Tools\", 6), 0, 1},\n"
             "    {std::u16string_view(u\"&Set-up\", 7), 1, 2},\n};\n",
             "inline constexpr std::u16string_view kListedMenuEntries[] = {\n    std::u16string_view(u\"&Keep\", 5),\n"
             "    std::u16string_view(u\"A\", 1),\n    std::u16string_view(u\"B\", 1),\n};\n",
         }) {
        EXPECT_NE(std::string::npos, list.find(part)) << part << "\nin\n" << list;
    }
}

}  // namespace
}  // namespace vantrel::bench
