#include "console/system_commands.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using testing::RecordedCall;
using testing::ScriptedPrompter;
using testing::TestConsole;

// The key pad block of the stress traffic for one reader: CR LF after the
// position line, LF alone after the key data, then NUL.
Text StressBlock(const Text& reader) {
    return u"ReaderPosition=" + reader + u"\r\nKeyData=123@R456A@789NYL0EHCe\n" + Text(1, u'\0');
}

void ExpectStressPair(const std::vector<RecordedCall>& calls, std::size_t from) {
    ASSERT_GE(calls.size(), from + 2);
    for (std::size_t k = 0; k < 2; ++k) {
        EXPECT_EQ(RecordedCall::Kind::Put, calls[from + k].kind);
        EXPECT_EQ("KeyPadConfiguration", calls[from + k].member);
    }
    EXPECT_TEXT(StressBlock(u"01"), calls[from].text());
    EXPECT_TEXT(StressBlock(u"17"), calls[from + 1].text());
}

// The calls without argument: the function box first, then the call; only
// SystemVersions and the self-test status write the data box.
struct CallCase {
    const char* name;
    const char* button;
    const char* member;
    Variant answer;
    const char16_t* functionBox;
    const char16_t* dataBox;
};

class SystemCall : public ::testing::TestWithParam<CallCase> {};

TEST_P(SystemCall, EchoesAndShowsWhatTheCommandShows) {
    const CallCase& c = GetParam();
    TestConsole test;
    test.console().SetFunctionBox(u"before");
    test.console().SetDataBox(u"before");
    test.server().QueueAnswer(c.member, c.answer);
    test.Click(c.button);
    EXPECT_TRUE(test.report().errors.empty());
    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ(RecordedCall::Kind::Call, test.calls()[0].kind);
    EXPECT_EQ(c.member, test.calls()[0].member);
    EXPECT_TEXT(c.functionBox, test.console().FunctionBox());
    EXPECT_TEXT(c.dataBox, test.console().DataBox());
}

constexpr char16_t kComplete[] = u"Self Diagnositcs\r\nreport Complete";
constexpr char16_t kBusy[] = u"Self Diagnositcs\r\nreport busy";

INSTANTIATE_TEST_SUITE_P(
    Buttons, SystemCall,
    ::testing::Values(
        CallCase{"Versions", "SystemVersions", "SystemVersions", Variant::OfText(u"App=10.29\r\nLink=\x1bup"),
                 u"(data)=<Object>.SystemVersions", u"App=10.29\r\nLink=\x1bup"},
        CallCase{"SelfTestStart", "SelfTestStart", "SelfDiagnosticsReportStart", Variant::OfInt16(7),
                 u"<Object>.SelfDiagnosticsReportStart", u"before"},
        CallCase{"StatusZero", "SelfTestStatus", "SelfDiagnosticsReportStatus", Variant::OfInt16(0),
                 u"<Object>.SelfDiagnosticsReportStatus", kComplete},
        CallCase{"StatusEmptyIsZero", "SelfTestStatus", "SelfDiagnosticsReportStatus", Variant(),
                 u"<Object>.SelfDiagnosticsReportStatus", kComplete},
        CallCase{"StatusOne", "SelfTestStatus", "SelfDiagnosticsReportStatus", Variant::OfInt16(1),
                 u"<Object>.SelfDiagnosticsReportStatus", kBusy},
        CallCase{"StatusMinusOne", "SelfTestStatus", "SelfDiagnosticsReportStatus", Variant::OfInt16(-1),
                 u"<Object>.SelfDiagnosticsReportStatus", kBusy},
        CallCase{"HelpFile", "HELP_BUTTON", "InvokeHelpFile", Variant::OfInt16(-1), u"before", u"before"}),
    [](const auto& info) { return info.param.name; });

// The numeric results are converted even where they are dropped, so an
// answer that is no 16-bit number ends the console like any failing call.
struct FailureCase {
    const char* button;
    const char* member;
    Variant answer;  // answered instead of failing when it is no Empty
    int number;
    bool asks = false;  // the command asks Yes or No first
};

class SystemCommandFailure : public ::testing::TestWithParam<FailureCase> {};

TEST_P(SystemCommandFailure, GoesToTheErrorReport) {
    const FailureCase& c = GetParam();
    TestConsole test;
    if (c.asks) {
        test.prompter().Yes();
    }
    if (c.answer == Variant()) {
        test.server().QueueFailure(c.member, RuntimeError(c.number, "Automation error"));
    } else {
        test.server().QueueAnswer(c.member, c.answer);
    }
    test.Click(c.button);
    ASSERT_EQ(1u, test.report().errors.size());
    EXPECT_EQ(c.number, test.report().errors[0].number());
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, SystemCommandFailure,
    ::testing::Values(FailureCase{"SystemVersions", "SystemVersions", Variant(), -2147417848},
                      FailureCase{"SelfTestStart", "SelfDiagnosticsReportStart", Variant::OfText(u"started"), 13},
                      FailureCase{"SelfTestStatus", "SelfDiagnosticsReportStatus", Variant::OfInt32(40000), 6},
                      FailureCase{"WindowControl", "WindowControl", Variant(), 70, true}));

