// The reader-terminal commands with more than one step: the DES key entry
// with its lead-in packet, the nine preloaded messages, and the bar-code
// print's lasting effect on the position text.
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <string>

namespace vantrel {
namespace {

using namespace std::string_literals;  // u"...\0"s keeps the closing NUL
using testing::RecordedCall;
using testing::TestConsole;

// The two blocks and the boxes are the terminal script's; the entry mode is
// the block left in CommandData.
TEST(KeyEntryDes, TheEntryModeIsLeftInCommandData) {
    TestConsole test;
    test.Select(14);
    test.Click("KeyEntryD");
    EXPECT_TEXT(u"ReaderPosition=14\r\nEntryMode=DESEncryption\r\n\0"s, ToText(test.console().CommandData));
}

TEST(KeyEntryDes, AFailedPacketStopsBeforeTheEntryMode) {
    TestConsole test;
    test.console().SetDataBox(u"before");
    test.server().QueueFailure("PacketQueOutput", RuntimeError(5, "Invalid procedure call or argument"));
    test.Click("KeyEntryD");
    ASSERT_EQ(1u, test.report().errors.size());
    EXPECT_EQ(std::vector<std::string>{"PacketQueOutput"}, test.members());
    // The packet was copied before its assignment failed.
    EXPECT_TEXT(u"ReaderPosition=01\r\nPacketCount=017\r\nPacketData=44$*1234567890123",
                ToText(test.console().CommandData));
    EXPECT_TEXT(u"before", test.console().DataBox());
}

TEST(PreloadedMessages, NineAssignmentsInOrderWithoutAPosition) {
    TestConsole test;
    test.Select(23);
    test.server().calls.clear();
    test.Click("PreLoadMSGs");

    const Text expected[] = {
        u"Section=1\r\nMessageType=Card\r\nMessageNumber=1\r\nMessage=Get it Out\r\n\0"s,
        u"Section=1\r\nMessageType=Card\r\nMessageNumber=2\r\nMessage=Putt'r In\r\n\0"s,
        u"Section=1\r\nMessageType=Card\r\nMessageNumber=3\r\nMessage=Its a Bad one\r\n\0"s,
        u"Section=0\r\nMessageType=Card\r\nMessageNumber=4\r\nMessage=Hold on a Minute\r\n\0"s,
        u"Section=1\r\nMessageType=Card\r\nMessageNumber=5\r\nMessage=Its in wrong\r\n\0"s,
        u"Section=1\r\nMessageType=Printer\r\nMessageNumber=1\r\nMessage=Doin' a Print\r\n\0"s,
        u"Section=1\r\nMessageType=Printer\r\nMessageNumber=2\r\nMessage=Its all done\r\n\0"s,
        u"Section=1\r\nMessageType=Printer\r\nMessageNumber=3\r\nMessage=Grab it and Run\r\n\0"s,
        u"Section=1\r\nMessageType=Printer\r\nMessageNumber=4\r\nMessage=Printers BAD\r\n\0"s,
    };
    ASSERT_EQ(std::size(expected), test.calls().size());
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(RecordedCall::Kind::Put, test.calls()[i].kind);
        EXPECT_EQ("PreloadDisplayMessage", test.calls()[i].member);
        EXPECT_TEXT(expected[i], test.calls()[i].text());
    }
    EXPECT_TEXT(u"<Object>.PreloadDisplayMessage = (data)", test.console().FunctionBox());
    EXPECT_TEXT(expected[8], test.console().DataBox());
    EXPECT_TEXT(expected[8], ToText(test.console().CommandData));
}

TEST(PreloadedMessages, AFailureLeavesTheEarlierMessagesSentAndTheRestUnsent) {
    TestConsole test;
    test.console().SetDataBox(u"before");
    for (int sent = 0; sent < 3; ++sent) {
        test.server().QueueAnswer("PreloadDisplayMessage", Variant());
    }
    test.server().QueueFailure("PreloadDisplayMessage", RuntimeError(13, "Type mismatch"));
    test.Click("PreLoadMSGs");
    ASSERT_EQ(1u, test.report().errors.size());
    ASSERT_EQ(4u, test.calls().size());
    EXPECT_NE(Text::npos, test.calls()[3].text().find(u"Message=Hold on a Minute"));
    EXPECT_TEXT(u"<Object>.PreloadDisplayMessage = (data)", test.console().FunctionBox());
    EXPECT_TEXT(u"before", test.console().DataBox());
}

// After a bar-code print the position text says "01" for good while the
// number and the selector keep the technician's choice: every later command
// that carries the text sends "01", the information requests still pass 12.
TEST(BarCodePrint, LaterCommandsCarryTerminalOneUntilAPositionIsClicked) {
    TestConsole test;
    test.Select(12);
    test.Click("BarCodePrint");
    EXPECT_TEXT(u"01", test.console().SelectedPositionText);
    EXPECT_EQ(Variant::OfInt16(12), test.console().SelectedPosition);
    EXPECT_TEXT(u"Fueling Position -> 12", test.console().Window().TextOf("TextBoxPumpNumber"));
    EXPECT_TRUE(test.console().Window().Checked("Button12"));

    struct Later {
        const char* button;
        const char* member;
        Variant sent;  // Empty: a block that starts with the position line
    };
    test.prompter().No();  // the keypad asks first
    for (const Later& later :
         {Later{"Display", "DisplayData", {}}, Later{"Beeper", "BeeperControl", {}},
          Later{"Header2", "PrintOutput", {}}, Later{"KeyEntryNNE", "KeyEntryType", {}},
          Later{"KeyEntryD", "KeyEntryType", {}}, Later{"KeyPad", "KeyPadConfiguration", {}},
          Later{"Stop", "Stop", Variant::OfText(u"01")}, Later{"ReaderInfo", "ReaderInformation", Variant::OfInt16(12)},
          Later{"DispenserInfo", "DispenserInformation", Variant::OfInt16(12)}}) {
        test.server().calls.clear();
        test.Click(later.button);
        ASSERT_FALSE(test.calls().empty()) << later.button;
        const RecordedCall& call = test.calls().back();
        EXPECT_EQ(later.member, call.member);
        if (later.sent.is(Variant::Kind::Empty)) {
            EXPECT_EQ(0u, call.text().rfind(u"ReaderPosition=01", 0)) << Escaped(call.text());
        } else {
            EXPECT_EQ(later.sent, call.value) << later.button;
        }
    }

    test.Select(12);
    test.server().calls.clear();
    test.Click("Display");
    EXPECT_EQ(0u, test.calls().at(0).text().rfind(u"ReaderPosition=12\r\n", 0));
}

}  // namespace
}  // namespace vantrel
