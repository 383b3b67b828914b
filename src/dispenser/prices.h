#pragma once

#include "base/form.h"

#include <vector>

namespace vantrel {

// Price, Price1..Price6 and Price3Blend: each assigns its own price block to
// Price, leaving CommandData as it was.
void AddPriceButtons(std::vector<Control>& controls);

}  // namespace vantrel
