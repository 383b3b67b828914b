#pragma once

#include "base/form.h"

#include <vector>

namespace vantrel {

// Preset ("  Auth "), Fillup, MultiHoseLock, PresetMOP1, PresetMOP2: each
// assigns one authorization block to Authorize through CommandData.
void AddAuthorizationButtons(std::vector<Control>& controls);

}  // namespace vantrel
