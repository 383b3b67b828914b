#pragma once

#include "server/text.h"

#include <cstdint>
#include <string_view>

namespace vantrel {

class FileTable;

// The image file that SET IMAGE sends, as the console names it everywhere.
inline constexpr std::string_view kImageFile = "c:\\Projects\\Vantrel\\VantrelTest Utility\\FP_blk.hex";

// The largest image file SET IMAGE sends: 256 MiB, a packet of 512 MiB.
inline constexpr std::uint64_t kMaxImageFile = std::uint64_t{256} << 20;

// The SET IMAGE block for the position and the file's bytes, one byte to one
// character: the packet header with a count of at least five digits, the
// 106-character image header, the data, and nothing after it.
Text ImagePacket(TextView position, std::string_view fileBytes);
// The same packet for a file open in the table, read from its current place
// to its end and widened piece by piece as it is read.
Text ImagePacket(TextView position, FileTable& files, int number);

// The packet count of an image of the given length: the length plus the
// image header, as a 32-bit number. Overflow (error 6) beyond that.
std::int32_t ImagePacketCount(std::uint64_t dataLength);

}  // namespace vantrel
