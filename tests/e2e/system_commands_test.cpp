// The system commands, stress mode and the set-up dialogs in the program
// itself: the real windows in script mode, the built-in simulator, the trace.
#include "e2e/e2e.h"

#include <gmock/gmock.h>

namespace vantrel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string Put(const std::string& member, const std::string& text) {
    return R"({"op":"put","member":")" + member + R"(","value":{"text":")" + text + R"("}})";
}

const std::string kKeyPad01 =
    Put("KeyPadConfiguration", R"(ReaderPosition=01\r\nKeyData=123@R456A@789NYL0EHCe\n\u0000)");
const std::string kKeyPad17 =
    Put("KeyPadConfiguration", R"(ReaderPosition=17\r\nKeyData=123@R456A@789NYL0EHCe\n\u0000)");

TEST(SystemCommands, EachButtonMakesItsCallAndShowsItsText) {
    const ScriptRun run = RunConsole(R"vts(
server answer SystemVersions "Application=10.29\r\n"
click SystemVersions
expect TextBox "(data)=<Object>.SystemVersions"
expect InBox "Application=10.29\r\n"
click SelfTestStart
expect TextBox "<Object>.SelfDiagnosticsReportStart"
expect InBox "Application=10.29\r\n"
server answer SelfDiagnosticsReportStatus number -1
click SelfTestStatus
expect InBox "Self Diagnositcs\r\nreport busy"
server time +3
click SelfTestStatus
expect TextBox "<Object>.SelfDiagnosticsReportStatus"
expect InBox "Self Diagnositcs\r\nreport Complete"
click HELP_BUTTON
expect TextBox "<Object>.SelfDiagnosticsReportStatus"
answer no
click WindowControl
expect TextBox "<Object>.WindowControl = (data)"
expect InBox "Self Diagnositcs\r\nreport Complete"
answer yes
click WindowControl
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_THAT(Calls(run),
                ElementsAre(HasSubstr(R"("member":"SystemVersions","result")"),
                            HasSubstr(R"("member":"SelfDiagnosticsReportStart","result":{"i2":0})"),
                            HasSubstr(R"("member":"SelfDiagnosticsReportStatus","result":{"i2":-1})"),
                            HasSubstr(R"("member":"SelfDiagnosticsReportStatus","result":{"i2":0})"),
                            HasSubstr(R"("member":"InvokeHelpFile")"), Put("WindowControl", R"(Hide\r\n\u0000)"),
                            Put("WindowControl", R"(Visible\r\n\u0000)")));
    EXPECT_THAT(run.trace,
                ::testing::Contains(HasSubstr(
                    R"("text":"Do you want Vantrel visible?","title":"WindowControl Select","buttons":"yesno")")));
}

TEST(StressMode, TicksSendToReadersOneAndSeventeenOnlyWhileOn) {
    const ScriptRun run = RunConsole(R"vts(
click Button5
tick 2
click STRESS_BUTTON
tick 2
expect TextBox "<returned data>=<Object>.FuelingPositionInformation(passed data)"
expect InBox "FuelingPosition=05\r\nState=Idle\r\nNozzle=Down\r\nHose=0\r\nMOP=\r\nLimit=\r\nVolume=0.000\r\nAmount=0.00\r\nUnitPrice=0.000\r\n"
click STRESS_BUTTON
tick 3
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_THAT(Calls(run),
                ElementsAre(HasSubstr("FuelingPositionInformation"), kKeyPad01, kKeyPad17, kKeyPad01, kKeyPad17));
}

TEST(SetUpDialogs, TheSerialPortOkSendsItsBlockUnlessATickReplacesIt) {
    const ScriptRun run = RunConsole(R"vts(
menu "Set-up" "Serial Port Para..."
click oComm2
click oBR9600
answer ok
click SPOK
expect TextBox "Function Box"
click STRESS_BUTTON
menu "Set-up" "Serial Port Para..."
click oComm1
click oBR19200
answer ok ticks 1
click SPOK
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_THAT(
        Calls(run),
        ElementsAre(Put("SerialPortParameters",
                        R"(PortNumber=2\r\nBaudRate=9600\r\nLogFileName=c:\\xfer\\logfile.log\r\n\u0000)"),
                    kKeyPad01, kKeyPad17,
                    // The key pad block that the tick left in the
                    // shared value goes to the serial member.
                    Put("SerialPortParameters", R"(ReaderPosition=17\r\nKeyData=123@R456A@789NYL0EHCe\n\u0000)")));
    // The box showed the block the dialog built.
    EXPECT_THAT(
        run.trace,
        ::testing::Contains(HasSubstr(
            R"({"op":"msgbox","text":"PortNumber=1\r\nBaudRate=19200\r\nLogFileName=c:\\xfer\\logfile.log\r\n\u0000","title":"VantrelTest")")));
}

TEST(SetUpDialogs, TheDebugChoiceAndACancelCarryIntoTheNextSerialBlock) {
    const ScriptRun run = RunConsole(R"vts(
menu "Set-up" "Get Debug Select..."
expect Label5 "msgbox - OLE/DDE only"
click Select4
click cmdOK
menu "Set-up" "Serial Port Para..."
answer ok
click SPOK
menu "Set-up" "Get Debug Select..."
click cmdCancel
menu "Set-up" "Serial Port Para..."
answer ok
click SPOK
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_THAT(Calls(run),
                ElementsAre(Put("SerialPortParameters", R"(4LogFileName=c:\\xfer\\logfile.log\r\n\u0000)"),
                            Put("SerialPortParameters", R"(100LogFileName=c:\\xfer\\logfile.log\r\n\u0000)")));
}

TEST(SetUpDialogs, MenuMistakesExitWithTwo) {
    struct Case {
        const char* script;
        const char* message;
    };
    for (const Case& c : {
             Case{"menu \"Set-up\" \"Nothing...\"\n", R"(no menu entry "Set-up" "Nothing..." on the console)"},
             Case{"menu Set-up \"Serial Port Para...\"\n", R"(usage: menu "MENU" "ENTRY")"},
             Case{"menu \"Set-up\" \"Get Debug Select...\"\nmenu \"Set-up\" \"Get Debug Select...\"\n",
                  "the console's menu cannot be used while GetDebugSelect is shown"},
         }) {
        const ScriptRun run = RunConsole(c.script);
        EXPECT_EQ(2, run.exitCode) << c.script;
        EXPECT_THAT(run.err, HasSubstr(c.message)) << c.script;
    }
}

}  // namespace
}  // namespace vantrel::testing
