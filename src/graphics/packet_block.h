#pragma once

#include "server/command_block.h"

#include <cstdint>

namespace vantrel {

// The header of an output packet: "ReaderPosition=" and the position, CR LF,
// "PacketCount=" and the count zero-padded to the width, CR LF, then
// "PacketData=" with the data still to come. Each sender appends its data
// and closes the block its own way.
CommandBlock PacketHeader(TextView position, std::int64_t count, int countWidth);

}  // namespace vantrel
