#pragma once

#include "command_block.h"
#include "text.h"

namespace vantrel {

// The raw packet a sender hands to "PacketQueOutput": "ReaderPosition=" and
// the two-digit position, CR LF, "PacketCount=" and the number of data
// characters zero-padded to the count width, CR LF, "PacketData=" and the data.
// The block stops right after the last data character: senders that close the
// line and the block add CR LF and NUL themselves, the others leave it open.
CommandBlock PacketBlock(TextView position, TextView data, int countWidth = 3);

}  // namespace vantrel
