#pragma once

#include "console/form.h"

#include <vector>

namespace vantrel {

// InfoDisplay and TEST_FUNCTION_BUTTON on the console window.
void AddGraphicsControls(std::vector<Control>& controls);

FormDescription GraphicsDisplayForm();
FormDescription TestFunctionForm();

}  // namespace vantrel
