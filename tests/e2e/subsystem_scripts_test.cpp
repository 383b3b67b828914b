// One script a subsystem, run by the program itself in script mode: the
// real windows, the modal hand-off to secondary windows, boxes answered from
// the script, the trace, and the error report with exit code 1.
#include "e2e/e2e.h"

#include <gmock/gmock.h>

namespace vantrel::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;

// Dispenser: a fixed block, a preset's boxes in the trace, the position by
// reference, and a hose count that ends the run.
TEST(DispenserScript, BlocksBoxesAndTheErrorReportInOrder) {
    const ScriptRun run = RunConsole(R"vts(
click Button12
click Fillup
expect TextBox "<Object>.Authorize = (data)"
expect InBox "FuelingPosition=12\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n\0"
# "10" sorts before "8": a hose
answer "10"
answer "1"
answer "12"
answer ok
click Preset
expect TextBox "<Object>.Authorize (data)"
server answer DispenserInformation "Model=7\r\n"
click DispenserInfo
expect InBox "Model=7\r\n"
answer "15"
answer "two"
click Price
expect TextBox "never reached"
)vts");
    EXPECT_EQ(1, run.exitCode) << run.err;
    EXPECT_THAT(run.err, ::testing::HasSubstr("Run-time error 13: Type mismatch"));
    // The trace without the creation and the position's own request.
    ASSERT_GT(run.trace.size(), 2u);
    const std::vector<std::string> steps(run.trace.begin() + 2, run.trace.end());
    EXPECT_THAT(
        steps,
        ElementsAre(
            TracedPut("Authorize", R"(FuelingPosition=12\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n\u0000)"),
            R"j({"op":"inputbox","prompt":"Enter Hose Number (0 - 8)","title":"Hose Input","answer":"10"})j",
            R"j({"op":"inputbox","prompt":"Enter MOP (1, 2, F)","title":"MOP Input","answer":"1"})j",
            R"j({"op":"inputbox","prompt":"Enter Limit - Must be 6 digits","title":"Preset amount Input","answer":"12"})j",
            R"j({"op":"msgbox","text":"FuelingPosition=12\r\nHose=10\r\nMOP=1\r\nLimit=12\r\n\u0000","title":"VantrelTest","buttons":"ok","answer":"ok"})j",
            TracedPut("Authorize", R"(FuelingPosition=12\r\nHose=10\r\nMOP=1\r\nLimit=12\r\n\u0000)"),
            R"j({"op":"call","member":"DispenserInformation","arg":{"i2":12},"byref":true,"result":{"text":"Model=7\r\n"}})j",
            R"j({"op":"inputbox","prompt":"Enter Slow Down Point","title":"Slow Down Point","answer":"15"})j",
            R"j({"op":"inputbox","prompt":"Enter number of hoses","title":"Number of Hoses","answer":"two"})j",
            R"j({"op":"report","number":13,"description":"Type mismatch"})j"));
}

