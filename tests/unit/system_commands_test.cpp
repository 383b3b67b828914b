// Stress mode and the set-up dialogs, which share CommandData with it.
#include "console/setup_dialogs.h"
#include "console/system_commands.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using testing::ScriptedPrompter;
using testing::TestConsole;

constexpr char kDebug[] = "GetDebugSelect";
constexpr char kSerial[] = "SerialPortPara";

const Text kLogLine = u"LogFileName=c:\\xfer\\logfile.log\r\n";
const Text kNul(1, u'\0');

// A person's click on an option: it becomes the selected one of its group,
// then its click handler runs where it has one.
void Choose(TestConsole& test, const char* form, const std::string& option) {
    test.console().Form(form).SetChecked(option, true);
    const Control* row = test.console().Description(form).Find(option);
    ASSERT_NE(row, nullptr) << option;
    if (row->click) {
        test.Click(option, form);
    }
}

// Opens a dialog from the console's Set-up menu, as the technician does.
void Open(TestConsole& test, const char* form) {
    for (const MenuEntry& entry : SetupMenu()) {
        if (entry.name == std::string(form) + "Entry") {
            Dispatch(test.console(), entry.action, test.report());
            return;
        }
    }
    ADD_FAILURE() << "the Set-up menu has no entry for " << form;
}

// GetDebugSelect

// The load writes the labels on the first showing only; the options keep
// their choice between openings.
TEST(GetDebugSelect, OpensFromTheSetUpMenuAndLoadsOnce) {
    TestConsole test;
    EXPECT_TEXT(u"Label4", test.console().Form(kDebug).TextOf("Label4"));
    Open(test, kDebug);
    EXPECT_EQ(std::vector<std::string>{kDebug}, test.windows().shown);
    FormState& form = test.console().Form(kDebug);
    EXPECT_TEXT(u"Turn off Debug Mode", form.TextOf("Label1"));
    EXPECT_TEXT(u"Log File - Link Data Only", form.TextOf("Label2"));
    EXPECT_TEXT(u"Log File - OLE/DDE Only", form.TextOf("Label3"));
    EXPECT_TEXT(u"Log File - Link & OLE/DDE ", form.TextOf("Label4"));
    EXPECT_TEXT(u"msgbox - OLE/DDE only", form.TextOf("Label5"));
    EXPECT_TEXT(u"msgbox - OLE/DDE & Link Data to Log File", form.TextOf("Label6"));
    for (int mode = 0; mode <= 5; ++mode) {
        EXPECT_FALSE(form.Checked("Select" + std::to_string(mode))) << "nothing is chosen at first";
    }
    Choose(test, kDebug, "Select4");
    test.Click("cmdOK", kDebug);
    test.console().DialogSelection = u"100";
    form.SetText("Label1", u"marked");
    Open(test, kDebug);
    EXPECT_TEXT(u"marked", form.TextOf("Label1")) << "the load ran again";
    test.Click("cmdOK", kDebug);
    EXPECT_TEXT(u"4", test.console().DialogSelection);
    EXPECT_TRUE(test.calls().empty());
}

class DebugChoice : public ::testing::TestWithParam<int> {};

TEST_P(DebugChoice, OkRecordsTheModeAsADigitAndHides) {
    const int mode = GetParam();
    TestConsole test;
    test.console().DialogSelection = u"100";
    Open(test, kDebug);
    Choose(test, kDebug, "Select" + std::to_string(mode));
    EXPECT_TEXT(u"100", test.console().DialogSelection) << "choosing alone records nothing";
    test.Click("cmdOK", kDebug);
    EXPECT_TEXT(FromUtf8(std::to_string(mode)), test.console().DialogSelection);
    EXPECT_EQ(std::vector<std::string>{kDebug}, test.windows().hidden);
    EXPECT_TRUE(test.calls().empty());
    EXPECT_TRUE(test.prompter().boxes.empty());
}

INSTANTIATE_TEST_SUITE_P(Modes, DebugChoice, ::testing::Range(0, 6));

TEST(GetDebugSelect, OkWithNothingChosenKeepsTheSelectionAndCancelLeavesOneHundred) {
    TestConsole test;
    test.console().DialogSelection = u"BaudRate=4800\r\n";
    Open(test, kDebug);
    test.Click("cmdOK", kDebug);
    EXPECT_TEXT(u"BaudRate=4800\r\n", test.console().DialogSelection);
    test.Click("cmdCancel", kDebug);
    EXPECT_TEXT(u"100", test.console().DialogSelection);
    EXPECT_EQ((std::vector<std::string>{kDebug, kDebug}), test.windows().hidden);
    EXPECT_TRUE(test.prompter().boxes.empty()) << "the debug Cancel shows no box";
}

// SerialPortPara: baud clicks append, port clicks replace; the OK rebuilds
// one port line and one rate line from the options where they are chosen,
// shows the block and sends it to the server its load bound.
struct OkCase {
    const char* name;
    std::vector<std::string> options;  // clicked in this order
    const char16_t* afterClicks;
    const char16_t* lines;  // the block before the log file line
};

void PrintTo(const OkCase& c, std::ostream* out) { *out << c.name; }

class SerialOk : public ::testing::TestWithParam<OkCase> {};

