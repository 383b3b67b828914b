#pragma once

#include "base/form.h"

namespace vantrel {

// The console window VantrelTest with the controls of its own: the headline,
// the echo boxes, the position selector, the system commands and the timer.
// The other subsystems add their rows to it where the program assembles its
// windows.
FormDescription ConsoleShellForm();

}  // namespace vantrel
