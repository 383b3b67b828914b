#include "process_launch.h"

#include <gtest/gtest.h>

#include <chrono>

namespace vantrel::bench {
namespace {

Launch Shell(const std::string& script, double timeout = 20) {
    return LaunchUntilShown({"/bin/sh", "-c", script}, timeout);
}

TEST(LaunchUntilShown, TheLineWithItsSizeAndAQuietEndCount) {
    const Launch launch = Shell("printf 'starting\\nshown 2048 KiB\\n'; exit 0");
    EXPECT_TRUE(launch.shown);
    EXPECT_EQ(0, launch.exitCode);
    EXPECT_EQ("", launch.problem);
    EXPECT_GT(launch.secondsToShown, 0);
    EXPECT_EQ(2048.0 * 1024, launch.residentBytes);
}

TEST(LaunchUntilShown, TheTimeIsTakenAtTheLineNotAtTheEnd) {
    const Launch launch = Shell("printf 'shown 1 KiB\\n'; sleep 1");
    ASSERT_EQ("", launch.problem);
    EXPECT_LT(launch.secondsToShown, 0.9);
}

TEST(LaunchUntilShown, EveryOtherOutcomeIsAProblemNamed) {
    const struct {
        const char* script;
        const char* problem;
    } cases[] = {
        {"exit 3", "ended (exit code 3) without showing"},
        {"printf 'shown 1 KiB\\n'; exit 4", "showed but ended with exit code 4"},
        {"printf 'shown\\n'; exit 0", "showed without its resident size"},
        {"printf 'shown 12 MiB\\n'; exit 0", "showed without its resident size"},
        {"printf 'shownly 1 KiB\\n'; exit 0", "without showing"},
        {"printf 'shown 1 KiB'; exit 0", "without showing"},  // no end of line
        {"kill -9 $$", "ended (exit code -1) without showing"},
    };
    for (const auto& c : cases) {
        const Launch launch = Shell(c.script);
        EXPECT_NE(std::string::npos, launch.problem.find(c.problem)) << c.script << ": " << launch.problem;
    }
}

TEST(LaunchUntilShown, AProgramThatHangsIsKilledAtTheTimeOut) {
    const auto start = std::chrono::steady_clock::now();
    const Launch launch = Shell("printf 'shown\\n'; exec sleep 30", 0.5);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    EXPECT_TRUE(launch.shown);
    EXPECT_EQ(-1, launch.exitCode);
    EXPECT_NE(std::string::npos, launch.problem.find("did not end within")) << launch.problem;
}

TEST(LaunchUntilShown, AProgramThatCannotStartIsAProblem) {
    const Launch launch = LaunchUntilShown({"/nonexistent/vantrel-program"}, 5);
    EXPECT_FALSE(launch.shown);
    EXPECT_NE(std::string::npos, launch.problem.find("/nonexistent/vantrel-program")) << launch.problem;
}

}  // namespace
}  // namespace vantrel::bench
