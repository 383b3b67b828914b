#pragma once

#include "command_block.h"
#include "text.h"

#include <cstdint>

namespace vantrel {

// The header of a raw packet for "PacketQueOutput": "ReaderPosition=" and the
// two-digit position, CR LF, "PacketCount=" and the count zero-padded to the
// count width (never cut), CR LF, then "PacketData=" with the data to come.
CommandBlock PacketHeader(TextView position, std::int64_t count, int countWidth = 3);

// The header counting the data, then the data. The block stops right after
// the last data character: senders that close the line and the block add
// CR LF and NUL themselves, the others leave it open.
CommandBlock PacketBlock(TextView position, TextView data, int countWidth = 3);

}  // namespace vantrel
