#pragma once

#include "base/form.h"

#include <vector>

namespace vantrel {

// Event and packet queue buttons on the console window.
void AddQueueControls(std::vector<Control>& controls);

}  // namespace vantrel
