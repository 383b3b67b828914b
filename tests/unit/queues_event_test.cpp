#include "support/test_support.h"

#include <gtest/gtest.h>

#include <string>

namespace vantrel {
namespace {

using testing::RecordedCall;
using testing::ScriptedPrompter;
using testing::TestConsole;

struct ReadCase {
    const char* button;
    const char16_t* label;
    const char* member;
};

void PrintTo(const ReadCase& c, std::ostream* out) { *out << c.button; }

const ReadCase kReads[] = {
    {"CardQue", u"<data>=<Object>.CardQue", "CardQue"},
    {"KeyQue", u"<data>=<Object>.KeyQue", "KeyQue"},
    {"CashIn", u"(data)=<Object>.CashInQue", "CashInQue"},
    {"QueCounts", u"<data>=<Object>.QueCountQuery", "QueCountQuery"},
    {"ReadErrorQue", u"(data)=<Object>.ReadErrorQue", "ReadErrorQue"},
};

class QueueRead : public ::testing::TestWithParam<ReadCase> {};

TEST_P(QueueRead, ShowsTheAnswerAsItStands) {
    const ReadCase& c = GetParam();
    const Text answer(u"Card=1\r\nData=\x1b\x03\0end\n", 19);
    TestConsole test;
    test.server().QueueAnswer(c.member, Variant::OfText(answer));
    test.Click(c.button);
    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ(RecordedCall::Kind::Call, test.calls()[0].kind);
    EXPECT_EQ(c.member, test.calls()[0].member);
    EXPECT_FALSE(test.calls()[0].value.has_value());
    EXPECT_TEXT(c.label, test.console().FunctionBox());
    EXPECT_TEXT(answer, test.console().DataBox());
    // No block, no position: the shared argument stays as it was.
    EXPECT_EQ(Variant(), test.console().CommandData);
    EXPECT_TRUE(test.report().errors.empty());
    EXPECT_TRUE(test.prompter().boxes.empty());
}

TEST_P(QueueRead, AnEmptyQueueEmptiesTheDataBox) {
    const ReadCase& c = GetParam();
    for (const Variant& empty : {Variant::OfText({}), Variant()}) {
        TestConsole test;
        test.console().SetDataBox(u"before");
        test.server().QueueAnswer(c.member, empty);
        test.Click(c.button);
        EXPECT_TEXT(u"", test.console().DataBox());
        EXPECT_TEXT(c.label, test.console().FunctionBox());
    }
}

TEST_P(QueueRead, ANumberAnswerIsShownAsItsDigits) {
    const ReadCase& c = GetParam();
    TestConsole test;
    test.server().QueueAnswer(c.member, Variant::OfInt16(-7));
    test.Click(c.button);
    EXPECT_TEXT(u"-7", test.console().DataBox());
}

INSTANTIATE_TEST_SUITE_P(Buttons, QueueRead, ::testing::ValuesIn(kReads));

class UnguardedRead : public ::testing::TestWithParam<ReadCase> {};

TEST_P(UnguardedRead, AFailureEndsTheConsoleWithTheLabelAlreadyShown) {
    const ReadCase& c = GetParam();
    for (const bool callFails : {true, false}) {
        TestConsole test;
        test.console().SetDataBox(u"before");
        if (callFails) {
            test.server().QueueFailure(c.member, RuntimeError(-2147418113, "Catastrophic failure"));
        } else {
            test.server().QueueAnswer(c.member, Variant::Null());  // no text to be had
        }
        test.Click(c.button);
        ASSERT_EQ(1u, test.report().errors.size());
        EXPECT_EQ(callFails ? -2147418113 : 94, test.report().errors[0].number());
        EXPECT_TEXT(c.label, test.console().FunctionBox());
        EXPECT_TEXT(u"before", test.console().DataBox());
        EXPECT_TRUE(test.prompter().boxes.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Buttons, UnguardedRead, ::testing::ValuesIn(kReads, kReads + 4));

TEST(ReadErrorQue, AFailureShowsErrorOnceAndTheConsoleGoesOn) {
    struct Failure {
        const char* what;
        bool callFails;
    };
    for (const Failure& failure : {Failure{"the call", true}, Failure{"the conversion", false}}) {
        SCOPED_TRACE(failure.what);
        TestConsole test;
        test.console().SetDataBox(u"earlier answer");
        if (failure.callFails) {
            test.server().QueueFailure("ReadErrorQue", RuntimeError(440, "Automation error"));
        } else {
            test.server().QueueAnswer("ReadErrorQue", Variant::Null());
        }
        test.prompter().Ok();
        test.Click("ReadErrorQue");

        EXPECT_TRUE(test.report().errors.empty());
        ASSERT_EQ(1u, test.prompter().boxes.size());
        EXPECT_EQ(ScriptedPrompter::Box::Kind::Message, test.prompter().boxes[0].kind);
        EXPECT_TEXT(u"Error", test.prompter().boxes[0].text);
        EXPECT_TEXT(kApplicationTitle, test.prompter().boxes[0].title);
        EXPECT_TEXT(u"(data)=<Object>.ReadErrorQue", test.console().FunctionBox());
        EXPECT_TEXT(u"earlier answer", test.console().DataBox());

        // Still usable: the next read goes out and shows its answer.
        test.server().QueueAnswer("ReadErrorQue", Variant::OfText(u"Error=17\r\n"));
        test.Click("ReadErrorQue");
        EXPECT_TEXT(u"Error=17\r\n", test.console().DataBox());
        EXPECT_EQ(1u, test.prompter().boxes.size());
        EXPECT_EQ((std::vector<std::string>{"ReadErrorQue", "ReadErrorQue"}), test.members());
    }
}

struct ClearCase {
    const char* button;
    const char* member;
    const char16_t* label;
};

void PrintTo(const ClearCase& c, std::ostream* out) { *out << c.button; }

class QueueClear : public ::testing::TestWithParam<ClearCase> {};

TEST_P(QueueClear, CallsThenShowsTheCallAndOneBlank) {
    const ClearCase& c = GetParam();
    for (const Variant& answer : {Variant::OfInt16(3), Variant::OfText(u" 12 "), Variant::OfText({}), Variant(),
                                  Variant::OfInt32(-32768), Variant::OfBoolean(true)}) {
        TestConsole test;
        test.console().SetDataBox(u"before");
        test.server().QueueAnswer(c.member, answer);
        test.Click(c.button);
        ASSERT_EQ(1u, test.calls().size());
        EXPECT_EQ(RecordedCall::Kind::Call, test.calls()[0].kind);
        EXPECT_EQ(c.member, test.calls()[0].member);
        EXPECT_TEXT(c.label, test.console().FunctionBox());
        EXPECT_TEXT(u" ", test.console().DataBox());
        EXPECT_EQ(Variant(), test.console().CommandData);
        EXPECT_TRUE(test.report().errors.empty());
    }
}

TEST_P(QueueClear, AnAnswerThatIsNoSixteenBitNumberEndsTheConsoleAfterTheCall) {
    const ClearCase& c = GetParam();
    struct Bad {
        Variant answer;
        int error;
    };
    for (const Bad& bad :
         {Bad{Variant::OfText(u"abc"), 13}, Bad{Variant::OfText(u"OK\r\n"), 13}, Bad{Variant::OfInt32(70000), 6},
          Bad{Variant::OfText(u"32768"), 6}, Bad{Variant::Null(), 94}}) {
        TestConsole test;
        test.console().SetDataBox(u"before");
        test.server().QueueAnswer(c.member, bad.answer);
        test.Click(c.button);
        // The server has been asked; the boxes were never reached.
        EXPECT_EQ(std::vector<std::string>{c.member}, test.members());
        ASSERT_EQ(1u, test.report().errors.size());
        EXPECT_EQ(bad.error, test.report().errors[0].number());
        EXPECT_TEXT(u"Function Box", test.console().FunctionBox());
        EXPECT_TEXT(u"before", test.console().DataBox());
    }
}

TEST_P(QueueClear, AFailedCallEndsTheConsoleBeforeEitherBox) {
    const ClearCase& c = GetParam();
    TestConsole test;
    test.server().QueueFailure(c.member, RuntimeError(438, "Object doesn't support this property or method"));
    test.Click(c.button);
    ASSERT_EQ(1u, test.report().errors.size());
    EXPECT_EQ(438, test.report().errors[0].number());
    EXPECT_TEXT(u"Function Box", test.console().FunctionBox());
    EXPECT_TEXT(u"", test.console().DataBox());
}

INSTANTIATE_TEST_SUITE_P(Buttons, QueueClear,
                         ::testing::Values(ClearCase{"ClearCardEntry", "ClearTopCardQue", u"<Object>.ClearTopCardQue"},
                                           ClearCase{"ClearCashEntry", "ClearTopCashQue", u"<Object>.ClearTopCashQue"},
                                           ClearCase{"ClearKeyEntry", "ClearTopKeyQue", u"<Object>.ClearTopKeyQue"},
                                           ClearCase{"ClearErrorQue", "ClearErrorQue", u"<Object>.ClearErrorQue"},
                                           ClearCase{"ClearPacketEntry", "ClearPacketEntry",
                                                     u"<Object>.ClearPacketEntry"}));

TEST(CashOut, WritesItsLabelAndCallsNothing) {
    TestConsole test;
    test.console().SetDataBox(u"before");
    test.console().CommandData = Variant::OfText(u"last block");
    test.Click("CashOut");
    EXPECT_TRUE(test.calls().empty());
    EXPECT_TEXT(u"<Object>.CashOutQue = (data)", test.console().FunctionBox());
    EXPECT_TEXT(u"before", test.console().DataBox());
    EXPECT_EQ(Variant::OfText(u"last block"), test.console().CommandData);
    EXPECT_TRUE(test.report().errors.empty());
}

struct Placement {
    const char* name;
    const char16_t* caption;
    int left;
    int top;
    int width;
    int height;
};

TEST(QueueButtons, StandAtTheirTwipsWithTheirCaptions) {
    TestConsole test;
    const FormDescription& form = test.console().Description(kConsoleForm);
    for (const Placement& p : {
             Placement{"QueCounts", u"Que Counts", 2160, 1920, 1575, 255},
             Placement{"ReadErrorQue", u"ReadErrorQue", 2160, 2280, 1575, 255},
             Placement{"ClearErrorQue", u"ClearErrorQue", 2160, 2640, 1575, 255},
             Placement{"CardQue", u"CardQue", 2160, 3000, 1575, 255},
             Placement{"ClearCardEntry", u"ClearTopCardQue", 2160, 3360, 1575, 255},
             Placement{"PacketQue", u"Packet Input", 2160, 5640, 1575, 255},
             Placement{"PacketOut", u"Packet Output", 2160, 6000, 1575, 255},
             Placement{"ClearPacketEntry", u"ClearPacketEntry", 2160, 6360, 1575, 255},
             Placement{"CashIn", u"Cash Input", 2160, 6720, 1575, 255},
             Placement{"CashOut", u"Cash Output", 2160, 7080, 1575, 255},
             Placement{"ClearCashEntry", u"ClearTopCashQue", 2160, 7440, 1575, 255},
             Placement{"KeyQue", u"KeyQue", 120, 5520, 1695, 255},
             Placement{"ClearKeyEntry", u"ClearTopKeyQue", 120, 5880, 1695, 255},
         }) {
        const Control* control = form.Find(p.name);
        ASSERT_NE(control, nullptr) << p.name;
        EXPECT_EQ(ControlKind::CommandButton, control->kind) << p.name;
        EXPECT_EQ(Text(p.caption), control->caption) << p.name;
        EXPECT_EQ(p.left, control->left) << p.name;
        EXPECT_EQ(p.top, control->top) << p.name;
        EXPECT_EQ(p.width, control->width) << p.name;
        EXPECT_EQ(p.height, control->height) << p.name;
        EXPECT_TRUE(static_cast<bool>(control->click)) << p.name;
    }
}

}  // namespace
}  // namespace vantrel
