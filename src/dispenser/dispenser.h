#pragma once

#include "base/form.h"

#include <vector>

namespace vantrel {

// Authorization, price, sale control and dispenser information buttons on the console window.
void AddDispenserControls(std::vector<Control>& controls);

}  // namespace vantrel
