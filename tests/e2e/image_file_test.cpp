// SET IMAGE with every state of its image file, through the program in
// script mode: a file that cannot be opened ends the program through the
// error report before anything is sent; an empty or a very large one is sent
// whole behind the header, with its count.
#include "e2e/reliability.h"
#include "server/trace_json.h"
#include "support/drive_folder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <functional>

namespace vantrel::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr char kPressSetImage[] = "click TEST_FUNCTION_BUTTON\nclick SET_IMAGE_BUTTON\nclick EXIT_BUTTON\n";
constexpr char16_t kImageHeader[] =
    u"<DisplayCommand><SetImageDetailsCommand SequenceNumber=\"0\""
    u"ImageId=\"1\" Filename=\"Banner.png\" Language=\"en\">";

struct Unopenable {
    const char* name;
    std::function<void(const DriveFolder&)> arrange;
    int number;
    const char* description;
};

void PrintTo(const Unopenable& c, std::ostream* out) { *out << c.name; }

class ImageThatCannotBeOpened : public ::testing::TestWithParam<Unopenable> {
protected:
    DriveFolder drive;
};

TEST_P(ImageThatCannotBeOpened, EndsThroughTheReportAndSendsNothing) {
    GetParam().arrange(drive);
    if (IsSkipped()) {
        return;
    }
    const ScriptRun run = RunConsole(kPressSetImage);
    EXPECT_TRUE(EndedThroughTheReport(run, GetParam().number, GetParam().description));
    EXPECT_THAT(Calls(run), Not(::testing::Contains(HasSubstr("PacketQueOutput"))));
}

void MakeUnreadable(const DriveFolder& drive) {
    drive.WriteImage("0A1B");
    fs::permissions(drive.ImageFile(), fs::perms::none);
    // Root, and any process that may override file permissions, reads the
    // file all the same: the case then says so instead of passing.
    if (std::ifstream(drive.ImageFile()).is_open()) {
        GTEST_SKIP() << "this process reads a file without read permission (running as root?); the folder "
                        "in the file's place covers the access error";
    }
}

INSTANTIATE_TEST_SUITE_P(
    EveryWay, ImageThatCannotBeOpened,
    ::testing::Values(Unopenable{"NoFolder", [](const DriveFolder&) {}, 53, "File not found"},
                      Unopenable{"NoFile",
                                 [](const DriveFolder& drive) { fs::create_directories(drive.ImageFolder()); }, 53,
                                 "File not found"},
                      Unopenable{"Unreadable", MakeUnreadable, 75, "Path/File access error"},
                      Unopenable{"FolderInItsPlace",
                                 [](const DriveFolder& drive) { fs::create_directories(drive.ImageFile()); }, 75,
                                 "Path/File access error"}),
    [](const auto& info) { return std::string(info.param.name); });

struct Content {
    const char* name;
    std::size_t length;
    const char16_t* count;
};

void PrintTo(const Content& c, std::ostream* out) { *out << c.name; }

class ImageSentWhole : public ::testing::TestWithParam<Content> {
protected:
    DriveFolder drive;
};

TEST_P(ImageSentWhole, BehindTheHeaderWithItsCountAndNothingAfter) {
    const std::string content = HexImageText(GetParam().length);
    drive.WriteImage(content);
    const ScriptRun run = RunConsole(kPressSetImage);
    ASSERT_TRUE(EndedByItself(run));
    EXPECT_EQ(0, run.exitCode) << run.err;
    const Text packet = u"ReaderPosition=01\r\nPacketCount=" + Text(GetParam().count) + u"\r\nPacketData=" +
                        kImageHeader + FromBytes(content);
    const std::vector<std::string> calls = Calls(run);
    ASSERT_EQ(1u, calls.size());
    EXPECT_TRUE(calls[0] == R"({"op":"put","member":"PacketQueOutput","value":{"text":)" + JsonString(packet) + "}}")
        << calls[0].substr(0, 300);
    RemoveRunFolder(run);
}

INSTANTIATE_TEST_SUITE_P(Sizes, ImageSentWhole,
                         ::testing::Values(Content{"Empty", 0, u"00106"},
                                           Content{"ThirtyTwoMegabytes", std::size_t{32} << 20, u"33554538"}),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace vantrel::testing
