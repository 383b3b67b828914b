// vantrel_console_window_list FILE: writes the console window's controls,
// fonts and menus as a C++ header, for the yardstick of the Windows
// program's start-up (bench/win32_console_window/), which makes the same
// system controls from it with nothing behind them. Run by the cross-build
// at build time, so that the list is always the console window's own.

#include "app/all_forms.h"
#include "console/setup_dialogs.h"
#include "window_list.h"

#include <fstream>
#include <iostream>

int main(int argc, char* argv[]) {
    using namespace vantrel;
    if (argc != 2) {
        std::cerr << "Usage: vantrel_console_window_list FILE\n";
        return 2;
    }
    // The Windows console's menu bar: Tools with its one entry, then Set-up.
    std::vector<std::vector<Text>> menus = {{u"&Tools", u"&Keep going after run-time errors"}, {u"&Set-up"}};
    for (const MenuEntry& entry : SetupMenu()) {
        menus.back().push_back(entry.caption);
    }
    std::ofstream out(argv[1], std::ios::trunc);
    out << bench::WindowList(ConsoleForm(), menus);
    out.close();
    if (!out) {
        std::cerr << "vantrel_console_window_list: could not write " << argv[1] << "\n";
        return 1;
    }
    return 0;
}
