#pragma once

#include "base/form.h"

#include <vector>

namespace vantrel {

// Reader terminal buttons: display, beeper, printer, key entry, keypad, preloaded messages, reader information on the
// console window.
void AddTerminalControls(std::vector<Control>& controls);

}  // namespace vantrel
