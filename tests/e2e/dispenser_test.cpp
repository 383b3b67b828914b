// The dispenser buttons in the real window, driven by script mode: what the
// technician sees in the boxes and what the server receives, in order.
#include "e2e/e2e.h"

#include <gmock/gmock.h>

namespace vantrel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// The trace without the creation and the position selector's own requests:
// the boxes and server calls of the dispenser buttons, in order.
std::vector<std::string> Steps(const ScriptRun& run) {
    std::vector<std::string> steps;
    for (const std::string& line : run.trace) {
        if (line.rfind(R"j({"op":"create")j", 0) != 0 && line.find("FuelingPositionInformation") == std::string::npos) {
            steps.push_back(line);
        }
    }
    return steps;
}

TEST(DispenserScript, FixedButtonsSendTheirBlocksAndEchoThem) {
    const ScriptRun run = RunConsole(R"vts(
click Button7
click Fillup
expect TextBox "<Object>.Authorize = (data)"
expect InBox "FuelingPosition=07\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n\0"
click PresetMOP1
expect TextBox "<Object>.Authorize (data)"
click PresetMOP2
expect InBox "FuelingPosition=07\r\nHose=0\r\nMOP=2\r\nLimit=000500\r\n\0"
click Price2
expect TextBox "<Object>.Price = (data)"
expect InBox "FuelingPosition=07\r\nSlowdownPoint=15\r\nHose=1\r\nTier1=1111\r\nTier2=1111\r\nHose=2\r\nTier1=2222\r\nTier2=2222\r\n\0"
click Price3Blend
click Stop
expect TextBox "<Object>.Stop = (07)"
expect InBox " "
click STOP_ALL
expect TextBox "<Object>.Stop = (0)"
click Resume
expect TextBox "<Object>.Resume = (07)"
click Deauthorize
expect TextBox "<Object>.DeAuthorize = (07)"
click PayOutSale
expect TextBox "<Object>.PayOutSale = (07)"
expect InBox " "
server answer DispenserInformation "Model=7\r\n"
click DispenserInfo
expect TextBox "(return data)=<Object>.DispenserInformation (passed data)"
expect InBox "Model=7\r\n"
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_THAT(
        Steps(run),
        ElementsAre(
            R"j({"op":"put","member":"Authorize","value":{"text":"FuelingPosition=07\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n\u0000"}})j",
            R"j({"op":"put","member":"Authorize","value":{"text":"FuelingPosition=07\r\nHose=0\r\nMOP=1\r\nLimit=000500\r\n\u0000"}})j",
            R"j({"op":"put","member":"Authorize","value":{"text":"FuelingPosition=07\r\nHose=0\r\nMOP=2\r\nLimit=000500\r\n\u0000"}})j",
            R"j({"op":"put","member":"Price","value":{"text":"FuelingPosition=07\r\nSlowdownPoint=15\r\nHose=1\r\nTier1=1111\r\nTier2=1111\r\nHose=2\r\nTier1=2222\r\nTier2=2222\r\n\u0000"}})j",
            R"j({"op":"put","member":"Price","value":{"text":"FuelingPosition=07\r\nSlowdownPoint=15\r\nHose=1\r\nTier1=1111\r\nTier2=1111\r\nBlend=100\r\nHose=2\r\nTier1=2222\r\nTier2=2222\r\nBlend=050\r\nHose=3\r\nTier1=3333\r\nTier2=3333\r\nBlend=000\r\n\u0000"}})j",
            R"j({"op":"put","member":"Stop","value":{"text":"07"}})j",
            R"j({"op":"put","member":"Stop","value":{"text":"0"}})j",
            R"j({"op":"put","member":"Resume","value":{"text":"07"}})j",
            R"j({"op":"put","member":"Deauthorize","value":{"text":"07"}})j",
            R"j({"op":"put","member":"PayOutSale","value":{"text":"07"}})j",
            R"j({"op":"call","member":"DispenserInformation","arg":{"i2":7},"byref":true,"result":{"text":"Model=7\r\n"}})j"));
}

TEST(DispenserScript, AuthPresetAsksChecksThenShowsTheBlockBeforeSending) {
    const ScriptRun run = RunConsole(R"vts(
click Button12
# a hose that sorts after "8" stops at once
answer "9"
answer ok
click Preset
expect TextBox "<returned data>=<Object>.FuelingPositionInformation(passed data)"
# an empty limit is a cancel
answer "10"
answer "1"
answer cancel
answer ok
click Preset
# "10" sorts before "8" and goes out as typed
answer "10"
answer "1"
answer "12"
answer ok
click Preset
expect TextBox "<Object>.Authorize (data)"
expect InBox "FuelingPosition=12\r\nHose=10\r\nMOP=1\r\nLimit=12\r\n\0"
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_THAT(
        Steps(run),
        ElementsAre(
            R"j({"op":"inputbox","prompt":"Enter Hose Number (0 - 8)","title":"Hose Input","answer":"9"})j",
            R"j({"op":"msgbox","text":"You entered an Invald Hose Number","title":"VantrelTest","buttons":"ok","answer":"ok"})j",
            R"j({"op":"inputbox","prompt":"Enter Hose Number (0 - 8)","title":"Hose Input","answer":"10"})j",
            R"j({"op":"inputbox","prompt":"Enter MOP (1, 2, F)","title":"MOP Input","answer":"1"})j",
            R"j({"op":"inputbox","prompt":"Enter Limit - Must be 6 digits","title":"Preset amount Input","answer":""})j",
            R"j({"op":"msgbox","text":"You entered no data or pressed cancel","title":"VantrelTest","buttons":"ok","answer":"ok"})j",
            R"j({"op":"inputbox","prompt":"Enter Hose Number (0 - 8)","title":"Hose Input","answer":"10"})j",
            R"j({"op":"inputbox","prompt":"Enter MOP (1, 2, F)","title":"MOP Input","answer":"1"})j",
            R"j({"op":"inputbox","prompt":"Enter Limit - Must be 6 digits","title":"Preset amount Input","answer":"12"})j",
            R"j({"op":"msgbox","text":"FuelingPosition=12\r\nHose=10\r\nMOP=1\r\nLimit=12\r\n\u0000","title":"VantrelTest","buttons":"ok","answer":"ok"})j",
            R"j({"op":"put","member":"Authorize","value":{"text":"FuelingPosition=12\r\nHose=10\r\nMOP=1\r\nLimit=12\r\n\u0000"}})j"));
}

TEST(DispenserScript, PriceEntryAsksAgainAboveEightAndSkipsACancelledHose) {
    const ScriptRun run = RunConsole(R"vts(
click Button3
answer "25"
answer "9"
answer "2"
answer cancel
answer ok
answer "1.10"
answer "1.20"
click Price
expect TextBox "<Object>.Price = (data)"
expect InBox "FuelingPosition=03\r\nSlowdownPoint=25\r\nHose=2\r\nTier1=1.10\r\nTier2=1.20\r\n\0"
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_THAT(
        Steps(run),
        ElementsAre(
            R"j({"op":"inputbox","prompt":"Enter Slow Down Point","title":"Slow Down Point","answer":"25"})j",
            R"j({"op":"inputbox","prompt":"Enter number of hoses","title":"Number of Hoses","answer":"9"})j",
            R"j({"op":"inputbox","prompt":"Enter number of hoses","title":"Number of Hoses","answer":"2"})j",
            R"j({"op":"inputbox","prompt":"Enter Tier1 price","title":"Hose = 1","answer":""})j",
            R"j({"op":"msgbox","text":"You entered no data or pressed cancel","title":"VantrelTest","buttons":"ok","answer":"ok"})j",
            R"j({"op":"inputbox","prompt":"Enter Tier1 price","title":"Hose = 2","answer":"1.10"})j",
            R"j({"op":"inputbox","prompt":"Enter Tier2 price","title":"Hose = 2","answer":"1.20"})j",
            R"j({"op":"put","member":"Price","value":{"text":"FuelingPosition=03\r\nSlowdownPoint=25\r\nHose=2\r\nTier1=1.10\r\nTier2=1.20\r\n\u0000"}})j"));
}

TEST(DispenserScript, ACountThatIsNoNumberEndsThroughTheErrorReport) {
    const ScriptRun run = RunConsole(R"vts(
answer "15"
answer "two"
click Price
expect TextBox "never reached"
)vts");
    EXPECT_EQ(1, run.exitCode);
    EXPECT_THAT(run.err, HasSubstr("Run-time error 13: Type mismatch"));
    EXPECT_TRUE(Calls(run).empty());
    EXPECT_EQ(R"j({"op":"report","number":13,"description":"Type mismatch"})j", run.trace.back());
}

}  // namespace
}  // namespace vantrel::testing
