// The core's quicker paths must say and send exactly what the plain ones do.

#include "server/command_block.h"
#include "server/large_text.h"
#include "server/server_calls.h"
#include "server/text.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace vantrel {
namespace {

TEST(CommandBlock, AKeyAndItsValueMakeTheSameLineAsTheJoinedText) {
    const Text value = Text(u"0") + kNul + u"7";  // a value with a NUL inside
    EXPECT_TEXT(CommandBlock().AddLine(u"FuelingPosition=" + value).Text(),
                CommandBlock().AddLine(u"FuelingPosition=", value).Text());
    EXPECT_TEXT(CommandBlock().AddLineLf(u"KeyData=" + value).Text(),
                CommandBlock().AddLineLf(u"KeyData=", value).Text());
    EXPECT_TEXT(u"Limit=\r\n", CommandBlock().AddLine(u"Limit=", u"").Text());
    // A block far larger than the room taken at first grows as any text.
    CommandBlock large;
    for (int line = 0; line < 100; ++line) {
        large.AddLine(u"Line=", u"0123456789");
    }
    EXPECT_EQ(100u * 17, large.Text().size());
}

TEST(Text, JoinedAndAppendedBytesAreThePlainConcatenations) {
    EXPECT_TEXT(u"<Object>.Stop = (07)", Joined({u"<Object>.Stop = (", u"07", u")"}));
    EXPECT_TEXT(u"", Joined({}));
    Text text = u"A";
    AppendBytes(text, std::string("\x00\x7f\x80\xff", 4));
    EXPECT_TEXT(Text(u"A") + char16_t(0) + char16_t(0x7F) + char16_t(0x80) + char16_t(0xFF), text);
}

// Counts what reaches it, like the trace file and the call monitor.
class CountingListener final : public CallListener {
public:
    void OnEvent(const CallEvent& event) override { events.push_back(event); }
    std::vector<CallEvent> events;
};

TEST(TracedObject, CallsReachTheServerWhetherOrNotAnyoneListens) {
    auto recording = std::make_unique<testing::RecordingServer>();
    testing::RecordingServer& server = *recording;
    CallEvents events;
    TracedObject traced(std::move(recording), events);

    traced.Put("Authorize", Variant::OfText(u"FuelingPosition=01\r\n"));
    Variant position = Variant::OfInt16(3);
    traced.CallByRef("DispenserInformation", position);
    ASSERT_EQ(2u, server.calls.size());  // nobody listened, and both went out
    EXPECT_EQ("Authorize", server.calls[0].member);

    CountingListener listener;
    events.Add(&listener);
    traced.Put("Price", Variant::OfText(u"Hose=1\r\n"));
    traced.Call("SystemVersions");
    ASSERT_EQ(2u, listener.events.size());
    EXPECT_EQ(Variant::OfText(u"Hose=1\r\n"), listener.events[0].argument);
    EXPECT_EQ("SystemVersions", listener.events[1].member);
    EXPECT_EQ(4u, server.calls.size());
}

}  // namespace
}  // namespace vantrel
