#pragma once

#include "base/form.h"
#include "console/setup_dialogs.h"

#include <vector>

namespace vantrel {

inline constexpr Color kStressOffColor = 0x00FF00FF;  // magenta
inline constexpr Color kStressOnColor = 0x0000FF00;   // green

// SystemVersions, SelfTestStart, SelfTestStatus, WindowControl, HELP_BUTTON,
// STRESS_BUTTON on the console window.
void AddSystemControls(std::vector<Control>& controls);

// Timer1's tick: the stress traffic while stress mode is on.
void StressTick(Console& console);

}  // namespace vantrel
