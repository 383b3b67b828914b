#pragma once

#include "server/text.h"

#include <cstdint>
#include <string_view>

namespace vantrel {

// The image file that SET IMAGE sends, as the console names it everywhere.
inline constexpr std::string_view kImageFile = "c:\\Projects\\Vantrel\\VantrelTest Utility\\FP_blk.hex";

// The SET IMAGE block for the position and the file's bytes, one byte to one
// character: the packet header with a count of at least five digits, the
// 106-character image header, the data, and nothing after it.
Text ImagePacket(TextView position, std::string_view fileBytes);

// The packet count of an image of the given length: the length plus the
// image header, as a 32-bit number. Overflow (error 6) beyond that.
std::int32_t ImagePacketCount(std::uint64_t dataLength);

}  // namespace vantrel
