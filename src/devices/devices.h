#pragma once

#include "base/form.h"

#include <vector>

namespace vantrel {

inline constexpr char kOtherDevicesForm[] = "OtherDevicesForm";

// OTHERDEVICESBUTTON on the console window.
void AddDevicesControls(std::vector<Control>& controls);

// The other-devices window.
FormDescription OtherDevicesForm();

}  // namespace vantrel
