#include "e2e/e2e.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
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
    // SET IMAGE reads its file under the C: drive folder: give the tour the
    // sample image there, as the run command does.
    const std::filesystem::path drive = std::filesystem::path(probe.directory) / "drive-c";
    const std::filesystem::path images = drive / "Projects" / "Vantrel" / "VantrelTest Utility";
    std::filesystem::create_directories(images);
    std::filesystem::copy_file(std::string(VANTREL_SOURCE_DIR) + "/examples/FP_blk.hex", images / "FP_blk.hex");
    ::setenv("VANTREL_DRIVE_C", drive.c_str(), 1);
    std::filesystem::current_path(probe.directory);
    const ScriptRun run = RunConsole(script.str());
    ::unsetenv("VANTREL_DRIVE_C");
    std::filesystem::current_path(here);
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_TRUE(std::filesystem::exists(probe.directory + "/vantrel-console.png"));
    EXPECT_TRUE(std::filesystem::exists(probe.directory + "/graphics-display.png"));
    EXPECT_TRUE(std::filesystem::exists(probe.directory + "/test-functions.png"));
}

}  // namespace
}  // namespace vantrel::testing
