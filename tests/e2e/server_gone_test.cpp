// When the server's process has gone: the error that says so, read as a
// Visual Basic client reads it, and the way back to a new server.
#include "e2e.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace vantrel::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

// The RPC "server unavailable" HRESULT, 0x800706BA, as the signed number a
// failing call carries.
const std::string kUnavailable = "-2147023174";

TEST(ServerGone, AnHresultNumberIsReportedWithItsCodeBesideIt) {
    const ScriptRun run = RunConsole("server fail SystemVersions " + kUnavailable +
                                     " \"Automation error: The RPC server is unavailable.\"\nclick SystemVersions\n");
    EXPECT_EQ(1, run.exitCode);
    EXPECT_THAT(run.err, HasSubstr("Run-time error -2147023174 (800706ba): Automation error: The RPC server is "
                                   "unavailable.\n"));
    ASSERT_FALSE(run.trace.empty());
    EXPECT_EQ(
        R"({"op":"report","number":-2147023174,"description":"Automation error: The RPC server is unavailable."})",
        run.trace.back());
}

// Each line of the trace by what it is: "create", "call M ok", "call M
// gone", "report N", read from the JSON text as it stands.
std::vector<std::string> Outline(const ScriptRun& run) {
    std::vector<std::string> outline;
    for (const std::string& line : run.trace) {
        if (line == R"({"op":"create","progid":"Vantrel.Application"})") {
            outline.push_back("create");
        } else if (line.starts_with(R"({"op":"call","member":"SystemVersions",)")) {
            outline.push_back(line.find(R"("error":{"number":-2147023174,)") != std::string::npos ? "call gone"
                              : line.find(R"("result":{"text":)") != std::string::npos            ? "call ok"
                                                                                                  : line);
        } else if (line.starts_with(R"({"op":"report","number":-2147023174,)")) {
            outline.push_back("report gone");
        } else {
            outline.push_back(line);
        }
    }
    return outline;
}

const std::string kReconnect = "menu \"Tools\" \"Reconnect to the server\"\n";

TEST(ServerGone, WithKeepGoingOneReportSaysSoAndAReconnectCarriesTheRestToANewServer) {
    const ScriptRun run = RunConsole("click SystemVersions\nserver die\nclick SystemVersions\nclick SystemVersions\n" +
                                         kReconnect + "click SystemVersions\n",
                                     {"--keep-going"});
    EXPECT_EQ(1, run.exitCode) << run.err;  // errors were reported on the way
    EXPECT_EQ((std::vector<std::string>{"create", "call ok", "call gone", "report gone", "call gone", "report gone",
                                        "create", "call ok"}),
              Outline(run));
    // One report on standard error, with the way back; the second failed
    // call is in the trace only.
    const std::string reported = "Run-time error -2147023174 (800706ba): ";
    ASSERT_THAT(run.err, HasSubstr(reported));
    EXPECT_EQ(run.err.find(reported), run.err.rfind(reported)) << run.err;
    EXPECT_THAT(run.err, HasSubstr("The server has gone. Tools > Reconnect to the server creates it again"));
}

TEST(ServerGone, AServerThatGoesAgainAfterAReconnectIsReportedAgain) {
    const ScriptRun run = RunConsole(
        "server die\nclick SystemVersions\n" + kReconnect + "server die\nclick SystemVersions\n", {"--keep-going"});
    EXPECT_EQ(1, run.exitCode) << run.err;
    const std::string advice = "The server has gone.";
    ASSERT_THAT(run.err, HasSubstr(advice));
    EXPECT_NE(run.err.find(advice), run.err.rfind(advice)) << run.err;
}

TEST(ServerGone, WithoutKeepGoingTheFirstFailedCallEndsTheRun) {
    const ScriptRun run = RunConsole("server die\nclick SystemVersions\nclick SystemVersions\n");
    EXPECT_EQ(1, run.exitCode);
    EXPECT_EQ((std::vector<std::string>{"create", "call gone", "report gone"}), Outline(run));
    EXPECT_THAT(run.err, Not(HasSubstr("Reconnect")));
}

TEST(ServerGone, WithoutKeepGoingTheReconnectEntrySaysWhatItNeedsAndCreatesNothing) {
    const ScriptRun run = RunConsole("answer ok\n" + kReconnect + "click SystemVersions\n");
    EXPECT_EQ(0, run.exitCode) << run.err;
    ASSERT_EQ(3u, run.trace.size());
    EXPECT_EQ(R"({"op":"msgbox","text":"Reconnecting needs Tools > Keep going after run-time errors: without it, the )"
              R"(first call that fails ends the console.","title":"VantrelTest","buttons":"ok","answer":"ok"})",
              run.trace[1]);
    EXPECT_EQ("call ok", Outline(run)[2]);
}

}  // namespace
}  // namespace vantrel::testing
