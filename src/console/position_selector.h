#pragma once

#include "base/form.h"

#include <vector>

namespace vantrel {

inline constexpr Color kLabelColor = 0x0080FFFF;
inline constexpr Color kFocusedLabelColor = 0x000000FF;

// The four handlers of position button N (1..32).
void PositionClick(Console& console, int position);
void PositionDblClick(Console& console, int position);
void PositionGotFocus(Console& console, int position);
void PositionLostFocus(Console& console, int position);

// Button1..Button32 with ButtLab1..ButtLab32.
void AddPositionSelector(std::vector<Control>& controls);

}  // namespace vantrel
