// The graphics and test functions windows, and SET IMAGE's file.
#include "graphics/file_table.h"
#include "graphics/graphics.h"
#include "graphics/local_path.h"
#include "graphics/test_functions.h"

#include "support/drive_folder.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <map>
#include <ostream>
#include <string>

namespace vantrel {
namespace {

namespace fs = std::filesystem;
using testing::TestConsole;

const Text NUL(1, u'\0');
const Text kImageHeader =
    u"<DisplayCommand><SetImageDetailsCommand SequenceNumber=\"0\"ImageId=\"1\" "
    u"Filename=\"Banner.png\" Language=\"en\">";

// SET IMAGE leaves every box and CommandData as they were.
void ExpectNothingElseChanged(TestConsole& test) {
    EXPECT_TEXT(u"Function Box", test.console().FunctionBox());
    EXPECT_TEXT(u"", test.console().DataBox());
    EXPECT_TRUE(test.console().CommandData.is(Variant::Kind::Empty));
    EXPECT_TRUE(test.report().errors.empty());
}

// A drive folder of its own for each test, holding the image file when a
// test writes one.
class ImageFile : public ::testing::Test {
protected:
    fs::path File() const { return drive.ImageFile(); }
    void Write(const std::string& bytes) { drive.WriteImage(bytes); }
    void PressSetImage() { test.Click("SET_IMAGE_BUTTON", kTestFunctionForm); }
    const Text& Sent(std::size_t call = 0) { return test.calls().at(call).text(); }

    testing::DriveFolder drive;
    TestConsole test;
};

struct CountCase {
    std::size_t length;
    const char16_t* count;
};

void PrintTo(const CountCase& c, std::ostream* out) { *out << c.length << " characters"; }

class ImageCount : public ImageFile, public ::testing::WithParamInterface<CountCase> {};

TEST_P(ImageCount, SendsTheWholeFileBehindTheHeaderAndNothingAfter) {
    const std::string content = testing::HexImageText(GetParam().length);
    Write(content);
    test.Click("Button32");
    PressSetImage();
    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ("PacketQueOutput", test.calls()[0].member);
    const Text expected = Text(u"ReaderPosition=32\r\nPacketCount=") + GetParam().count + u"\r\nPacketData=" +
                          kImageHeader + FromBytes(content);
    EXPECT_TEXT(expected, Sent());
    ExpectNothingElseChanged(test);
}

INSTANTIATE_TEST_SUITE_P(Lengths, ImageCount,
                         ::testing::Values(CountCase{0, u"00106"}, CountCase{1, u"00107"}, CountCase{1000, u"01106"},
                                           CountCase{99893, u"99999"}, CountCase{99894, u"100000"},
                                           CountCase{250000, u"250106"}),
                         [](const auto& info) { return "length_" + std::to_string(info.param.length); });

TEST_F(ImageFile, EveryByteBecomesOneCharacterLineBreaksAndHighBytesIncluded) {
    // NUL and SUB are data too: neither ends the file.
    static constexpr char kBytes[] = "0A1B\r\n\xE9\x80\xFF\x7F\r\n\x1A\0end\r\n";
    const std::string content(kBytes, sizeof kBytes - 1);
    Write(content);
    PressSetImage();
    const Text data = Text(u"0A1B\r\n\u00E9\u0080\u00FF\u007F\r\n\x1A") + NUL + u"end\r\n";
    ASSERT_EQ(content.size(), data.size());
    EXPECT_TEXT(u"ReaderPosition=01\r\nPacketCount=00125\r\nPacketData=" + kImageHeader + data, Sent());
    EXPECT_EQ(u'\n', Sent().back());
}

TEST_F(ImageFile, EachPressReadsTheFileAgainAndKeepsItsHandle) {
    Write("AAAA");
    PressSetImage();
    Write("BBBBBB");
    PressSetImage();
    PressSetImage();
    ASSERT_EQ(3u, test.calls().size());
    EXPECT_TEXT(u"AAAA", Sent(0).substr(Sent(0).size() - 4));
    EXPECT_TEXT(u"PacketCount=00112", Sent(1).substr(19, 17));
    EXPECT_TEXT(u"BBBBBB", Sent(2).substr(Sent(2).size() - 6));
#if defined(__linux__)
    // The system's own view: three descriptors still open on the file.
    int open = 0;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code error;
        if (fs::read_symlink(entry.path(), error) == File()) {
            ++open;
        }
    }
    EXPECT_EQ(3, open);
#endif
}

TEST_F(ImageFile, TheFileTableRunsOutAfter255Files) {
    Write("x");
    FileTable files;
    for (int number = 1; number <= FileTable::kMaxFiles; ++number) {
        ASSERT_EQ(number, files.OpenForInput(File()));
    }
    try {
        files.OpenForInput(File());
        ADD_FAILURE() << "a 256th file opened";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(67, error.number());
    }
    EXPECT_EQ("x", files.ReadToEnd(FileTable::kMaxFiles));
    EXPECT_EQ("", files.ReadToEnd(FileTable::kMaxFiles));  // already at the end
    EXPECT_THROW(files.ReadToEnd(0), RuntimeError);
}

TEST(ImagePacket, TheCountOverflowsOnlyPastThirtyTwoBits) {
    constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(106, ImagePacketCount(0));
    EXPECT_EQ(kMax, ImagePacketCount(static_cast<std::uint64_t>(kMax) - 106));
    try {
        ImagePacketCount(static_cast<std::uint64_t>(kMax) - 105);
        ADD_FAILURE() << "no overflow";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(6, error.number());
    }
}

// Where the Windows path of the image file lies on this system.
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
        // No system data folder holds the file, whatever is installed here.
        if (name == "XDG_DATA_DIRS") {
            return "/nonexistent-system-data";
        }
        const auto found = c.environment.find(name);
        return found == c.environment.end() ? std::nullopt : std::optional(found->second);
    };
    EXPECT_EQ(std::filesystem::path(c.expected), MapWindowsPath(c.windowsPath, lookup));
}

