#pragma once

#include "base/form.h"

#include <vector>

namespace vantrel {

inline constexpr char kGraphicsDisplayForm[] = "GraphicsDisplay";
inline constexpr char kTestFunctionForm[] = "TestFunctionForm";

// InfoDisplay and TEST_FUNCTION_BUTTON on the console window.
void AddGraphicsControls(std::vector<Control>& controls);

// The graphics display window: one formatted screen per terminal family.
FormDescription GraphicsDisplayForm();

// The test functions window: secure prompt, centred text, image load.
FormDescription TestFunctionForm();

}  // namespace vantrel
