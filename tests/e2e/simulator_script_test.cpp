// The program in script mode against its built-in simulator: forecourt lines
// and the simulator's clock, with the answers read back through the console.
#include "e2e/e2e.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>

namespace vantrel::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(SimulatorScript, ANozzleLiftedOnTheForecourtShowsInThePositionInformation) {
    const ScriptRun run = RunConsole(R"vts(
forecourt lift 7 hose 2
click Button7
expect InBox "FuelingPosition=07\r\nState=Idle\r\nNozzle=Up\r\nHose=2\r\nMOP=\r\nLimit=\r\nVolume=0.000\r\nAmount=0.00\r\nUnitPrice=0.000\r\n"
forecourt hang 7
dblclick Button7
expect InBox "FuelingPosition=07\r\nState=Idle\r\nNozzle=Down\r\nHose=0\r\nMOP=\r\nLimit=\r\nVolume=0.000\r\nAmount=0.00\r\nUnitPrice=0.000\r\n"
)vts");
    EXPECT_EQ(0, run.exitCode) << run.err;
}

TEST(SimulatorScript, ATankReportIsBusyUntilTheScriptMovesTheClockOn) {
    const ScriptRun run = RunConsole(R"vts(
click OTHERDEVICESBUTTON
click TMStartReport
click TMREPORTSTATUSBUTTON
expect DeviceData "ReportStatus=Busy\r\n"
click TMDATAREADBUTTON
expect DeviceData ""
server time +4.999
click TMREPORTSTATUSBUTTON
expect DeviceData "ReportStatus=Busy\r\n"
server time +0.001
click TMREPORTSTATUSBUTTON
expect DeviceData "ReportStatus=Complete\r\n"
click TMDATAREADBUTTON
print DeviceData
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_THAT(run.out, StartsWith(R"(DeviceData "Tanks=4\r\nTank=1\r\nProduct=Unleaded\r\nVolume=18500.000\r\n)"));
}

TEST(SimulatorScript, ACarWashCodeIsSoldAskedAboutAndCancelledFromTheConsole) {
    // The first code of a run is always the same.
    const ScriptRun run = RunConsole(R"vts(
click OTHERDEVICESBUTTON
click CWGETCODEBUTTON
click CAR_WASHSTATUSBUTTON
expect DeviceData "Request=RequestCarWashCode\r\nStatus=Busy\r\n"
server time +2
click CARWASHREADDATABUTTON
expect DeviceData "CarWashCode=14271\r\nProgramNumber=01\r\nOptionCount=2\r\nPrice=00560\r\n"
type CodeBox "14271"
click CODESTATUS_BUTTON
server time +2
click CARWASHREADDATABUTTON
expect DeviceData "CarWashCode=14271\r\nCodeStatus=Valid\r\nProgramNumber=01\r\nPrice=00560\r\n"
click CANCELCODEBUTTON
server time +2
click CARWASHREADDATABUTTON
expect DeviceData "CarWashCode=14271\r\nCodeStatus=Cancelled\r\n"
click COMMANDSTATUSBUTTON
expect DeviceData "CarWash=Ready\r\nProgramNumber=00\r\nSecondsLeft=0\r\nCodesValid=0\r\n"
forecourt wash "14271"
)vts");
    EXPECT_EQ(2, run.exitCode);
    EXPECT_THAT(run.err, HasSubstr("script.vts:20: forecourt: code 14271 is not valid at this wash"));
}

TEST(SimulatorScript, ThePriceSignAnswersWhatItWasSent) {
    const ScriptRun run = RunConsole(R"vts(
click OTHERDEVICESBUTTON
click PRICE_SIGN_SEND_PRICES
click PRICE_SIGN_SEND_CONTROL
click PRICE_SIGN_GET_STATUS
expect DeviceData "Status=OK\r\nLine1=001000\r\nLine2=002000\r\nLine3=003000\r\nLine4=004000\r\nLine5=005000\r\nIntensity=M08\r\nUpdates=2\r\n"
)vts");
    EXPECT_EQ(0, run.exitCode) << run.err;
}

TEST(SimulatorScript, AutomaticTrafficIsTheSameInEveryRun) {
    std::string script = "server auto on\nserver time +900\n";
    for (int position = 1; position <= 32; ++position) {
        script += "dblclick Button" + std::to_string(position) + "\nprint InBox\n";
    }
    const ScriptRun first = RunConsole(script);
    const ScriptRun second = RunConsole(script);
    ASSERT_EQ(0, first.exitCode) << first.err;
    ASSERT_EQ(0, second.exitCode) << second.err;
    EXPECT_EQ(first.out, second.out);
    // Customers wait at pumps that nobody has authorized.
    EXPECT_THAT(first.out, HasSubstr(R"(State=Idle\r\nNozzle=Up\r\n)"));
}

TEST(SimulatorScript, FaultsOnDemandReachTheConsole) {
    const auto started = std::chrono::steady_clock::now();
    const ScriptRun run = RunConsole(R"vts(
server delay FuelingPositionInformation 1500
server answer TankMonitorReport huge 100000
server answer FuelingPositionInformation ""
click Button9
expect InBox ""
click OTHERDEVICESBUTTON
click TMDATAREADBUTTON
print DeviceData
)vts");
    const auto took = std::chrono::steady_clock::now() - started;
    ASSERT_EQ(0, run.exitCode) << run.err;
    // A late answer really is late: the run cannot be quicker than the delay.
    EXPECT_GE(took, std::chrono::milliseconds(1500));
    EXPECT_THAT(run.out, StartsWith(R"(DeviceData "Filler=XXXX)"));
    EXPECT_GT(run.out.size(), 100000u);
}

TEST(SimulatorScript, TheToolsMenuOpensTheSimulatorWindow) {
    const ScriptRun empty = RunConsole("");
    const std::string picture = empty.directory + "/simulator.png";
    const ScriptRun run =
        RunConsole("forecourt lift 3 hose 1\nmenu \"Tools\" \"Simulator...\"\nshot Simulator \"" + picture + "\"\n");
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_GT(std::filesystem::file_size(picture), 1000u);
    // Shown only through the menu.
    const ScriptRun hidden = RunConsole("shot Simulator \"" + picture + "\"\n");
    EXPECT_EQ(2, hidden.exitCode);
    EXPECT_THAT(hidden.err, HasSubstr("no window Simulator has been shown yet"));
}

}  // namespace
}  // namespace vantrel::testing