// An installed console finds the sample image in the system's data folders
// when the user's drive lacks it; the user's own file, or a drive named
// outright, comes first.
TEST(WindowsPath, AFileTheUsersDriveLacksComesFromTheSystemsDataFolders) {
    const std::filesystem::path root = ::testing::TempDir() + "vantrel-data-folders";
    std::filesystem::remove_all(root);
    const std::filesystem::path installed = root / "second/vantrel-test/c/Projects/Vantrel/VantrelTest Utility";
    std::filesystem::create_directories(installed);
    std::ofstream(installed / "FP_blk.hex") << "FF";
    std::map<std::string, std::string> environment = {
        {"HOME", (root / "home").string()},
        {"XDG_DATA_DIRS", (root / "first").string() + ":relative:" + (root / "second").string()},
    };
    const auto lookup = [&](const std::string& name) -> std::optional<std::string> {
        const auto found = environment.find(name);
        return found == environment.end() ? std::nullopt : std::optional(found->second);
    };
    EXPECT_EQ(installed / "FP_blk.hex", MapWindowsPath(kImageFile, lookup));

    const std::filesystem::path own = root / "home/.local/share/vantrel-test/c/Projects/Vantrel/VantrelTest Utility";
    std::filesystem::create_directories(own);
    std::ofstream(own / "FP_blk.hex") << "00";
    EXPECT_EQ(own / "FP_blk.hex", MapWindowsPath(kImageFile, lookup));

    environment["VANTREL_DRIVE_C"] = (root / "named").string();
    EXPECT_EQ(root / "named/Projects/Vantrel/VantrelTest Utility/FP_blk.hex", MapWindowsPath(kImageFile, lookup));
    std::filesystem::remove_all(root);
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
