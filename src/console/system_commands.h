#pragma once

#include "console/form.h"

#include <vector>

namespace vantrel {

// SystemVersions, SelfTestStart, SelfTestStatus, WindowControl, HELP_BUTTON,
// STRESS_BUTTON on the console window.
void AddSystemControls(std::vector<Control>& controls);

// Timer1's tick: the stress traffic while stress mode is on.
void StressTick(Console& console);

// The set-up dialogs.
FormDescription GetDebugSelectForm();
FormDescription SerialPortParaForm();

}  // namespace vantrel
