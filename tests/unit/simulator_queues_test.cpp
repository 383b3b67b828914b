// The event queues: what the forecourt puts in comes out of the read members
// exactly, oldest first, until the clear members take it away.
#include "simulator_fixture.h"

#include <functional>

namespace vantrel::testing {
namespace {

struct QueueCase {
    const char* name;
    std::function<std::string(Simulator&)> add;
    const char* read;
    const char* clear;
    const char* countKey;
    Text entry;
};

class QueueRoundTripTest : public SimulatorTest, public ::testing::WithParamInterface<QueueCase> {};

TEST_P(QueueRoundTripTest, AnEntryIsReadUntilItsClearTakesItAway) {
    const QueueCase& c = GetParam();
    EXPECT_TEXT(u"", Call(c.read));
    ASSERT_EQ("", c.add(simulator()));
    ASSERT_EQ("", c.add(simulator()));
    EXPECT_TEXT(u"2", Value(Call("QueCountQuery"), c.countKey));
    // A read looks; it does not take.
    EXPECT_TEXT(c.entry, Call(c.read));
    EXPECT_TEXT(c.entry, Call(c.read));
    EXPECT_EQ(1, Number(c.clear));
    EXPECT_EQ(0, Number(c.clear));
    EXPECT_EQ(0, Number(c.clear));  // clearing an empty queue is harmless
    EXPECT_TEXT(u"", Call(c.read));
    EXPECT_TEXT(u"CardQue=0\r\nKeyQue=0\r\nCashInQue=0\r\nErrorQue=0\r\nPacketQue=0\r\n", Call("QueCountQuery"));
}

INSTANTIATE_TEST_SUITE_P(
    Queues, QueueRoundTripTest,
    ::testing::Values(QueueCase{"Card",
                                [](Simulator& s) { return s.forecourt().SwipeCard(7, u";4000001234567899=2512?"); },
                                "CardQue", "ClearTopCardQue", "CardQue",
                                u"ReaderPosition=07\r\nCardData=;4000001234567899=2512?\r\n"},
                      QueueCase{"Key", [](Simulator& s) { return s.forecourt().PressKeys(12, u"1234"); }, "KeyQue",
                                "ClearTopKeyQue", "KeyQue", u"ReaderPosition=12\r\nEntryMode=\r\nKeyData=1234\r\n"},
                      QueueCase{"Cash", [](Simulator& s) { return s.forecourt().InsertCash(32, u"20"); }, "CashInQue",
                                "ClearTopCashQue", "CashInQue", u"ReaderPosition=32\r\nAmount=20.00\r\n"},
                      QueueCase{"Packet", [](Simulator& s) { return s.forecourt().SendPacket(5, u"C\x10\x07"); },
                                "PacketQueInput", "ClearPacketEntry", "PacketQue",
                                Nul(u"ReaderPosition=05\r\nPacketCount=003\r\nPacketData=C\x10\x07\r\n")}),
    [](const ::testing::TestParamInfo<QueueCase>& info) { return std::string(info.param.name); });

TEST_F(SimulatorTest, EntriesComeOutOldestFirst) {
    ASSERT_EQ("", simulator().forecourt().InsertCash(3, u"5"));
    ASSERT_EQ("", simulator().forecourt().InsertCash(4, u"0.5"));
    EXPECT_TEXT(u"ReaderPosition=03\r\nAmount=5.00\r\n", Call("CashInQue"));
    EXPECT_EQ(1, Number("ClearTopCashQue"));
    EXPECT_TEXT(u"ReaderPosition=04\r\nAmount=0.50\r\n", Call("CashInQue"));
}

TEST_F(SimulatorTest, APacketInTheInputQueueHasTheFixedHeaderLayout) {
    struct Case {
        Text data;
        const char16_t* count;
    };
    for (const Case& c : {Case{Text(), u"000"}, Case{Text(u"C\x10\x07"), u"003"}, Case{Text(999, u'\0'), u"999"}}) {
        ASSERT_EQ("", simulator().forecourt().SendPacket(9, c.data));
        const Text packet = Call("PacketQueInput");
        const Text header = u"ReaderPosition=09\r\nPacketCount=" + Text(c.count) + u"\r\nPacketData=";
        EXPECT_TEXT(header, packet.substr(0, header.size()));
        EXPECT_TEXT(c.data, packet.substr(header.size(), c.data.size()));
        EXPECT_TEXT(Nul(u"\r\n"), packet.substr(header.size() + c.data.size()));
        EXPECT_EQ(47u, header.size());
        EXPECT_TEXT(c.count, packet.substr(31, 3));  // characters 32 to 34
        EXPECT_EQ(0, Number("ClearPacketEntry"));
    }
    // The count has three digits: a longer packet is never made.
    EXPECT_EQ("a terminal packet holds at most 999 characters, not 1000",
              simulator().forecourt().SendPacket(9, Text(1000, u'x')));
    EXPECT_TEXT(u"", Call("PacketQueInput"));
}

// Keys without echo are the script tests'.
TEST_F(SimulatorTest, KeysFollowTheTerminalsEntryMode) {
    // Under DES the queue carries a PIN block, never the keys.
    Put("KeyEntryType", Nul(u"ReaderPosition=07\r\nEntryMode=DESEncryption\r\n"));
    Put("KeyEntryType", Nul(u"ReaderPosition=08\r\nEntryMode=DESEncryption\r\n"));
    ASSERT_EQ("", simulator().forecourt().PressKeys(7, u"4321"));
    ASSERT_EQ("", simulator().forecourt().PressKeys(8, u"4321"));
    const Text first = Value(Call("KeyQue"), "KeyData");
    EXPECT_EQ(1, Number("ClearTopKeyQue"));
    const Text second = Value(Call("KeyQue"), "KeyData");
    EXPECT_EQ(16u, first.size());
    EXPECT_EQ(Text::npos, first.find_first_not_of(u"0123456789ABCDEF"));
    EXPECT_NE(first, second);
    EXPECT_EQ(Text::npos, first.find(u"4321"));
}

TEST_F(SimulatorTest, AFullQueueRefusesMore) {
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ("", simulator().forecourt().SwipeCard(1 + i % 32, u";1?"));
    }
    EXPECT_EQ("the card queue is full", simulator().forecourt().SwipeCard(1, u";1?"));
    EXPECT_TEXT(u"100", Value(Call("QueCountQuery"), "CardQue"));
}

}  // namespace
}  // namespace vantrel::testing
