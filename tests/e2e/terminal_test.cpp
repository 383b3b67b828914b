// The reader-terminal buttons in the real program, driven by script mode: the
// blocks as the server receives them (trace), the echo boxes as the
// technician reads them.

#include "e2e/e2e.h"

#include <gmock/gmock.h>

namespace vantrel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::HasSubstr;
using ::testing::Not;

// One click: the echo texts in script notation, the server's view in trace
// notation (JSON escapes).
struct Click {
    const char* button;
    const char* functionBox;
    const char* dataBox;
    const char* put;
};

// One button of each echo text and line-end form; the handler tests hold
// every block.
TEST(TerminalScript, OneBlockButtonsSendAndEchoExactly) {
    const Click clicks[] = {
        {"Display", "<Object>.DispData = (data)",
         R"(ReaderPosition=07\r\nMessage=Display Msg 1\r\nLine 2 Displayed\r\n\0)",
         R"({"op":"put","member":"DisplayData","value":{"text":"ReaderPosition=07\r\nMessage=Display Msg 1\r\nLine 2 Displayed\r\n\u0000"}})"},
        {"Beeper", "<Object>.BeepData = (data)", " ",
         R"({"op":"put","member":"BeeperControl","value":{"text":"ReaderPosition=07\nBeepCounts=03\n\u0000"}})"},
        {"Print", "<Object>.PrintOutput = (data)",
         R"(ReaderPosition=07\r\nJob=Receipt\r\nMessage=Vantrel\r\n-----Receipt1-----\r\nLine 1 Receipt1\r\nLine 2\r\nLine 3\r\nLine 4\r\nLine 5\r\nLine 6\r\nLine 7\r\nLine 8\r\nLine 9\r\nLine 10\r\nLastLine !\r\n\r\n\r\n\r\n\r\n\r\n\0)",
         R"({"op":"put","member":"PrintOutput","value":{"text":"ReaderPosition=07\r\nJob=Receipt\r\nMessage=Vantrel\r\n-----Receipt1-----\r\nLine 1 Receipt1\r\nLine 2\r\nLine 3\r\nLine 4\r\nLine 5\r\nLine 6\r\nLine 7\r\nLine 8\r\nLine 9\r\nLine 10\r\nLastLine !\r\n\r\n\r\n\r\n\r\n\r\n\u0000"}})"},
        {"PrintHeader", "<Object>.PrinterOutput = (data)",
         R"(ReaderPosition=07\r\nJob=Header\r\nMessage=-----Header 1-----\r\n\0)",
         R"({"op":"put","member":"PrintOutput","value":{"text":"ReaderPosition=07\r\nJob=Header\r\nMessage=-----Header 1-----\r\n\u0000"}})"},
        {"PrintFooter", "<Object>.PrinterOutput = (data)",
         R"(ReaderPosition=07\r\nJob=Footer\r\nMessage=-----Footer 1-----\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\0)",
         R"({"op":"put","member":"PrintOutput","value":{"text":"ReaderPosition=07\r\nJob=Footer\r\nMessage=-----Footer 1-----\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\u0000"}})"},
        {"KeyEntryNNENC", "<Object>.KeyEntryData  = (data)",
         R"(ReaderPosition=07\r\nEntryMode=NumericWithOutEchoNoCursor\r\n\0)",
         R"({"op":"put","member":"KeyEntryType","value":{"text":"ReaderPosition=07\r\nEntryMode=NumericWithOutEchoNoCursor\r\n\u0000"}})"},
    };
    std::string script = "click Button7\n";
    std::vector<std::string> expected = {R"({"op":"call","member":"FuelingPositionInformation","arg":{"i2":7},)"};
    for (const Click& c : clicks) {
        script += std::string("click ") + c.button + "\nexpect TextBox \"" + c.functionBox + "\"\nexpect InBox \"" +
                  c.dataBox + "\"\n";
        expected.emplace_back(c.put);
    }
    const ScriptRun run = RunConsole(script);
    ASSERT_EQ(0, run.exitCode) << run.err;
    std::vector<std::string> calls = Calls(run);
    ASSERT_FALSE(calls.empty());
    calls[0] = calls[0].substr(0, expected[0].size());  // the simulator's answer is not ours to fix
    EXPECT_THAT(calls, ElementsAreArray(expected));
}

