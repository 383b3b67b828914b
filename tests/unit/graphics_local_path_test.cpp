#include "graphics/local_path.h"
#include "graphics/test_functions.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace vantrel {
namespace {

struct PathCase {
    const char* title;
    std::string windowsPath;
    std::map<std::string, std::string> environment;
    std::string expected;
};

class WindowsPath : public ::testing::TestWithParam<PathCase> {};

TEST_P(WindowsPath, MapsTheDriveToItsFolder) {
    const PathCase& c = GetParam();
    const auto lookup = [&](const std::string& name) -> std::optional<std::string> {
        const auto found = c.environment.find(name);
        return found == c.environment.end() ? std::nullopt : std::optional(found->second);
    };
    EXPECT_EQ(std::filesystem::path(c.expected), MapWindowsPath(c.windowsPath, lookup));
}

const std::string kImage(kImageFile);
const std::string kBelow = "/Projects/Vantrel/VantrelTest Utility/FP_blk.hex";

INSTANTIATE_TEST_SUITE_P(
    Cases, WindowsPath,
    ::testing::Values(
        PathCase{"moved", kImage, {{"VANTREL_DRIVE_C", "/srv/c"}, {"HOME", "/home/t"}}, "/srv/c" + kBelow},
        PathCase{"xdg", kImage, {{"XDG_DATA_HOME", "/data"}, {"HOME", "/home/t"}}, "/data/vantrel-test/c" + kBelow},
        PathCase{"home", kImage, {{"HOME", "/home/t"}}, "/home/t/.local/share/vantrel-test/c" + kBelow},
        PathCase{"empty_means_unset",
                 kImage,
                 {{"VANTREL_DRIVE_C", ""}, {"XDG_DATA_HOME", ""}, {"HOME", "/home/t"}},
                 "/home/t/.local/share/vantrel-test/c" + kBelow},
        PathCase{"relative_xdg_ignored",
                 kImage,
                 {{"XDG_DATA_HOME", "data"}, {"HOME", "/home/t"}},
                 "/home/t/.local/share/vantrel-test/c" + kBelow},
        PathCase{"nothing_set", kImage, {}, "vantrel-test/c" + kBelow},
        PathCase{"upper_case_drive", "C:\\x\\y.txt", {{"VANTREL_DRIVE_C", "/srv/c"}}, "/srv/c/x/y.txt"},
        PathCase{"other_drive",
                 "d:\\logs\\a.log",
                 {{"VANTREL_DRIVE_C", "/srv/c"}, {"HOME", "/h"}},
                 "/h/.local/share/vantrel-test/d/logs/a.log"},
        PathCase{"other_drive_moved", "d:\\a", {{"VANTREL_DRIVE_D", "/mnt/d"}}, "/mnt/d/a"},
        PathCase{"doubled_backslashes", "c:\\\\a\\\\b\\", {{"VANTREL_DRIVE_C", "/srv/c"}}, "/srv/c/a/b"},
        PathCase{"no_drive", "rel\\file.hex", {{"VANTREL_DRIVE_C", "/srv/c"}}, "rel/file.hex"}),
    [](const auto& info) { return std::string(info.param.title); });

}  // namespace
}  // namespace vantrel
