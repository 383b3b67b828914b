// The reader-terminal buttons that send one block: what the server receives,
// what the technician sees, and whether the shared argument value changes.

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <string>

namespace vantrel {
namespace {

using namespace std::string_literals;  // u"...\0"s keeps the closing NUL
using testing::RecordedCall;
using testing::TestConsole;

enum class Handover {
    ThroughCommandData,
    Direct,  // CommandData keeps what it held
};

struct OneBlockCase {
    const char* button;
    int position;
    const char16_t* functionBox;
    const char* member;
    Text block;
    Handover handover;
    Text dataBox;
};

// The data box shows the block unless the command says otherwise.
OneBlockCase Row(const char* button, int position, const char16_t* functionBox, const char* member, Text block,
                 Handover handover, const char16_t* dataBox = nullptr) {
    Text shown = dataBox ? Text(dataBox) : block;
    return {button, position, functionBox, member, std::move(block), handover, std::move(shown)};
}

std::ostream& operator<<(std::ostream& out, const OneBlockCase& c) { return out << c.button << "@" << c.position; }

class OneBlockButton : public ::testing::TestWithParam<OneBlockCase> {};

TEST_P(OneBlockButton, SendsItsBlockAndEchoesIt) {
    const OneBlockCase& c = GetParam();
    TestConsole test;
    test.Select(c.position);
    test.server().calls.clear();
    test.console().CommandData = Variant::OfText(u"earlier block");

    test.Click(c.button);

    ASSERT_TRUE(test.report().errors.empty());
    ASSERT_EQ(1u, test.calls().size());
    const RecordedCall& call = test.calls()[0];
    EXPECT_EQ(RecordedCall::Kind::Put, call.kind);
    EXPECT_EQ(c.member, call.member);
    ASSERT_TRUE(call.value && call.value->is(Variant::Kind::Text));
    EXPECT_TEXT(c.block, call.text());
    EXPECT_TEXT(c.functionBox, test.console().FunctionBox());
    EXPECT_TEXT(c.dataBox, test.console().DataBox());
    const Text expectedCommandData = c.handover == Handover::ThroughCommandData ? c.block : u"earlier block";
    EXPECT_TEXT(expectedCommandData, ToText(test.console().CommandData));
    EXPECT_TRUE(test.prompter().boxes.empty());
}

// After the text: six line ends on a receipt, twelve on a footer, one on a
// header.
const Text kReceiptTail = u"LastLine !\r\n\r\n\r\n\r\n\r\n\r\n\0"s;
const Text kFooterTail = u"-----\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\0"s;
constexpr char16_t kReceiptLines[] =
    u"Line 2\r\nLine 3\r\nLine 4\r\nLine 5\r\nLine 6\r\nLine 7\r\nLine 8\r\nLine 9\r\nLine 10\r\n";
constexpr Handover kThrough = Handover::ThroughCommandData;
constexpr Handover kDirect = Handover::Direct;

INSTANTIATE_TEST_SUITE_P(
    DisplayAndBeeper, OneBlockButton,
    ::testing::Values(Row("Display", 7, u"<Object>.DispData = (data)", "DisplayData",
                          u"ReaderPosition=07\r\nMessage=Display Msg 1\r\nLine 2 Displayed\r\n\0"s, kThrough),
                      Row("Display2", 32, u"<Object>.DispData = (data)", "DisplayData",
                          u"ReaderPosition=32\r\nMessage=Display Msg 2\r\nLine 2 Displayed\r\n\0"s, kThrough),
                      Row("Beeper", 5, u"<Object>.BeepData = (data)", "BeeperControl",
                          u"ReaderPosition=05\nBeepCounts=03\n\0"s, kDirect, u" ")));

INSTANTIATE_TEST_SUITE_P(
    PrinterJobs, OneBlockButton,
    ::testing::Values(
        Row("Print", 7, u"<Object>.PrintOutput = (data)", "PrintOutput",
            u"ReaderPosition=07\r\nJob=Receipt\r\nMessage=Vantrel\r\n-----Receipt1-----\r\nLine 1 Receipt1\r\n" +
                Text(kReceiptLines) + kReceiptTail,
            kDirect),
        Row("PrintReceipt2", 12, u"<Object>.PrintOutput = (data)", "PrintOutput",
            u"ReaderPosition=12\r\nJob=Receipt\r\nMessage=Vantrel\r\n-----Receipt2-----\r\nLine 1\r\n" +
                Text(kReceiptLines) + kReceiptTail,
            kDirect),
        Row("PrintHeader", 3, u"<Object>.PrinterOutput = (data)", "PrintOutput",
            u"ReaderPosition=03\r\nJob=Header\r\nMessage=-----Header 1-----\r\n\0"s, kDirect),
        Row("Header2", 3, u"<Object>.PrinterOutput = (data)", "PrintOutput",
            u"ReaderPosition=03\r\nJob=Header\r\nMessage=-----Header 2-----\r\n\0"s, kDirect),
        Row("PrintFooter", 20, u"<Object>.PrinterOutput = (data)", "PrintOutput",
            u"ReaderPosition=20\r\nJob=Footer\r\nMessage=-----Footer 1" + kFooterTail, kDirect),
        Row("Footer2", 20, u"<Object>.PrinterOutput = (data)", "PrintOutput",
            u"ReaderPosition=20\r\nJob=Footer\r\nMessage=-----Footer 2" + kFooterTail, kDirect)));

// The function box names "KeyEntryData", with two blanks, not the member.
INSTANTIATE_TEST_SUITE_P(
    KeyEntryModes, OneBlockButton,
    ::testing::Values(Row("KeyEntryDNoCur", 7, u"<Object>.KeyEntryData  = (data)", "KeyEntryType",
                          u"ReaderPosition=07\r\nEntryMode=DESEncryptionNoCursor\r\n\0"s, kThrough),
                      Row("KeyEntryF", 7, u"<Object>.KeyEntryData  = (data)", "KeyEntryType",
                          u"ReaderPosition=07\r\nEntryMode=AnyKey\r\n\0"s, kThrough),
                      Row("KeyEntryNE", 9, u"<Object>.KeyEntryData  = (data)", "KeyEntryType",
                          u"ReaderPosition=09\r\nEntryMode=NumericWithEcho\r\n\0"s, kThrough),
                      Row("KeyEntryNENC", 10, u"<Object>.KeyEntryData  = (data)", "KeyEntryType",
                          u"ReaderPosition=10\r\nEntryMode=NumericWithEchoNoCursor\r\n\0"s, kThrough),
                      Row("KeyEntryNNE", 1, u"<Object>.KeyEntryData  = (data)", "KeyEntryType",
                          u"ReaderPosition=01\r\nEntryMode=NumericWithOutEcho\r\n\0"s, kThrough),
                      Row("KeyEntryNNENC", 32, u"<Object>.KeyEntryData  = (data)", "KeyEntryType",
                          u"ReaderPosition=32\r\nEntryMode=NumericWithOutEchoNoCursor\r\n\0"s, kThrough)));

// A failed assignment ends the console through the error report; the echo
// written before the call stays, the data box is not reached.
TEST(TerminalFailures, AFailedAssignmentGoesToTheReportBeforeTheDataBox) {
    struct Case {
        const char* button;
        const char* member;
        const char16_t* functionBox;
    };
    for (const Case& c :
         {Case{"Display", "DisplayData", u"<Object>.DispData = (data)"},
          Case{"Beeper", "BeeperControl", u"<Object>.BeepData = (data)"},
          Case{"PrintFooter", "PrintOutput", u"<Object>.PrinterOutput = (data)"},
          Case{"KeyEntryNE", "KeyEntryType", u"<Object>.KeyEntryData  = (data)"},
          Case{"PreLoadMSGs", "PreloadDisplayMessage", u"<Object>.PreloadDisplayMessage = (data)"},
          Case{"ReaderInfo", "ReaderInformation", u"(return data)=<Object>.ReaderInformation (passed data)"}}) {
        TestConsole test;
        test.console().SetDataBox(u"before");
        test.server().QueueFailure(c.member, RuntimeError(-2147417848, "Automation error"));
        test.Click(c.button);
        ASSERT_EQ(1u, test.report().errors.size()) << c.button;
        EXPECT_EQ(-2147417848, test.report().errors[0].number());
        EXPECT_EQ(1u, test.calls().size()) << c.button << ": nothing is retried or sent after the failure";
        EXPECT_TEXT(c.functionBox, test.console().FunctionBox());
        EXPECT_TEXT(u"before", test.console().DataBox());
    }
}

TEST(TerminalLayout, ButtonsStandAtTheirTwipsWithTheirCaptions) {
    struct Case {
        const char* name;
        const char16_t* caption;
        int left;
        int top;
        int width;
        int height;
    };
    TestConsole test;
    const FormDescription& form = test.console().Description(kConsoleForm);
    for (const Case& c : {
             Case{"Display", u"Display1", 2160, 4080, 1575, 255},
             Case{"Display2", u"Display2", 2160, 4440, 1575, 255},
             Case{"Beeper", u"BeeperControl", 2160, 5280, 1575, 255},
             Case{"PrintHeader", u"Header 1", 120, 6600, 855, 255},
             Case{"Header2", u"Header 2", 1080, 6600, 855, 255},
             Case{"PrintFooter", u"Footer 1", 120, 6960, 855, 255},
             Case{"Footer2", u"Footer 2", 1080, 6960, 855, 255},
             Case{"Print", u"Print Receipt1", 120, 7320, 855, 495},
             Case{"PrintReceipt2", u"Print Receipt2", 1080, 7320, 855, 495},
             Case{"BarCodePrint", u"BarCodePrint", 3960, 7320, 1095, 375},
             Case{"KeyEntryNNE", u"Num No E", 240, 3720, 495, 495},
             Case{"KeyEntryNENC", u"Num Echo No C", 840, 3720, 975, 495},
             Case{"KeyEntryNE", u"Num Echo", 240, 4320, 495, 495},
             Case{"KeyEntryNNENC", u"Num No E No C", 840, 4320, 975, 495},
             Case{"KeyEntryD", u"DES", 120, 4920, 495, 495},
             Case{"KeyEntryDNoCur", u"DES No C", 720, 4920, 615, 495},
             Case{"KeyEntryF", u"Func", 1440, 4920, 495, 495},
             Case{"KeyPad", u"KeyPadConfiguration", 120, 6240, 1695, 255},
             Case{"PreLoadMSGs", u"PreLoad MSGs", 2160, 3720, 1575, 255},
             Case{"ReaderInfo", u"Reader Info", 240, 2040, 1335, 255},
         }) {
        const Control* control = form.Find(c.name);
        ASSERT_NE(nullptr, control) << c.name;
        EXPECT_EQ(ControlKind::CommandButton, control->kind) << c.name;
        EXPECT_TEXT(c.caption, control->caption);
        EXPECT_EQ(c.left, control->left) << c.name;
        EXPECT_EQ(c.top, control->top) << c.name;
        EXPECT_EQ(c.width, control->width) << c.name;
        EXPECT_EQ(c.height, control->height) << c.name;
        EXPECT_TRUE(static_cast<bool>(control->click)) << c.name;
    }
    // The key entry buttons stand under the existing label.
    const Control* label = form.Find("Label1");
    ASSERT_NE(nullptr, label);
    EXPECT_TEXT(u"Key Entry Type", label->caption);
}

}  // namespace
}  // namespace vantrel
