#pragma once

#include "server/command_block.h"
#include "server/text.h"

namespace vantrel {

class Console;

// Sends the fixed three-character test packet to the selected terminal.
void PacketOut(Console& console);
// Takes the next packet from the input queue and shows it made visible.
void PacketQue(Console& console);

}  // namespace vantrel
