#pragma once

#include "base/form.h"
#include "server/text.h"

#include <string>
#include <vector>

namespace vantrel::bench {

// A window's controls, fonts and menus as a C++ header of constants for a
// plain Win32 program (bench/win32_console_window/listed_control.h has the
// types): every control but the timers, in the window's order, at its place
// from the window's corner (its frames' places added), with the exact text
// it shows first; each font once. menus: a menu's caption, then its
// entries' captions.
std::string WindowList(const FormDescription& form, const std::vector<std::vector<Text>>& menus);

}  // namespace vantrel::bench
