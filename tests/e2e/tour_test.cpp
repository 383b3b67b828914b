#include "e2e/e2e.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace vantrel::testing {
namespace {

// The headless tour that the run command shows must keep working as the
// console grows: its parts run as one script, pictures included.
TEST(Tour, RunsToItsEndAndLeavesItsPictures) {
    std::vector<std::filesystem::path> parts;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(VANTREL_SOURCE_DIR) + "/examples/tour")) {
        if (entry.path().extension() == ".vts") {
            parts.push_back(entry.path());
        }
    }
    std::sort(parts.begin(), parts.end());
    ASSERT_FALSE(parts.empty());
    std::ostringstream script;
    for (const auto& part : parts) {
        script << std::ifstream(part).rdbuf() << "\n";
    }
    // Pictures are written relative to the working folder; put them in the
    // run's own folder by running from there.
    const std::string here = std::filesystem::current_path().string();
    const ScriptRun probe = RunConsole("");
    std::filesystem::current_path(probe.directory);
    const ScriptRun run = RunConsole(script.str());
    std::filesystem::current_path(here);
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_TRUE(std::filesystem::exists(probe.directory + "/vantrel-console.png"));
}

}  // namespace
}  // namespace vantrel::testing
