#include "queues/packet_queues.h"
#include "server/code_page.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <string>

namespace vantrel {
namespace {

using testing::RecordedCall;
using testing::TestConsole;

// The packet view shows a character by its byte in this code page.
TEST(Windows1252, GivesTheByteOfEveryCharacterItCanWrite) {
    // The last five are the bytes the code page leaves open: they pass through.
    const std::pair<char16_t, int> codes[] = {
        {0x0000, 0x00}, {0x001B, 0x1B}, {0x0020, 0x20}, {0x0041, 0x41}, {0x007F, 0x7F}, {0x20AC, 0x80},
        {0x201A, 0x82}, {0x2026, 0x85}, {0x0160, 0x8A}, {0x017D, 0x8E}, {0x2018, 0x91}, {0x2014, 0x97},
        {0x2122, 0x99}, {0x0153, 0x9C}, {0x0178, 0x9F}, {0x00A0, 0xA0}, {0x00E9, 0xE9}, {0x00FF, 0xFF},
        {0x0081, 0x81}, {0x008D, 0x8D}, {0x008F, 0x8F}, {0x0090, 0x90}, {0x009D, 0x9D}};
    for (const auto& [character, code] : codes) {
        EXPECT_EQ(code, Windows1252Code(character)) << std::hex << static_cast<int>(character);
    }
    // C1 controls whose bytes hold other characters, letters beyond Latin-1,
    // a lone surrogate, the replacement character: a question mark.
    for (const char16_t character :
         {u'\u0080', u'\u0085', u'\u009F', u'\u0100', u'\u0401', u'\u3042', char16_t{0xD800}, u'\uFFFD'}) {
        EXPECT_EQ('?', Windows1252Code(character)) << std::hex << static_cast<int>(character);
    }
}

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

// ReadErrorQue guards itself: a failed call or an answer that is no text
// shows "Error", and the console goes on.
TEST(ReadErrorQue, AFailureShowsErrorOnceAndTheConsoleGoesOn) {
    for (const bool callFails : {true, false}) {
        TestConsole test;
        test.console().SetDataBox(u"earlier answer");
        if (callFails) {
            test.server().QueueFailure("ReadErrorQue", RuntimeError(440, "Automation error"));
        } else {
            test.server().QueueAnswer("ReadErrorQue", Variant::Null());
        }
        test.prompter().Ok();
        test.Click("ReadErrorQue");

        EXPECT_TRUE(test.report().errors.empty());
        ASSERT_EQ(1u, test.prompter().boxes.size());
        EXPECT_TEXT(u"Error", test.prompter().boxes[0].text);
        EXPECT_TEXT(kApplicationTitle, test.prompter().boxes[0].title);
        EXPECT_TEXT(u"(data)=<Object>.ReadErrorQue", test.console().FunctionBox());
        EXPECT_TEXT(u"earlier answer", test.console().DataBox());

        test.server().QueueAnswer("ReadErrorQue", Variant::OfText(u"Error=17\r\n"));
        test.Click("ReadErrorQue");
        EXPECT_EQ(RecordedCall::Kind::Call, test.calls().back().kind);
        EXPECT_TEXT(u"Error=17\r\n", test.console().DataBox());
        EXPECT_EQ(1u, test.prompter().boxes.size());
    }
}

TEST(CashOut, WritesItsLabelAndCallsNothing) {
    TestConsole test;
    testing::MarkUntouched(test.console());
    test.Click("CashOut");
    EXPECT_TRUE(test.calls().empty());
    EXPECT_TEXT(u"<Object>.CashOutQue = (data)", test.console().FunctionBox());
    EXPECT_TEXT(testing::kDataBefore, test.console().DataBox());
    EXPECT_EQ(Variant::OfText(testing::kCommandDataBefore), test.console().CommandData);
}

}  // namespace
}  // namespace vantrel
