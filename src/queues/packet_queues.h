#pragma once

#include "server/command_block.h"
#include "server/text.h"

namespace vantrel {

class Console;

// The packet block every packet sender starts with: "ReaderPosition=" and the
// two-digit position, "PacketCount=" and the number of data characters (three
// digits, more when it needs them), then "PacketData=" and the data. The
// sender closes it: CR LF and NUL on most blocks, nothing on some.
CommandBlock PacketBlock(TextView position, TextView data);

// Sends the fixed three-character test packet to the selected terminal.
void PacketOut(Console& console);
// Takes the next packet from the input queue and shows it made visible.
void PacketQue(Console& console);

}  // namespace vantrel
