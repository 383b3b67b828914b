#pragma once

#include "base/form.h"

#include <vector>

namespace vantrel {

// Packet Output sends the fixed three-character test packet to the selected
// terminal; Packet Input takes the next packet from the input queue and
// shows it made visible.
void AddPacketQueueControls(std::vector<Control>& controls);

}  // namespace vantrel
