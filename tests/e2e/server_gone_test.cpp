// When the server's process has gone: the error that says so, read as a
// Visual Basic client reads it.
#include "e2e.h"

#include <gmock/gmock.h>

#include <string>

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

TEST(ServerGone, ANumberOfThePlatformsOwnStaysPlain) {
    const ScriptRun run = RunConsole("server fail SystemVersions 429 \"\"\nclick SystemVersions\n");
    EXPECT_EQ(1, run.exitCode);
    EXPECT_THAT(run.err, HasSubstr("Run-time error 429: "));
    EXPECT_THAT(run.err, Not(HasSubstr("429 (")));
}

}  // namespace
}  // namespace vantrel::testing
