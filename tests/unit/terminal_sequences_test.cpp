// The reader-terminal commands with more than one step: the DES key entry
// with its lead-in packet, the keypad's three paths, the nine preloaded
// messages, the reader information query and the bar-code print's lasting
// effect on the position text.

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <string>

namespace vantrel {
namespace {

using namespace std::string_literals;  // u"...\0"s keeps the closing NUL
using testing::RecordedCall;
using testing::ScriptedPrompter;
using testing::TestConsole;

using BoxKind = ScriptedPrompter::Box::Kind;

TEST(KeyEntryDes, SendsTheLeadInPacketFirstThenTheEntryMode) {
    TestConsole test;
    test.Select(14);
    test.server().calls.clear();

    test.Click("KeyEntryD");

    ASSERT_EQ(2u, test.calls().size());
    EXPECT_EQ(RecordedCall::Kind::Put, test.calls()[0].kind);
    EXPECT_EQ("PacketQueOutput", test.calls()[0].member);
    // Ends with its last digit: no CR LF, no NUL.
    EXPECT_TEXT(u"ReaderPosition=14\r\nPacketCount=017\r\nPacketData=44$*1234567890123", test.calls()[0].text());
    EXPECT_EQ(RecordedCall::Kind::Put, test.calls()[1].kind);
    EXPECT_EQ("KeyEntryType", test.calls()[1].member);
    const Text entry = u"ReaderPosition=14\r\nEntryMode=DESEncryption\r\n\0"s;
    EXPECT_TEXT(entry, test.calls()[1].text());

    EXPECT_TEXT(u"<Object>.PacketQueOutput = (data)", test.console().FunctionBox());
    EXPECT_TEXT(entry, test.console().DataBox());  // the packet is shown nowhere
    EXPECT_TEXT(entry, ToText(test.console().CommandData));
}

TEST(KeyEntryDes, AFailedPacketStopsBeforeTheEntryMode) {
    TestConsole test;
    test.console().SetDataBox(u"before");
    test.server().QueueFailure("PacketQueOutput", RuntimeError(5, "Invalid procedure call or argument"));
    test.Click("KeyEntryD");
    ASSERT_EQ(1u, test.report().errors.size());
    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ("PacketQueOutput", test.calls()[0].member);
    // The packet was copied before its assignment failed.
    EXPECT_TEXT(u"ReaderPosition=01\r\nPacketCount=017\r\nPacketData=44$*1234567890123",
                ToText(test.console().CommandData));
    EXPECT_TEXT(u"before", test.console().DataBox());
}

struct KeyPadCase {
    const char* name;
    std::function<void(ScriptedPrompter&)> answers;
    std::vector<BoxKind> boxes;
    Text sent;  // empty: nothing sent
    const char16_t* functionBox;
};

std::ostream& operator<<(std::ostream& out, const KeyPadCase& c) { return out << c.name; }

class KeyPadPath : public ::testing::TestWithParam<KeyPadCase> {};

TEST_P(KeyPadPath, SendsAndShowsAsAnswered) {
    const KeyPadCase& c = GetParam();
    TestConsole test;
    test.Select(6);
    test.server().calls.clear();
    test.console().SetDataBox(u"before");
    test.console().CommandData = Variant::OfText(u"earlier block");
    c.answers(test.prompter());

    test.Click("KeyPad");

    ASSERT_TRUE(test.report().errors.empty());
    EXPECT_EQ(0u, test.prompter().pending());
    ASSERT_EQ(c.boxes.size(), test.prompter().boxes.size());
    for (std::size_t i = 0; i < c.boxes.size(); ++i) {
        EXPECT_EQ(c.boxes[i], test.prompter().boxes[i].kind) << "box " << i;
    }
    const auto& question = test.prompter().boxes[0];
    EXPECT_TEXT(u"Do you want to set your on config?", question.text);
    EXPECT_TEXT(u"Key Pad Configuration Select", question.title);
    if (c.boxes.size() > 1) {
        EXPECT_TEXT(u"Enter Keypad Config Data", test.prompter().boxes[1].text);
        EXPECT_TEXT(u"Keypad Configuration", test.prompter().boxes[1].title);
    }
    EXPECT_TEXT(c.functionBox, test.console().FunctionBox());
    if (c.sent.empty()) {
        EXPECT_TRUE(test.calls().empty());
        EXPECT_TEXT(u"before", test.console().DataBox());
        EXPECT_TEXT(u"earlier block", ToText(test.console().CommandData));
        return;
    }
    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ(RecordedCall::Kind::Put, test.calls()[0].kind);
    EXPECT_EQ("KeyPadConfiguration", test.calls()[0].member);
    EXPECT_TEXT(c.sent, test.calls()[0].text());
    EXPECT_TEXT(c.sent, test.console().DataBox());
    EXPECT_TEXT(c.sent, ToText(test.console().CommandData));
}

INSTANTIATE_TEST_SUITE_P(Answers, KeyPadPath,
                         ::testing::Values(KeyPadCase{"NoSendsTheDefaultWithoutAnInputBox",
                                                      [](ScriptedPrompter& p) { p.No(); },
                                                      {BoxKind::Question},
                                                      u"ReaderPosition=06\r\nKeyData=123@R456A@789NYL0EHCe\n\0"s,
                                                      u"<Object>.KeyPadData (data)"},
                                           KeyPadCase{"YesSendsWhatWasTyped",
                                                      [](ScriptedPrompter& p) { p.Yes().Enter(u"147*2580369#"); },
                                                      {BoxKind::Question, BoxKind::Input},
                                                      u"ReaderPosition=06\r\nKeyData=147*2580369#\n\0"s,
                                                      u"<Object>.KeyPadData (data)"},
                                           KeyPadCase{"TypedBlanksAndEqualsSignsTravelUnchanged",
                                                      [](ScriptedPrompter& p) { p.Yes().Enter(u" a=b  "); },
                                                      {BoxKind::Question, BoxKind::Input},
                                                      u"ReaderPosition=06\r\nKeyData= a=b  \n\0"s,
                                                      u"<Object>.KeyPadData (data)"},
                                           // Cancel or nothing typed: nothing sent and no message at all.
                                           KeyPadCase{"YesThenCancelSendsAndShowsNothing",
                                                      [](ScriptedPrompter& p) { p.Yes().Cancel(); },
                                                      {BoxKind::Question, BoxKind::Input},
                                                      {},
                                                      u"<Object>.KeyPadConfiguration = (data)"}),
                         [](const ::testing::TestParamInfo<KeyPadCase>& info) { return std::string(info.param.name); });

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
    EXPECT_TEXT(u"before", test.console().DataBox());
}

TEST(ReaderInformation, PassesTheSelectedNumberByReferenceAndShowsTheAnswer) {
    TestConsole test;
    test.Select(7);
    test.server().calls.clear();
    test.server().QueueAnswer("ReaderInformation", Variant::OfText(u"Reader=07\r\nType=QCAT\r\n\0"s));
    test.console().CommandData = Variant::OfText(u"earlier block");

    test.Click("ReaderInfo");

    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ(RecordedCall::Kind::CallByRef, test.calls()[0].kind);
    EXPECT_EQ("ReaderInformation", test.calls()[0].member);
    EXPECT_EQ(Variant::OfInt16(7), test.calls()[0].value);  // the number, not "07"
    EXPECT_TEXT(u"(return data)=<Object>.ReaderInformation (passed data)", test.console().FunctionBox());
    EXPECT_TEXT(u"Reader=07\r\nType=QCAT\r\n\0"s, test.console().DataBox());
    EXPECT_TEXT(u"earlier block", ToText(test.console().CommandData));
}

TEST(ReaderInformation, AnEmptyAnswerEmptiesTheDataBox) {
    TestConsole test;
    test.console().SetDataBox(u"before");
    test.Click("ReaderInfo");
    EXPECT_TEXT(u"", test.console().DataBox());
}

TEST(BarCodePrint, SendsTerminalOneAndShowsNothing) {
    TestConsole test;
    test.Select(12);
    test.Click("Display");
    test.server().calls.clear();
    const Text functionBox = test.console().FunctionBox();
    const Text dataBox = test.console().DataBox();
    const Variant commandData = test.console().CommandData;

    test.Click("BarCodePrint");

    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ(RecordedCall::Kind::Put, test.calls()[0].kind);
    EXPECT_EQ("PrintOutput", test.calls()[0].member);
    EXPECT_TEXT(
        u"ReaderPosition=01\r\nJob=Receipt\r\nMessage=Vantrel\r\nLine 1\r\nLine 2\r\nLine 3\r\nLine 4\r\n"
        u"\x1b"
        u"B0202354000006\x03\r\nTestLine 5\r\nTestLine 6\r\nTestLine 7\r\nTestLine 8\r\nTestLine 9\r\n"
        u"TestLine 10\r\nLastLine !\r\n\r\n\r\n\r\n\r\n\r\n\0"s,
        test.calls()[0].text());
    EXPECT_TEXT(functionBox, test.console().FunctionBox());
    EXPECT_TEXT(dataBox, test.console().DataBox());
    EXPECT_EQ(commandData, test.console().CommandData);
    // The two-digit text is forced for good; the number and the selector's
    // display keep the technician's choice.
    EXPECT_TEXT(u"01", test.console().SelectedPositionText);
    EXPECT_EQ(Variant::OfInt16(12), test.console().SelectedPosition);
    EXPECT_TEXT(u"Fueling Position -> 12", test.console().Window().TextOf("TextBoxPumpNumber"));
    EXPECT_TRUE(test.console().Window().Checked("Button12"));

    // The reader information still asks for the selected number.
    test.Click("ReaderInfo");
    ASSERT_EQ(2u, test.calls().size());
    EXPECT_EQ(Variant::OfInt16(12), test.calls()[1].value);
}

// Every later command that carries the position text sends "01" until a
// position is clicked again; the reader information still asks for the number.
struct AfterBarCodeCase {
    const char* button;
    const char* member;
};

class AfterBarCode : public ::testing::TestWithParam<AfterBarCodeCase> {};

TEST_P(AfterBarCode, LaterCommandsCarryTerminalOne) {
    const AfterBarCodeCase& c = GetParam();
    TestConsole test;
    test.Select(12);
    test.Click("BarCodePrint");
    test.server().calls.clear();
    test.prompter().No();  // the keypad asks first

    test.Click(c.button);

    ASSERT_FALSE(test.calls().empty());
    EXPECT_EQ(c.member, test.calls().back().member);
    EXPECT_EQ(0u, test.calls().back().text().rfind(u"ReaderPosition=01", 0)) << Escaped(test.calls().back().text());
    EXPECT_TEXT(u"Fueling Position -> 12", test.console().Window().TextOf("TextBoxPumpNumber"));
}

INSTANTIATE_TEST_SUITE_P(TerminalCommands, AfterBarCode,
                         ::testing::Values(AfterBarCodeCase{"Display", "DisplayData"},
                                           AfterBarCodeCase{"Beeper", "BeeperControl"},
                                           AfterBarCodeCase{"Header2", "PrintOutput"},
                                           AfterBarCodeCase{"KeyEntryNNE", "KeyEntryType"},
                                           AfterBarCodeCase{"KeyEntryD", "KeyEntryType"},
                                           AfterBarCodeCase{"KeyPad", "KeyPadConfiguration"}));

TEST(BarCodePrint, ThePositionTextReturnsWithTheNextPositionClick) {
    TestConsole test;
    test.Select(12);
    test.Click("BarCodePrint");
    test.Select(12);
    test.server().calls.clear();
    test.Click("Display");
    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ(0u, test.calls()[0].text().rfind(u"ReaderPosition=12\r\n", 0));
}

}  // namespace
}  // namespace vantrel
