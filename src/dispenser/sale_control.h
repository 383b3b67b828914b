#pragma once

#include "base/form.h"

#include <vector>

namespace vantrel {

// Deauthorize, Stop with STOP_ALL over it, Resume, PayOutSale: each assigns
// a bare position text (or "0" for all) and leaves CommandData as it was.
void AddSaleControlButtons(std::vector<Control>& controls);

}  // namespace vantrel