// Window control

struct VisibilityCase {
    const char* name;
    bool yes;
    const char16_t* line;
};

class WindowControl : public ::testing::TestWithParam<VisibilityCase> {};

TEST_P(WindowControl, AsksThenAssignsTheBlockAndLeavesTheDataBox) {
    const VisibilityCase& c = GetParam();
    TestConsole test;
    test.console().SetDataBox(u"before");
    Text functionBoxDuringQuestion;
    test.prompter().During([&] { functionBoxDuringQuestion = test.console().FunctionBox(); });
    if (c.yes) {
        test.prompter().Yes();
    } else {
        test.prompter().No();
    }
    test.Click("WindowControl");
    EXPECT_TEXT(u"<Object>.WindowControl = (data)", functionBoxDuringQuestion);

    ASSERT_EQ(1u, test.prompter().boxes.size());
    EXPECT_EQ(ScriptedPrompter::Box::Kind::Question, test.prompter().boxes[0].kind);
    EXPECT_TEXT(u"Do you want Vantrel visible?", test.prompter().boxes[0].text);
    EXPECT_TEXT(u"WindowControl Select", test.prompter().boxes[0].title);

    const Text block = Text(c.line) + u"\r\n" + Text(1, u'\0');
    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ(RecordedCall::Kind::Put, test.calls()[0].kind);
    EXPECT_EQ("WindowControl", test.calls()[0].member);
    EXPECT_TEXT(block, test.calls()[0].text());
    EXPECT_EQ(Variant::OfText(block), test.console().CommandData);
    EXPECT_TEXT(u"<Object>.WindowControl = (data)", test.console().FunctionBox());
    EXPECT_TEXT(u"before", test.console().DataBox());
}

INSTANTIATE_TEST_SUITE_P(Answers, WindowControl,
                         ::testing::Values(VisibilityCase{"YesShows", true, u"Visible"},
                                           VisibilityCase{"NoHides", false, u"Hide"}),
                         [](const auto& info) { return info.param.name; });

// Stress mode

// Readers 01 and 17 whatever position is selected, and nothing in the echo
// boxes.
TEST(Stress, OnSendsTwoKeyPadBlocksEachTickUntilTurnedOff) {
    TestConsole test;
    test.Select(5);
    test.console().SetFunctionBox(u"function");
    test.console().SetDataBox(u"data");
    const std::size_t start = test.calls().size();
    EXPECT_EQ(kStressOffColor, test.console().Window().BackColorOf("STRESS_BUTTON"));
    test.Tick();
    EXPECT_EQ(start, test.calls().size()) << "stress mode starts off";

    test.Click("STRESS_BUTTON");
    EXPECT_EQ(1, test.console().StressActive);
    EXPECT_EQ(kStressOnColor, test.console().Window().BackColorOf("STRESS_BUTTON"));
    EXPECT_EQ(start, test.calls().size()) << "the button itself sends nothing";
    test.Tick();
    test.Tick();
    ASSERT_EQ(start + 4, test.calls().size());
    ExpectStressPair(test.calls(), start);
    ExpectStressPair(test.calls(), start + 2);
    EXPECT_EQ(Variant::OfText(StressBlock(u"17")), test.console().CommandData);
    EXPECT_TEXT(u"function", test.console().FunctionBox());
    EXPECT_TEXT(u"data", test.console().DataBox());

    test.Click("STRESS_BUTTON");
    EXPECT_EQ(0, test.console().StressActive);
    EXPECT_EQ(kStressOffColor, test.console().Window().BackColorOf("STRESS_BUTTON"));
    test.Tick();
    EXPECT_EQ(start + 4, test.calls().size());
}

TEST(Stress, TheButtonTestsNotZeroAndTheTickTestsExactlyOne) {
    TestConsole test;
    test.console().StressActive = 2;
    test.Tick();
    EXPECT_TRUE(test.calls().empty()) << "only 1 means on to the tick";
    test.Click("STRESS_BUTTON");
    EXPECT_EQ(0, test.console().StressActive) << "anything but 0 means on to the button";
    EXPECT_EQ(kStressOffColor, test.console().Window().BackColorOf("STRESS_BUTTON"));
}

}  // namespace
}  // namespace vantrel