TEST_P(SerialOk, ClicksAccumulateAndTheOkShowsTheBlockThenSendsIt) {
    TestConsole test;
    Open(test, kSerial);
    for (const std::string& option : GetParam().options) {
        Choose(test, kSerial, option);
    }
    EXPECT_TEXT(GetParam().afterClicks, test.console().DialogSelection);
    EXPECT_TRUE(test.calls().empty());
    bool hiddenDuringBox = false;
    test.prompter().During([&] { hiddenDuringBox = test.windows().hidden.size() == 1; }).Ok();
    test.Click("SPOK", kSerial);

    const Text block = GetParam().lines + kLogLine + kNul;
    EXPECT_TRUE(test.report().errors.empty());
    ASSERT_EQ(1u, test.prompter().boxes.size());
    EXPECT_EQ(ScriptedPrompter::Box::Kind::Message, test.prompter().boxes[0].kind);
    EXPECT_TEXT(block, test.prompter().boxes[0].text);
    EXPECT_TEXT(kApplicationTitle, test.prompter().boxes[0].title);
    EXPECT_TRUE(hiddenDuringBox) << "the dialog hides before its box";
    EXPECT_TRUE(testing::SinglePut(test.calls(), "SerialPortParameters", block));
    EXPECT_EQ(Variant::OfText(block), test.console().CommandData);
    EXPECT_TEXT(GetParam().lines, test.console().DialogSelection);
    EXPECT_TEXT(u"Function Box", test.console().FunctionBox());
    EXPECT_TEXT(u"", test.console().DataBox());
}

INSTANTIATE_TEST_SUITE_P(
    Choices, SerialOk,
    ::testing::Values(
        OkCase{"PortOneAt19200",
               {"oComm1", "oBR19200"},
               u"PortNumber=1\r\nBaudRate=19200\r\n",
               u"PortNumber=1\r\nBaudRate=19200\r\n"},
        OkCase{"TwoRates", {"oBR2400", "oBR9600"}, u"BaudRate=2400\r\nBaudRate=9600\r\n", u"BaudRate=9600\r\n"},
        OkCase{"SameRateTwice", {"oBR4800", "oBR4800"}, u"BaudRate=4800\r\nBaudRate=4800\r\n", u"BaudRate=4800\r\n"},
        OkCase{"PortReplacesRates",
               {"oBR2400", "oBR9600", "oComm3"},
               u"PortNumber=3\r\n",
               u"PortNumber=3\r\nBaudRate=9600\r\n"},
        OkCase{"ManyClicks",
               {"oBR2400", "oComm4", "oBR4800", "oBR4800", "oComm3", "oBR2400"},
               u"PortNumber=3\r\nBaudRate=2400\r\n",
               u"PortNumber=3\r\nBaudRate=2400\r\n"},
        // No rate chosen: whatever the clicks left stands.
        OkCase{"PortOnly", {"oComm4"}, u"PortNumber=4\r\n", u"PortNumber=4\r\n"}),
    [](const auto& info) { return info.param.name; });

TEST(SerialPortPara, TheSelectionIsSharedWithTheDebugDialog) {
    TestConsole test;
    Open(test, kDebug);
    Choose(test, kDebug, "Select3");
    test.Click("cmdOK", kDebug);
    Open(test, kSerial);
    Choose(test, kSerial, "oBR9600");
    EXPECT_TEXT(u"3BaudRate=9600\r\n", test.console().DialogSelection);

    test.prompter().Ok();
    test.Click("SPCancel", kSerial);
    Choose(test, kSerial, "oBR2400");
    EXPECT_TEXT(u"100BaudRate=2400\r\n", test.console().DialogSelection);
}

TEST(SerialPortPara, CancelSaysSoLeavesOneHundredAndSendsNothing) {
    TestConsole test;
    Open(test, kSerial);
    Choose(test, kSerial, "oComm1");
    bool hiddenDuringBox = true;
    test.prompter().During([&] { hiddenDuringBox = !test.windows().hidden.empty(); }).Ok();
    test.Click("SPCancel", kSerial);
    EXPECT_TEXT(u"100", test.console().DialogSelection);
    ASSERT_EQ(1u, test.prompter().boxes.size());
    EXPECT_TEXT(u"you cancelled the Serial Port dialog box", test.prompter().boxes[0].text);
    EXPECT_TEXT(kApplicationTitle, test.prompter().boxes[0].title);
    EXPECT_FALSE(hiddenDuringBox) << "the box comes while the dialog is still up";
    EXPECT_EQ(std::vector<std::string>{kSerial}, test.windows().hidden);
    EXPECT_TRUE(test.calls().empty());
}

TEST(SerialPortPara, AnOkWithNoServerBoundEndsAfterItsBox) {
    // Only the dialog's load binds DialogServer; an OK that never went
    // through it finds the reference unset.
    TestConsole test;
    test.prompter().Ok();
    test.Click("SPOK", kSerial);
    ASSERT_EQ(1u, test.report().errors.size());
    EXPECT_EQ(91, test.report().errors[0].number());
    EXPECT_EQ(1u, test.prompter().boxes.size());
    EXPECT_EQ(std::vector<std::string>{kSerial}, test.windows().hidden);
    EXPECT_TRUE(test.calls().empty());
}

// Stress mode

// The blocks for readers 01 and 17 and their order are the system script's;
// here the button, its colour and the boxes the ticks leave alone.
TEST(Stress, TheButtonTurnsTheTicksOnAndOffInItsColour) {
    TestConsole test;
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
    EXPECT_EQ(start + 2, test.calls().size());
    EXPECT_TEXT(u"function", test.console().FunctionBox());
    EXPECT_TEXT(u"data", test.console().DataBox());

    test.Click("STRESS_BUTTON");
    EXPECT_EQ(kStressOffColor, test.console().Window().BackColorOf("STRESS_BUTTON"));
    test.Tick();
    EXPECT_EQ(start + 2, test.calls().size());
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
