// The start-up measurement hook: the console reports the moment its window
// is first shown, with its resident size, and ends at once with 0.

#include "e2e/e2e.h"

#include <gmock/gmock.h>

#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace vantrel::testing {
namespace {

struct ProgramRun {
    int exitCode = -1;
    std::string out;
};

ProgramRun RunProgram(const std::string& arguments) {
    const std::string command =
        "QT_QPA_PLATFORM=offscreen '" + std::string(VANTREL_TEST_BINARY) + "' " + arguments + " 2>/dev/null </dev/null";
    ProgramRun run;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (!pipe) {
        return run;
    }
    char buffer[256];
    for (std::size_t got; (got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
        run.out.append(buffer, got);
    }
    const int status = ::pclose(pipe);
    run.exitCode = status != -1 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

TEST(ExitWhenShown, ReportsTheFirstShowingWithTheResidentSizeAndEndsWithZero) {
    const ProgramRun run = RunProgram("--exit-when-shown");
    EXPECT_EQ(0, run.exitCode);
    EXPECT_THAT(run.out, ::testing::MatchesRegex("shown [1-9][0-9]* KiB\n"));
}

TEST(ExitWhenShown, IsNamedInTheHelp) {
    const ProgramRun run = RunProgram("--help");
    EXPECT_EQ(0, run.exitCode);
    EXPECT_THAT(run.out, ::testing::HasSubstr("--exit-when-shown"));
}

}  // namespace
}  // namespace vantrel::testing
