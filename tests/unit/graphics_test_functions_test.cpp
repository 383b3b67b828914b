#include "graphics/file_table.h"
#include "graphics/graphics.h"
#include "graphics/test_functions.h"
#include "server/command_block.h"

#include "support/drive_folder.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <fstream>
#include <limits>
#include <ostream>
#include <string>

namespace vantrel {
namespace {

namespace fs = std::filesystem;
using testing::RecordedCall;
using testing::TestConsole;

const Text ESC = u"\x1b";
const Text SUB = u"\x1a";
const Text NUL(1, u'\0');

const Text kPrompt =
    u"<DisplaySecurePromptCommand SequenceNumber=\"0\" PromptId=\"3\" Language=\"en\" "
    u"SecurityLevel=\"Encrypted\" MaxLength=\"4\" AutoTerminate=\"true\" Hidden=\"false\" "
    u"PINSupportData=\"5A3C19E07B42D68F\"/>";
const Text kImageHeader =
    u"<DisplayCommand><SetImageDetailsCommand SequenceNumber=\"0\"ImageId=\"1\" "
    u"Filename=\"Banner.png\" Language=\"en\">";

// The commands of the test functions window leave every box, CommandData
// and the window itself as they were.
void ExpectNothingElseChanged(TestConsole& test) {
    EXPECT_TEXT(u"Function Box", test.console().FunctionBox());
    EXPECT_TEXT(u"", test.console().DataBox());
    EXPECT_TRUE(test.console().CommandData.is(Variant::Kind::Empty));
    EXPECT_TRUE(test.windows().hidden.empty());
    EXPECT_TRUE(test.report().errors.empty());
}

class TestFunctionAt : public ::testing::TestWithParam<int> {
protected:
    void Press(const char* button) {
        test.Click("Button" + std::to_string(GetParam()));
        test.Click("TEST_FUNCTION_BUTTON");
        test.Click(button, kTestFunctionForm);
    }
    Text Position() const { return PositionText(GetParam()); }
    TestConsole test;
};

TEST_P(TestFunctionAt, SecurePromptGoesOutAsAPacketOfItsOwnLength) {
    ASSERT_EQ(185u, kPrompt.size());
    Press("iXCAT_DES_TEST");
    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ(RecordedCall::Kind::Put, test.calls()[0].kind);
    EXPECT_EQ("PacketQueOutput", test.calls()[0].member);
    EXPECT_TEXT(u"ReaderPosition=" + Position() + u"\r\nPacketCount=185\r\nPacketData=" + kPrompt + u"\r\n" + NUL,
                test.calls()[0].text());
    ExpectNothingElseChanged(test);
}

TEST_P(TestFunctionAt, SpecialTestsCentresTheLongLineInCourier) {
    Press("SecialTests");
    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ(RecordedCall::Kind::Put, test.calls()[0].kind);
    EXPECT_EQ("DisplayData", test.calls()[0].member);
    EXPECT_TEXT(u"ReaderPosition=" + Position() + u"\r\nMessage=" + ESC + u"G" + ESC + SUB + u"000" + ESC + u"A22" +
                    ESC + u"F\"Courier New\"14" + u"Center this very very long xxxxxxxxx text line\r\n" + NUL,
                test.calls()[0].text());
    ExpectNothingElseChanged(test);
}

INSTANTIATE_TEST_SUITE_P(Positions, TestFunctionAt, ::testing::Values(1, 32));

TEST(TestFunctions, ExitOnlyHidesTheWindow) {
    TestConsole test;
    test.Click("TEST_FUNCTION_BUTTON");
    test.Click("EXIT_BUTTON", kTestFunctionForm);
    EXPECT_EQ(std::vector<std::string>{kTestFunctionForm}, test.windows().shown);
    EXPECT_EQ(std::vector<std::string>{kTestFunctionForm}, test.windows().hidden);
    EXPECT_TRUE(test.calls().empty());
}

// A drive folder of its own for each test, holding the image file when a
// test writes one.
class ImageFile : public ::testing::Test {
protected:
    fs::path Folder() const { return drive.ImageFolder(); }
    fs::path File() const { return drive.ImageFile(); }
    void Write(const std::string& bytes) { drive.WriteImage(bytes); }
    void PressSetImage() { test.Click("SET_IMAGE_BUTTON", kTestFunctionForm); }
    const Text& Sent(std::size_t call = 0) { return test.calls().at(call).text(); }

    testing::DriveFolder drive;
    TestConsole test;
};

// Hexadecimal text in lines of 64 digits with CR LF, as the image files are.
std::string HexText(std::size_t length) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (std::size_t i = 0; text.size() < length; ++i) {
        text.push_back(i % 66 == 64 ? '\r' : i % 66 == 65 ? '\n' : kDigits[(i * 7) % 16]);
    }
    return text;
}

struct CountCase {
    std::size_t length;
    const char16_t* count;
};

void PrintTo(const CountCase& c, std::ostream* out) { *out << c.length << " characters"; }

class ImageCount : public ImageFile, public ::testing::WithParamInterface<CountCase> {};

TEST_P(ImageCount, SendsTheWholeFileBehindTheHeaderAndNothingAfter) {
    const std::string content = HexText(GetParam().length);
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

// A file that cannot be read ends the command through the report before
// anything is sent.
TEST_F(ImageFile, AFileThatCannotBeOpenedEndsThroughTheReport) {
    struct Case {
        const char* title;
        std::function<void()> arrange;
        int error;
    };
    for (const Case& c : {
             Case{"no drive folder", [] {}, 53},
             Case{"no file", [&] { fs::create_directories(Folder()); }, 53},
             Case{"a folder in its place", [&] { fs::create_directories(File()); }, 75},
         }) {
        TestConsole fresh;
        c.arrange();
        fresh.Click("SET_IMAGE_BUTTON", kTestFunctionForm);
        ASSERT_EQ(1u, fresh.report().errors.size()) << c.title;
        EXPECT_EQ(c.error, fresh.report().errors[0].number()) << c.title;
        EXPECT_TRUE(fresh.calls().empty()) << c.title;
    }
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

}  // namespace
}  // namespace vantrel
