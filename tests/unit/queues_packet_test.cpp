#include "queues/packet_queues.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <string>

namespace vantrel {
namespace {

using testing::RecordedCall;
using testing::TestConsole;

// A packet answer as the server hands it over: fields at their fixed places
// when the position has two digits and the count three.
Text Answer(TextView position, TextView count, TextView data, TextView tail = TextView(u"\r\n\0", 3)) {
    Text answer = u"ReaderPosition=" + Text(position) + u"\r\nPacketCount=" + Text(count) + u"\r\nPacketData=";
    answer.append(data);
    answer.append(tail);
    return answer;
}

const Text kHeader05 = u"ReaderPosition=05\r\nPacketCount=003\r\nPacketData=";

struct ViewCase {
    const char* name;
    Text answer;
    Text shown;
    int error;  // 0: the click ends normally
};

void PrintTo(const ViewCase& c, std::ostream* out) { *out << c.name; }

const ViewCase kViews[] = {
    {"TheTestPacket", Answer(u"05", u"003", u"C\x10\x07"), kHeader05 + u" C 10 7", 0},
    {"AnEmptyAnswer", u"", u"", 0},
    {"CountZero", Answer(u"05", u"000", u"C\x10\x07"), u"ReaderPosition=05\r\nPacketCount=000\r\nPacketData=", 0},
    {"ControlsBlankAndDel", Answer(u"05", u"008", Text(u"A \x7f\r\n\0\x1b\x1a", 8)),
     u"ReaderPosition=05\r\nPacketCount=008\r\nPacketData= A 20 7F D A 0 1B 1A", 0},
    {"EdgesOfThePrintableRange", Answer(u"05", u"004", u"!~\x1f\x20"),
     u"ReaderPosition=05\r\nPacketCount=004\r\nPacketData= ! ~ 1F 20", 0},
    {"CodesAbove126", Answer(u"05", u"007", u"\u20AC\u00FF\u00A0\u00E9\u0153\u0178\u0081"),
     u"ReaderPosition=05\r\nPacketCount=007\r\nPacketData= 80 FF A0 E9 9C 9F 81", 0},
    // A character the code page cannot write has the code of "?", which is
    // printable, so the character itself is shown.
    {"CharactersTheCodePageCannotWrite", Answer(u"05", u"003", u"\u0100\u3042\u0080"),
     u"ReaderPosition=05\r\nPacketCount=003\r\nPacketData= \u0100 \u3042 \u0080", 0},
    {"ExactlyTheCountAndNoMore", Answer(u"05", u"002", u"xy", u"\r"),
     u"ReaderPosition=05\r\nPacketCount=002\r\nPacketData= x y", 0},
    {"TheTrailingLineEndIsNotShown", Answer(u"05", u"001", u"x"),
     u"ReaderPosition=05\r\nPacketCount=001\r\nPacketData= x", 0},
    // A one-digit position moves the count one place left: "03" and a CR are
    // read, and the data starts one character late.
    {"OneDigitPosition", Answer(u"5", u"003", u"C\x10\x07"),
     u"ReaderPosition=5\r\nPacketCount=003\r\nPacketData=C 10 7 D", 0},
    // A three-digit position moves it right: "=00" reads as no number.
    {"ThreeDigitPosition", Answer(u"105", u"003", u"C\x10\x07"), u"ReaderPosition=105\r\nPacketCount=003\r\nPacketData",
     0},
    {"LeadingBlanks", Answer(u"05", u" 12", u"abcdefghijkl"),
     u"ReaderPosition=05\r\nPacketCount= 12\r\nPacketData= a b c d e f g h i j k l", 0},
    {"AHalfGoesDownToEven", Answer(u"05", u"2.5", u"xyz"), u"ReaderPosition=05\r\nPacketCount=2.5\r\nPacketData= x y",
     0},
    {"AHalfGoesUpToEven", Answer(u"05", u"3.5", u"wxyz"),
     u"ReaderPosition=05\r\nPacketCount=3.5\r\nPacketData= w x y z", 0},
    {"DigitsThenText", Answer(u"05", u"2xy", u"pqr"), u"ReaderPosition=05\r\nPacketCount=2xy\r\nPacketData= p q", 0},
    {"NoNumber", Answer(u"05", u"abc", u"xyz"), u"ReaderPosition=05\r\nPacketCount=abc\r\nPacketData=", 0},
    {"ANegativeCount", Answer(u"05", u"-02", u"xyz"), u"ReaderPosition=05\r\nPacketCount=-02\r\nPacketData=", 0},
    {"ACountBeyondSixteenBits", Answer(u"05", u"1E5", u"xyz"), u"ReaderPosition=05\r\nPacketCount=1E5\r\nPacketData=",
     6},
    {"FewerCharactersThanTheCount", Answer(u"05", u"005", u"AB", u""),
     u"ReaderPosition=05\r\nPacketCount=005\r\nPacketData= A B", 5},
    {"AnAnswerThatEndsInTheHeader", u"ReaderPosition=05\r\nPacketCount=003\r\nPack",
     u"ReaderPosition=05\r\nPacketCount=003\r\nPack", 5},
    {"AnAnswerThatEndsBeforeTheCount", u"ReaderPosition=05\r\nPacketCount=", u"ReaderPosition=05\r\nPacketCount=", 0},
    {"AnAnswerThatEndsInTheCount", u"ReaderPosition=05\r\nPacketCount=7", u"ReaderPosition=05\r\nPacketCount=7", 5},
};

class PacketInput : public ::testing::TestWithParam<ViewCase> {};

TEST_P(PacketInput, ShowsTheHeaderAndEveryDataCharacterMadeVisible) {
    const ViewCase& c = GetParam();
    TestConsole test;
    test.console().SetDataBox(u"before");
    test.server().QueueAnswer("PacketQueInput", Variant::OfText(c.answer));
    test.Click("PacketQue");

    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ(RecordedCall::Kind::Call, test.calls()[0].kind);
    EXPECT_EQ("PacketQueInput", test.calls()[0].member);
    EXPECT_TEXT(u"(data)=<Object>.PacketQueInput", test.console().FunctionBox());
    // What the data box shows, also when an error then ends the console.
    EXPECT_TEXT(c.shown, test.console().DataBox());
    if (c.error == 0) {
        EXPECT_TRUE(test.report().errors.empty());
    } else {
        ASSERT_EQ(1u, test.report().errors.size());
        EXPECT_EQ(c.error, test.report().errors[0].number());
    }
}

INSTANTIATE_TEST_SUITE_P(Answers, PacketInput, ::testing::ValuesIn(kViews),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(PacketInput, AFailedCallOrAnAnswerWithoutTextLeavesTheDataBox) {
    for (const bool callFails : {true, false}) {
        TestConsole test;
        test.console().SetDataBox(u"before");
        if (callFails) {
            test.server().QueueFailure("PacketQueInput", RuntimeError(440, "Automation error"));
        } else {
            test.server().QueueAnswer("PacketQueInput", Variant::Null());
        }
        test.Click("PacketQue");
        ASSERT_EQ(1u, test.report().errors.size());
        EXPECT_EQ(callFails ? 440 : 94, test.report().errors[0].number());
        EXPECT_TEXT(u"(data)=<Object>.PacketQueInput", test.console().FunctionBox());
        EXPECT_TEXT(u"before", test.console().DataBox());
    }
}

// The largest counts the field can write: every data character shown, and
// the data box written once rather than once per character.
TEST(PacketInput, LargeCountsAreShownWholeInOneWrite) {
    struct Large {
        const char16_t* field;
        std::size_t count;
    };
    for (const Large& large : {Large{u"999", 999}, Large{u"3E4", 30000}}) {
        Text data;
        Text expected = u"ReaderPosition=12\r\nPacketCount=" + Text(large.field) + u"\r\nPacketData=";
        for (std::size_t i = 0; i < large.count; ++i) {
            data.push_back(i % 2 == 0 ? u'Q' : u'\x1b');
            expected.append(i % 2 == 0 ? u" Q" : u" 1B");
        }
        TestConsole test;
        int dataBoxWrites = 0;
        test.console().Window().SetListener([&](const std::string& control, FormState::Property property) {
            dataBoxWrites += control == "InBox" && property == FormState::Property::Text;
        });
        test.server().QueueAnswer("PacketQueInput", Variant::OfText(Answer(u"12", large.field, data)));
        test.Click("PacketQue");
        EXPECT_TRUE(test.report().errors.empty());
        EXPECT_TEXT(expected, test.console().DataBox());
        EXPECT_EQ(1, dataBoxWrites);
    }
}

TEST(PacketOut, SendsTheTestPacketForTheSelectedPosition) {
    for (const int position : {1, 9, 32}) {
        TestConsole test;
        test.Select(position);
        const std::size_t before = test.calls().size();
        test.Click("PacketOut");

        const Text position2 = PositionText(position);
        const Text block(u"ReaderPosition=" + position2 + u"\r\nPacketCount=003\r\nPacketData=C\x10\x07\r\n" + kNul);
        ASSERT_EQ(before + 1, test.calls().size());
        const RecordedCall& put = test.calls().back();
        EXPECT_EQ(RecordedCall::Kind::Put, put.kind);
        EXPECT_EQ("PacketQueOutput", put.member);
        EXPECT_TEXT(block, put.text());
        EXPECT_EQ(Variant::OfText(block), test.console().CommandData);
        EXPECT_TEXT(u"<Object>.PacketQueOutput = (data)", test.console().FunctionBox());
        EXPECT_TEXT(block, test.console().DataBox());
    }
}

TEST(PacketOut, AFailedAssignmentEndsTheConsoleBeforeTheDataBox) {
    TestConsole test;
    test.console().SetDataBox(u"before");
    test.server().QueueFailure("PacketQueOutput", RuntimeError(440, "Automation error"));
    test.Click("PacketOut");
    ASSERT_EQ(1u, test.report().errors.size());
    EXPECT_TEXT(u"<Object>.PacketQueOutput = (data)", test.console().FunctionBox());
    EXPECT_TEXT(u"before", test.console().DataBox());
    // The block was already copied for the assignment.
    EXPECT_EQ(Variant::OfText(u"ReaderPosition=01\r\nPacketCount=003\r\nPacketData=C\x10\x07\r\n" + Text(1, kNul)),
              test.console().CommandData);
}

TEST(PacketOut, ItsPacketReadBackShowsTheThreeDataCharacters) {
    TestConsole test;
    test.Select(5);
    test.Click("PacketOut");
    test.server().QueueAnswer("PacketQueInput", test.console().CommandData);
    test.Click("PacketQue");
    EXPECT_TEXT(kHeader05 + u" C 10 7", test.console().DataBox());
}

}  // namespace
}  // namespace vantrel