// Terminal: the beeper's LF-only block, the DES lead-in packet, the keypad's
// boxes in the trace, and the bar-code print's lasting terminal 01.
TEST(TerminalScript, BlocksBoxesAndTheBarCodeSideEffectInOrder) {
    const ScriptRun run = RunConsole(R"vts(
click Button7
click Beeper
expect TextBox "<Object>.BeepData = (data)"
expect InBox " "
click KeyEntryD
expect TextBox "<Object>.PacketQueOutput = (data)"
expect InBox "ReaderPosition=07\r\nEntryMode=DESEncryption\r\n\0"
answer yes
answer " 1=2 @R "
click KeyPad
expect TextBox "<Object>.KeyPadData (data)"
expect InBox "ReaderPosition=07\r\nKeyData= 1=2 @R \n\0"
answer yes
answer cancel
click KeyPad
expect TextBox "<Object>.KeyPadConfiguration = (data)"
click BarCodePrint
expect TextBoxPumpNumber "Fueling Position -> 7"
click Display
expect InBox "ReaderPosition=01\r\nMessage=Display Msg 1\r\nLine 2 Displayed\r\n\0"
server answer ReaderInformation "Reader=7"
click ReaderInfo
expect TextBox "(return data)=<Object>.ReaderInformation (passed data)"
expect InBox "Reader=7"
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    ASSERT_GT(run.trace.size(), 2u);
    const std::string question =
        R"({"op":"msgbox","text":"Do you want to set your on config?","title":"Key Pad Configuration Select","buttons":"yesno","answer":"yes"})";
    const std::string input = R"({"op":"inputbox","prompt":"Enter Keypad Config Data","title":"Keypad Configuration",)";
    EXPECT_THAT(
        std::vector<std::string>(run.trace.begin() + 2, run.trace.end()),
        ElementsAre(
            TracedPut("BeeperControl", R"(ReaderPosition=07\nBeepCounts=03\n\u0000)"),
            TracedPut("PacketQueOutput", R"(ReaderPosition=07\r\nPacketCount=017\r\nPacketData=44$*1234567890123)"),
            TracedPut("KeyEntryType", R"(ReaderPosition=07\r\nEntryMode=DESEncryption\r\n\u0000)"), question,
            input + R"("answer":" 1=2 @R "})",
            TracedPut("KeyPadConfiguration", R"(ReaderPosition=07\r\nKeyData= 1=2 @R \n\u0000)"), question,
            input + R"("answer":""})",
            HasSubstr(R"("member":"PrintOutput","value":{"text":"ReaderPosition=01\r\nJob=Receipt\r\n)"),
            TracedPut("DisplayData", R"(ReaderPosition=01\r\nMessage=Display Msg 1\r\nLine 2 Displayed\r\n\u0000)"),
            R"({"op":"call","member":"ReaderInformation","arg":{"i2":7},"byref":true,"result":{"text":"Reader=7"}})"));
}

// Queues: a read and a clear, a packet out and one in, and a clear whose
// answer ends the run.
TEST(QueueScript, ReadsClearsPacketsAndTheErrorReportInOrder) {
    const ScriptRun run = RunConsole(R"vts(
server answer CardQue "Card=4000\r\nTrack2=\e;123?\0"
server answer ClearTopCardQue number 1
click CardQue
expect TextBox "<data>=<Object>.CardQue"
expect InBox "Card=4000\r\nTrack2=\e;123?\0"
click ClearCardEntry
expect TextBox "<Object>.ClearTopCardQue"
expect InBox " "
click Button5
click PacketOut
expect InBox "ReaderPosition=05\r\nPacketCount=003\r\nPacketData=C\x10\x07\r\n\0"
server answer PacketQueInput "ReaderPosition=05\r\nPacketCount=006\r\nPacketData= \x7f\u20ac\u00ffZ\0\r\n\0"
click PacketQue
expect TextBox "(data)=<Object>.PacketQueInput"
expect InBox "ReaderPosition=05\r\nPacketCount=006\r\nPacketData= 20 7F 80 FF Z 0"
server answer ClearTopKeyQue "abc"
click ClearKeyEntry
expect TextBox "never reached"
)vts");
    EXPECT_EQ(1, run.exitCode) << run.err;
    EXPECT_THAT(run.err, HasSubstr("Run-time error 13: Type mismatch"));
    EXPECT_THAT(
        Calls(run),
        ElementsAre(HasSubstr(R"("member":"CardQue","result":{"text":"Card=4000\r\nTrack2=\u001b;123?\u0000"})"),
                    HasSubstr(R"("member":"ClearTopCardQue","result":{"i2":1})"),
                    HasSubstr(R"("member":"FuelingPositionInformation")"),
                    TracedPut("PacketQueOutput",
                              R"(ReaderPosition=05\r\nPacketCount=003\r\nPacketData=C\u0010\u0007\r\n\u0000)"),
                    HasSubstr(R"("member":"PacketQueInput")"),
                    HasSubstr(R"("member":"ClearTopKeyQue","result":{"text":"abc"})")));
    EXPECT_EQ(R"({"op":"report","number":13,"description":"Type mismatch"})", run.trace.back());
}

// System: stress ticks only while on, also under the serial OK's box where a
// tick replaces the block; a dialog from the menu takes the following lines.
TEST(SystemScript, StressTicksOnlyWhileOnAndATickUnderTheBoxReplacesTheSerialBlock) {
    const ScriptRun run = RunConsole(R"vts(
click Button5
answer no
click WindowControl
expect TextBox "<Object>.WindowControl = (data)"
tick 2
click STRESS_BUTTON
tick 1
expect TextBox "<Object>.WindowControl = (data)"
menu "Set-up" "Serial Port Para..."
click oComm1
click oBR19200
answer ok ticks 1
click SPOK
expect TextBox "<Object>.WindowControl = (data)"
click STRESS_BUTTON
tick 3
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    const std::string keyPad01 =
        TracedPut("KeyPadConfiguration", R"(ReaderPosition=01\r\nKeyData=123@R456A@789NYL0EHCe\n\u0000)");
    const std::string keyPad17 =
        TracedPut("KeyPadConfiguration", R"(ReaderPosition=17\r\nKeyData=123@R456A@789NYL0EHCe\n\u0000)");
    EXPECT_THAT(Calls(run),
                ElementsAre(HasSubstr("FuelingPositionInformation"), TracedPut("WindowControl", R"(Hide\r\n\u0000)"),
                            keyPad01, keyPad17, keyPad01, keyPad17,
                            // The key pad block that the tick left in the
                            // shared value goes to the serial member.
                            TracedPut("SerialPortParameters",
                                      R"(ReaderPosition=17\r\nKeyData=123@R456A@789NYL0EHCe\n\u0000)")));
    EXPECT_THAT(
        run.trace,
        ::testing::Contains(
            R"({"op":"msgbox","text":"Do you want Vantrel visible?","title":"WindowControl Select","buttons":"yesno","answer":"no"})"));
    // The box showed the block the dialog built.
    EXPECT_THAT(
        run.trace,
        ::testing::Contains(HasSubstr(
            R"({"op":"msgbox","text":"PortNumber=1\r\nBaudRate=19200\r\nLogFileName=c:\\xfer\\logfile.log\r\n\u0000","title":"VantrelTest")")));
}

// Other devices: the code and the price table survive hiding.
TEST(OtherDevicesScript, TheWindowKeepsItsCodeAndPriceTableAcrossHiding) {
    const ScriptRun run = RunConsole(R"vts(
click OTHERDEVICESBUTTON
type CodeBox "987"
click CANCELCODEBUTTON
expect VantrelTest.TextBox "<Object>.CarWashInformationRequest = <data>"
click SETPRICEBUTTON
click EXIT_CMD
expect TextBox "<Object>.CarWashInformationRequest = <data>"
expect InBox ""
click OTHERDEVICESBUTTON
expect CodeBox "987"
click SETPRICEBUTTON
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    const auto calls = Calls(run);
    ASSERT_EQ(3u, calls.size());
    EXPECT_EQ(TracedPut("CarWashInformationRequest", R"(CancelCarWashCode\r\nCarWashCode=987\r\n\u0000)"), calls[0]);
    EXPECT_THAT(calls[1], HasSubstr(R"(SetPriceData\r\nProgramCount=03\r\nProgramNumber=01\r\nFullPrice=00500\r\n)"));
    EXPECT_THAT(calls[2], HasSubstr(R"(SetPriceData\r\nProgramCount=03\r\nProgramNumber=01\r\nFullPrice=00501\r\n)"));
}

// Graphics: a screen closes its window and hands the next line back to the
// console; the test functions window stays open.
TEST(GraphicsScript, ScreensCloseTheirWindowAndTestsKeepTheirs) {
    const ScriptRun run = RunConsole(R"vts(
click Button32
click InfoDisplay
click Wayne2Line
expect TextBox "<Object>.DispData = (data)"
expect InBox "ReaderPosition=32\r\nMessage=\eG2\e\x1A000\e=001002Hello (001/002)\r\n\0"
click TEST_FUNCTION_BUTTON
click iXCAT_DES_TEST
click SecialTests
expect VantrelTest.InBox "ReaderPosition=32\r\nMessage=\eG2\e\x1A000\e=001002Hello (001/002)\r\n\0"
click EXIT_BUTTON
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_THAT(
        Calls(run),
        ElementsAre(
            HasSubstr("FuelingPositionInformation"),
            TracedPut("DisplayData",
                      R"(ReaderPosition=32\r\nMessage=\u001bG2\u001b\u001a000\u001b=001002Hello (001/002)\r\n\u0000)"),
            AllOf(HasSubstr(R"("member":"PacketQueOutput")"), HasSubstr(R"(PacketCount=185\r\n)"),
                  EndsWith(R"(PINSupportData=\"5A3C19E07B42D68F\"/>\r\n\u0000"}})")),
            AllOf(HasSubstr(R"("member":"DisplayData")"),
                  EndsWith(R"(Center this very very long xxxxxxxxx text line\r\n\u0000"}})"))));
}

}  // namespace
}  // namespace vantrel::testing