TEST(TerminalScript, DesKeyEntrySendsItsOpenEndedPacketFirst) {
    const ScriptRun run = RunConsole(R"vts(
click Button3
click KeyEntryD
expect TextBox "<Object>.PacketQueOutput = (data)"
expect InBox "ReaderPosition=03\r\nEntryMode=DESEncryption\r\n\0"
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    const auto calls = Calls(run);
    ASSERT_EQ(3u, calls.size());
    EXPECT_EQ(
        R"({"op":"put","member":"PacketQueOutput","value":{"text":"ReaderPosition=03\r\nPacketCount=017\r\nPacketData=44$*1234567890123"}})",
        calls[1]);
    EXPECT_EQ(
        R"({"op":"put","member":"KeyEntryType","value":{"text":"ReaderPosition=03\r\nEntryMode=DESEncryption\r\n\u0000"}})",
        calls[2]);
}

TEST(TerminalScript, AFailedEntryModeEndsTheProgramAfterThePacketWentOut) {
    const ScriptRun run = RunConsole(R"vts(
server fail KeyEntryType 438 "Object doesn't support this property or method"
click KeyEntryD
)vts");
    EXPECT_EQ(1, run.exitCode);
    EXPECT_THAT(run.err, HasSubstr("Run-time error 438"));
    const auto calls = Calls(run);
    ASSERT_EQ(2u, calls.size());
    EXPECT_THAT(calls[0], HasSubstr(R"("member":"PacketQueOutput")"));
    EXPECT_THAT(calls[1], HasSubstr(R"("member":"KeyEntryType")"));
    EXPECT_THAT(calls[1], HasSubstr(R"("error":{"number":438)"));
}

// No, Yes with an entry, Yes with Cancel.
TEST(TerminalScript, KeyPadTakesItsThreePaths) {
    const ScriptRun run = RunConsole(R"vts(
answer no
click KeyPad
expect TextBox "<Object>.KeyPadData (data)"
expect InBox "ReaderPosition=01\r\nKeyData=123@R456A@789NYL0EHCe\n\0"
click Button30
answer yes
answer " 1=2 @R "
click KeyPad
expect TextBox "<Object>.KeyPadData (data)"
expect InBox "ReaderPosition=30\r\nKeyData= 1=2 @R \n\0"
answer yes
answer cancel
click KeyPad
expect TextBox "<Object>.KeyPadConfiguration = (data)"
expect InBox "ReaderPosition=30\r\nKeyData= 1=2 @R \n\0"
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    const std::string question =
        R"({"op":"msgbox","text":"Do you want to set your on config?","title":"Key Pad Configuration Select","buttons":"yesno",)";
    const std::string input = R"({"op":"inputbox","prompt":"Enter Keypad Config Data","title":"Keypad Configuration",)";
    // The cancelled entry ends the run: nothing sent, no message after it.
    EXPECT_THAT(
        run.trace,
        ElementsAre(
            HasSubstr(R"("op":"create")"), question + R"("answer":"no"})",
            R"({"op":"put","member":"KeyPadConfiguration","value":{"text":"ReaderPosition=01\r\nKeyData=123@R456A@789NYL0EHCe\n\u0000"}})",
            HasSubstr(R"("member":"FuelingPositionInformation")"), question + R"("answer":"yes"})",
            input + R"("answer":" 1=2 @R "})",
            R"({"op":"put","member":"KeyPadConfiguration","value":{"text":"ReaderPosition=30\r\nKeyData= 1=2 @R \n\u0000"}})",
            question + R"("answer":"yes"})", input + R"("answer":""})"));
}

TEST(TerminalScript, BarCodePrintForcesTerminalOneForLaterCommandsOnly) {
    const ScriptRun run = RunConsole(R"vts(
click Button12
click Display
click BarCodePrint
expect TextBox "<Object>.DispData = (data)"
expect InBox "ReaderPosition=12\r\nMessage=Display Msg 1\r\nLine 2 Displayed\r\n\0"
expect TextBoxPumpNumber "Fueling Position -> 12"
click Display
expect InBox "ReaderPosition=01\r\nMessage=Display Msg 1\r\nLine 2 Displayed\r\n\0"
server answer ReaderInformation "Reader=12"
click ReaderInfo
expect TextBox "(return data)=<Object>.ReaderInformation (passed data)"
expect InBox "Reader=12"
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    const auto calls = Calls(run);
    ASSERT_EQ(5u, calls.size());
    EXPECT_EQ(
        R"({"op":"put","member":"PrintOutput","value":{"text":"ReaderPosition=01\r\nJob=Receipt\r\nMessage=Vantrel\r\nLine 1\r\nLine 2\r\nLine 3\r\nLine 4\r\n\u001bB0202354000006\u0003\r\nTestLine 5\r\nTestLine 6\r\nTestLine 7\r\nTestLine 8\r\nTestLine 9\r\nTestLine 10\r\nLastLine !\r\n\r\n\r\n\r\n\r\n\r\n\u0000"}})",
        calls[2]);
    EXPECT_THAT(calls[3], HasSubstr(R"("value":{"text":"ReaderPosition=01\r\n)"));
    EXPECT_EQ(
        R"({"op":"call","member":"ReaderInformation","arg":{"i2":12},"byref":true,"result":{"text":"Reader=12"}})",
        calls[4]);
}

TEST(TerminalScript, PreloadedMessagesGoOutNineInARow) {
    const ScriptRun run = RunConsole(R"vts(
click Button9
click PreLoadMSGs
expect TextBox "<Object>.PreloadDisplayMessage = (data)"
expect InBox "Section=1\r\nMessageType=Printer\r\nMessageNumber=4\r\nMessage=Printers BAD\r\n\0"
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    auto calls = Calls(run);
    ASSERT_EQ(10u, calls.size());
    calls.erase(calls.begin());  // the position's information request
    for (std::size_t i = 0; i < calls.size(); ++i) {
        EXPECT_THAT(calls[i], HasSubstr(R"({"op":"put","member":"PreloadDisplayMessage","value":{"text":"Section=)"));
        EXPECT_THAT(calls[i], HasSubstr(i == 3 ? "Section=0" : "Section=1"));
        EXPECT_THAT(calls[i], Not(HasSubstr("ReaderPosition")));
    }
    EXPECT_THAT(calls[3], HasSubstr("MessageNumber=4\\r\\nMessage=Hold on a Minute"));
}

}  // namespace
}  // namespace vantrel::testing
