#pragma once

#include "base/form.h"

#include <vector>

namespace vantrel {

// The console window VantrelTest: its own controls, then those that each
// subsystem places on it.
FormDescription ConsoleForm();

// Every window of the program, the console first.
std::vector<FormDescription> AllForms();

}  // namespace vantrel
