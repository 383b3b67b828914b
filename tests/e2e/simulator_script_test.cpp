// The program in script mode against its built-in simulator: forecourt lines,
// the simulator's clock, and whole jobs of a technician through the console's
// own buttons, with the answers read back through the console.
#include "e2e/e2e.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <ostream>

namespace vantrel::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

// A job that must run to its end with every expect met, and the texts its
// print lines must have written.
struct Job {
    const char* name;
    std::string script;
    std::vector<std::string> printed;
};

void PrintTo(const Job& job, std::ostream* out) { *out << job.name; }

class SimulatorJob : public ::testing::TestWithParam<Job> {};

TEST_P(SimulatorJob, RunsToItsEndWithEveryExpectMet) {
    const ScriptRun run = RunConsole(GetParam().script);
    ASSERT_EQ(0, run.exitCode) << run.err;
    for (const std::string& text : GetParam().printed) {
        EXPECT_THAT(run.out, HasSubstr(text));
    }
}

std::string Position07(const std::string& state, const std::string& nozzle, const std::string& hose,
                       const std::string& volume, const std::string& amount) {
    return R"(expect InBox "FuelingPosition=07\r\nState=)" + state + R"(\r\nNozzle=)" + nozzle + R"(\r\nHose=)" + hose +
           R"(\r\nMOP=F\r\nLimit=999999\r\nVolume=)" + volume + R"(\r\nAmount=)" + amount +
           R"(\r\nUnitPrice=1.459\r\n")" + "\n";
}

INSTANTIATE_TEST_SUITE_P(
    Jobs, SimulatorJob,
    ::testing::Values(Job{"ANozzleLiftedOnTheForecourtShowsInThePositionInformation",
                          R"vts(
forecourt lift 7 hose 2
click Button7
expect InBox "FuelingPosition=07\r\nState=Idle\r\nNozzle=Up\r\nHose=2\r\nMOP=\r\nLimit=\r\nVolume=0.000\r\nAmount=0.00\r\nUnitPrice=0.000\r\n"
forecourt hang 7
dblclick Button7
expect InBox "FuelingPosition=07\r\nState=Idle\r\nNozzle=Down\r\nHose=0\r\nMOP=\r\nLimit=\r\nVolume=0.000\r\nAmount=0.00\r\nUnitPrice=0.000\r\n"
)vts",
                          {}},
                      Job{"ATankReportIsBusyUntilTheScriptMovesTheClockOn",
                          R"vts(
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
)vts",
                          {R"(DeviceData "Tanks=4\r\nTank=1\r\nProduct=Unleaded\r\nVolume=18500.000\r\n)"}},
                      Job{"ThePriceSignAnswersWhatItWasSent",
                          R"vts(
click OTHERDEVICESBUTTON
click PRICE_SIGN_SEND_PRICES
click PRICE_SIGN_SEND_CONTROL
click PRICE_SIGN_GET_STATUS
expect DeviceData "Status=OK\r\nLine1=001000\r\nLine2=002000\r\nLine3=003000\r\nLine4=004000\r\nLine5=005000\r\nIntensity=M08\r\nUpdates=2\r\n"
)vts",
                          {}},
                      // This car takes 41 litres.
                      Job{"AWholeSaleFromAuthorizationToPayOut",
                          "click Button7\nclick Fillup\nforecourt lift 7 hose 1\nserver time +10\ndblclick Button7\n" +
                              Position07("Fueling", "Up", "1", "6.000", "8.75") +
                              "click Stop\nserver time +30\ndblclick Button7\n" +
                              Position07("Stopped", "Up", "1", "6.000", "8.75") +
                              "click Resume\nserver time +120\ndblclick Button7\n" +
                              Position07("Finished", "Up", "1", "41.000", "59.81") +
                              "forecourt hang 7\nclick PayOutSale\nclick DispenserInfo\nprint InBox\n",
                          {R"(LastSaleHose=1\r\nLastSaleVolume=41.000\r\nLastSaleAmount=59.81\r\n)"}},
                      Job{"QueuesFilledOnTheForecourtAreReadAndClearedFromTheConsole",
                          R"vts(
forecourt card 3 ";4000001234567899=2512?"
forecourt cash 4 "20"
forecourt packet 5 "C\x10\x07"
click QueCounts
expect InBox "CardQue=1\r\nKeyQue=0\r\nCashInQue=1\r\nErrorQue=0\r\nPacketQue=1\r\n"
click CardQue
expect InBox "ReaderPosition=03\r\nCardData=;4000001234567899=2512?\r\n"
click ClearCardEntry
click CardQue
expect InBox ""
click CashIn
expect InBox "ReaderPosition=04\r\nAmount=20.00\r\n"
click PacketQue
expect InBox "ReaderPosition=05\r\nPacketCount=003\r\nPacketData= C 10 7"
click ClearPacketEntry
click QueCounts
expect InBox "CardQue=0\r\nKeyQue=0\r\nCashInQue=1\r\nErrorQue=0\r\nPacketQue=0\r\n"
)vts",
                          {}},
                      Job{"BlocksTheSimulatorCannotActOnAreReadFromTheErrorQueue",
                          R"vts(
click Button7
answer "10"
answer "1"
answer "000500"
answer ok
click Preset
click Resume
click ReadErrorQue
expect InBox "ErrorCount=2\r\nError=Authorize: Hose=10 is not a hose (0 for any, 1 to 8, or a mask M00000101)\r\nError=Resume: position 07 is not stopped (State=Idle)\r\n"
click ClearErrorQue
click ReadErrorQue
expect InBox "ErrorCount=0\r\n"
)vts",
                          {}},
                      // The entry without echo shows stars where the message was.
                      Job{"TheReaderTerminalKeepsWhatTheConsoleSentIt",
                          R"vts(
click Button7
click Display
click Beeper
click KeyEntryNNE
forecourt keys 7 "4321"
click KeyQue
expect InBox "ReaderPosition=07\r\nEntryMode=NumericWithOutEcho\r\nKeyData=4321\r\n"
click PrintHeader
click ReaderInfo
print InBox
)vts",
                          {R"(DisplayLines=1\r\nDisplayLine1=****\r\nEntryMode=NumericWithOutEcho\r\n)",
                           R"(Beeps=3\r\nPrintJobs=1\r\nLastJob=Header\r\n)", R"(Header=-----Header 1-----\r\n)"}}),
    [](const auto& info) { return std::string(info.param.name); });

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
