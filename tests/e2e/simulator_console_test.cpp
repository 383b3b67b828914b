// Whole jobs of a technician against the simulator, through the console's
// own buttons: a sale from authorization to pay-out, the queues, rejected
// blocks in the error queue, and the reader terminal.
#include "e2e/e2e.h"

#include <gmock/gmock.h>

namespace vantrel::testing {
namespace {

using ::testing::HasSubstr;

std::string Position07(const std::string& state, const std::string& nozzle, const std::string& hose,
                       const std::string& volume, const std::string& amount) {
    return R"(expect InBox "FuelingPosition=07\r\nState=)" + state + R"(\r\nNozzle=)" + nozzle + R"(\r\nHose=)" + hose +
           R"(\r\nMOP=F\r\nLimit=999999\r\nVolume=)" + volume + R"(\r\nAmount=)" + amount +
           R"(\r\nUnitPrice=1.459\r\n")" + "\n";
}

TEST(SimulatorConsole, AWholeSaleFromAuthorizationToPayOut) {
    const ScriptRun run = RunConsole(
        "click Button7\nclick Fillup\nforecourt lift 7 hose 1\nserver time +10\n"
        "dblclick Button7\n" +
        Position07("Fueling", "Up", "1", "6.000", "8.75") + "click Stop\nserver time +30\ndblclick Button7\n" +
        Position07("Stopped", "Up", "1", "6.000", "8.75") +
        // This car takes 41 litres.
        "click Resume\nserver time +120\ndblclick Button7\n" + Position07("Finished", "Up", "1", "41.000", "59.81") +
        "forecourt hang 7\nclick PayOutSale\nclick DispenserInfo\nprint InBox\n");
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_THAT(run.out, HasSubstr(R"(LastSaleHose=1\r\nLastSaleVolume=41.000\r\nLastSaleAmount=59.81\r\n)"));
}

TEST(SimulatorConsole, QueuesFilledOnTheForecourtAreReadAndClearedFromTheConsole) {
    const ScriptRun run = RunConsole(R"vts(
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
)vts");
    EXPECT_EQ(0, run.exitCode) << run.err;
}

TEST(SimulatorConsole, BlocksTheSimulatorCannotActOnAreReadFromTheErrorQueue) {
    const ScriptRun run = RunConsole(R"vts(
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
)vts");
    EXPECT_EQ(0, run.exitCode) << run.err;
}

TEST(SimulatorConsole, TheReaderTerminalKeepsWhatTheConsoleSentIt) {
    const ScriptRun run = RunConsole(R"vts(
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
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    // The entry without echo shows stars where the message was.
    EXPECT_THAT(run.out, HasSubstr(R"(DisplayLines=1\r\nDisplayLine1=****\r\nEntryMode=NumericWithOutEcho\r\n)"));
    EXPECT_THAT(run.out, HasSubstr(R"(Beeps=3\r\nPrintJobs=1\r\nLastJob=Header\r\n)"));
    EXPECT_THAT(run.out, HasSubstr(R"(Header=-----Header 1-----\r\n)"));
}

}  // namespace
}  // namespace vantrel::testing
