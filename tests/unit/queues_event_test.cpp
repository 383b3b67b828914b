#include "support/test_support.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>

namespace vantrel {
namespace {

using testing::RecordedCall;
using testing::TestConsole;

// What the server does on a call: answer with a value or fail.
using Outcome = std::variant<Variant, RuntimeError>;

void Queue(TestConsole& test, const char* member, const Outcome& outcome) {
    if (const auto* answer = std::get_if<Variant>(&outcome)) {
        test.server().QueueAnswer(member, *answer);
    } else {
        test.server().QueueFailure(member, std::get<RuntimeError>(outcome));
    }
}

const RuntimeError kCallFails(440, "Automation error");

struct QueueButton {
    const char* button;
    const char* member;
    const char16_t* label;
};

void PrintTo(const QueueButton& b, std::ostream* out) { *out << b.button; }

const QueueButton kReads[] = {
    {"CardQue", "CardQue", u"<data>=<Object>.CardQue"},
    {"KeyQue", "KeyQue", u"<data>=<Object>.KeyQue"},
    {"CashIn", "CashInQue", u"(data)=<Object>.CashInQue"},
    {"QueCounts", "QueCountQuery", u"<data>=<Object>.QueCountQuery"},
    {"ReadErrorQue", "ReadErrorQue", u"(data)=<Object>.ReadErrorQue"},
};

class QueueRead : public ::testing::TestWithParam<QueueButton> {};

TEST_P(QueueRead, ShowsTheAnswerAsItStandsWithoutArgumentOrBlock) {
    const QueueButton& b = GetParam();
    const Text controls(u"Card=1\r\nData=\x1b\x03\0end\n", 20);
    struct Case {
        Variant answer;
        Text shown;
    };
    for (const Case& c : {Case{Variant::OfText(controls), controls}, Case{Variant::OfText({}), u""},
                          Case{Variant(), u""}, Case{Variant::OfInt16(-7), u"-7"}}) {
        TestConsole test;
        test.console().SetDataBox(u"before");
        test.server().QueueAnswer(b.member, c.answer);
        test.Click(b.button);
        ASSERT_EQ(1u, test.calls().size());
        EXPECT_EQ(RecordedCall::Kind::Call, test.calls()[0].kind);
        EXPECT_EQ(b.member, test.calls()[0].member);
        EXPECT_TEXT(b.label, test.console().FunctionBox());
        EXPECT_TEXT(c.shown, test.console().DataBox());
        EXPECT_EQ(Variant(), test.console().CommandData);
        EXPECT_TRUE(test.report().errors.empty());
        EXPECT_TRUE(test.prompter().boxes.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Buttons, QueueRead, ::testing::ValuesIn(kReads));

class UnguardedRead : public ::testing::TestWithParam<QueueButton> {};

TEST_P(UnguardedRead, AFailedCallOrAnswerEndsTheConsoleWithTheLabelShown) {
    const QueueButton& b = GetParam();
    for (const Outcome& outcome : {Outcome(kCallFails), Outcome(Variant::Null())}) {
        TestConsole test;
        test.console().SetDataBox(u"before");
        Queue(test, b.member, outcome);
        test.Click(b.button);
        ASSERT_EQ(1u, test.report().errors.size());
        EXPECT_EQ(outcome.index() == 1 ? 440 : 94, test.report().errors[0].number());
        EXPECT_TEXT(b.label, test.console().FunctionBox());
        EXPECT_TEXT(u"before", test.console().DataBox());
    }
}

// ReadErrorQue, the last, guards itself.
INSTANTIATE_TEST_SUITE_P(Buttons, UnguardedRead, ::testing::ValuesIn(kReads, kReads + 4));

TEST(ReadErrorQue, AFailureShowsErrorOnceAndTheConsoleGoesOn) {
    for (const Outcome& outcome : {Outcome(kCallFails), Outcome(Variant::Null())}) {
        TestConsole test;
        test.console().SetDataBox(u"earlier answer");
        Queue(test, "ReadErrorQue", outcome);
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
        EXPECT_TEXT(u"Error=17\r\n", test.console().DataBox());
        EXPECT_EQ(1u, test.prompter().boxes.size());
    }
}

class QueueClear : public ::testing::TestWithParam<QueueButton> {};

TEST_P(QueueClear, CallsFirstThenShowsTheCallAndOneBlank) {
    const QueueButton& b = GetParam();
    for (const Variant& answer : {Variant::OfInt16(3), Variant::OfText(u" 12 "), Variant::OfText({}), Variant(),
                                  Variant::OfInt32(-32768), Variant::OfBoolean(true)}) {
        TestConsole test;
        test.console().SetDataBox(u"before");
        test.server().QueueAnswer(b.member, answer);
        test.Click(b.button);
        ASSERT_EQ(1u, test.calls().size());
        EXPECT_EQ(RecordedCall::Kind::Call, test.calls()[0].kind);
        EXPECT_EQ(b.member, test.calls()[0].member);
        EXPECT_TEXT(b.label, test.console().FunctionBox());
        EXPECT_TEXT(u" ", test.console().DataBox());
        EXPECT_EQ(Variant(), test.console().CommandData);
        EXPECT_TRUE(test.report().errors.empty());
    }
}

TEST_P(QueueClear, ANumberOutOfReachEndsTheConsoleAfterTheServerActed) {
    const QueueButton& b = GetParam();
    struct Bad {
        Outcome outcome;
        int error;
    };
    for (const Bad& bad :
         {Bad{Variant::OfText(u"abc"), 13}, Bad{Variant::OfText(u"OK\r\n"), 13}, Bad{Variant::OfInt32(70000), 6},
          Bad{Variant::OfText(u"32768"), 6}, Bad{Variant::Null(), 94}, Bad{kCallFails, 440}}) {
        TestConsole test;
        test.console().SetDataBox(u"before");
        Queue(test, b.member, bad.outcome);
        test.Click(b.button);
        EXPECT_EQ(std::vector<std::string>{b.member}, test.members());
        ASSERT_EQ(1u, test.report().errors.size());
        EXPECT_EQ(bad.error, test.report().errors[0].number());
        // Unlike a read, a clear writes no box before its call has succeeded.
        EXPECT_TEXT(u"Function Box", test.console().FunctionBox());
        EXPECT_TEXT(u"before", test.console().DataBox());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, QueueClear,
    ::testing::Values(QueueButton{"ClearCardEntry", "ClearTopCardQue", u"<Object>.ClearTopCardQue"},
                      QueueButton{"ClearCashEntry", "ClearTopCashQue", u"<Object>.ClearTopCashQue"},
                      QueueButton{"ClearKeyEntry", "ClearTopKeyQue", u"<Object>.ClearTopKeyQue"},
                      QueueButton{"ClearErrorQue", "ClearErrorQue", u"<Object>.ClearErrorQue"},
                      QueueButton{"ClearPacketEntry", "ClearPacketEntry", u"<Object>.ClearPacketEntry"}));

TEST(CashOut, WritesItsLabelAndCallsNothing) {
    TestConsole test;
    test.console().SetDataBox(u"before");
    test.console().CommandData = Variant::OfText(u"last block");
    test.Click("CashOut");
    EXPECT_TRUE(test.calls().empty());
    EXPECT_TEXT(u"<Object>.CashOutQue = (data)", test.console().FunctionBox());
    EXPECT_TEXT(u"before", test.console().DataBox());
    EXPECT_EQ(Variant::OfText(u"last block"), test.console().CommandData);
}

TEST(QueueButtons, StandAtTheirTwipsWithTheirCaptions) {
    struct Placement {
        const char* name;
        const char16_t* caption;
        int left, top, width;
    };
    TestConsole test;
    const FormDescription& form = test.console().Description(kConsoleForm);
    for (const Placement& p : {
             Placement{"QueCounts", u"Que Counts", 2160, 1920, 1575},
             Placement{"ReadErrorQue", u"ReadErrorQue", 2160, 2280, 1575},
             Placement{"ClearErrorQue", u"ClearErrorQue", 2160, 2640, 1575},
             Placement{"CardQue", u"CardQue", 2160, 3000, 1575},
             Placement{"ClearCardEntry", u"ClearTopCardQue", 2160, 3360, 1575},
             Placement{"PacketQue", u"Packet Input", 2160, 5640, 1575},
             Placement{"PacketOut", u"Packet Output", 2160, 6000, 1575},
             Placement{"ClearPacketEntry", u"ClearPacketEntry", 2160, 6360, 1575},
             Placement{"CashIn", u"Cash Input", 2160, 6720, 1575},
             Placement{"CashOut", u"Cash Output", 2160, 7080, 1575},
             Placement{"ClearCashEntry", u"ClearTopCashQue", 2160, 7440, 1575},
             Placement{"KeyQue", u"KeyQue", 120, 5520, 1695},
             Placement{"ClearKeyEntry", u"ClearTopKeyQue", 120, 5880, 1695},
         }) {
        const Control* control = form.Find(p.name);
        ASSERT_NE(control, nullptr) << p.name;
        EXPECT_EQ(ControlKind::CommandButton, control->kind) << p.name;
        EXPECT_EQ(Text(p.caption), control->caption) << p.name;
        EXPECT_EQ((std::vector<int>{p.left, p.top, p.width, 255}),
                  (std::vector<int>{control->left, control->top, control->width, control->height}))
            << p.name;
    }
}

}  // namespace
}  // namespace vantrel
