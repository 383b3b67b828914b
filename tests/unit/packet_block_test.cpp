#include "server/packet_block.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

TEST(PacketBlock, HasTheFixedHeaderAndStopsAfterTheData) {
    const Text data = Text(u"C") + char16_t(16) + char16_t(7);
    const Text block = PacketBlock(u"05", data).Text();
    EXPECT_TEXT(u"ReaderPosition=05\r\nPacketCount=003\r\nPacketData=" + data, block);
    // The reader of packets relies on these offsets: count at 32..34, data
    // from 48 (counting from 1).
    EXPECT_TEXT(u"003", block.substr(31, 3));
    EXPECT_EQ(47u, block.size() - data.size());
}

TEST(PacketBlock, CountsEveryDataCharacterAndPadsToTheWidth) {
    EXPECT_TEXT(u"ReaderPosition=32\r\nPacketCount=000\r\nPacketData=", PacketBlock(u"32", u"").Text());
    const Text nul(1, u'\0');
    EXPECT_TEXT(u"ReaderPosition=01\r\nPacketCount=001\r\nPacketData=" + nul, PacketBlock(u"01", nul).Text());
    const Text long_data(1234, u'x');
    EXPECT_TEXT(u"ReaderPosition=01\r\nPacketCount=1234\r\nPacketData=" + long_data,
                PacketBlock(u"01", long_data).Text());
    EXPECT_TEXT(u"ReaderPosition=02\r\nPacketCount=00017\r\nPacketData=44$*1234567890123",
                PacketBlock(u"02", u"44$*1234567890123", 5).Text());
}

}  // namespace
}  // namespace vantrel
