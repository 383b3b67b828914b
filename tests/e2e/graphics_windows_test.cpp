#include "e2e/e2e.h"
#include "support/drive_folder.h"

#include <gmock/gmock.h>

namespace vantrel::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

TEST(GraphicsDisplayRun, InfoDispOpensTheWindowAndAScreenClosesIt) {
    const ScriptRun run = RunConsole(R"vts(
click Button32
click InfoDisplay
click Wayne2Line
expect TextBox "<Object>.DispData = (data)"
expect InBox "ReaderPosition=32\r\nMessage=\eG2\e\x1A000\e=001002Hello (001/002)\r\n\0"
click InfoDisplay
click iXCAT_FUNC
click InfoDisplay
click EXIT_BUTTON
expect TextBox "<Object>.DispData = (data)"
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    const auto calls = Calls(run);
    ASSERT_EQ(3u, calls.size());  // the position's information, then the two screens
    EXPECT_THAT(calls[1], HasSubstr(R"({"op":"put","member":"DisplayData","value":{"text":"ReaderPosition=32\r\n)"
                                    R"(Message=\u001bG2\u001b\u001a000\u001b=001002Hello (001/002)\r\n\u0000"})"));
    EXPECT_THAT(calls[2], AllOf(HasSubstr(R"("member":"DisplayData")"), HasSubstr(R"(Select A Key"})")));
}

// The image file lives under a drive folder of the test's own, passed to
// the program through its environment.
class TestFunctionsRun : public ::testing::Test {
protected:
    DriveFolder drive;
};

TEST_F(TestFunctionsRun, EveryTestSendsAndTheWindowStaysUntilExit) {
    drive.WriteImage("89504E47\r\n\xE9\xFF");
    // A test that closed the window would hand the next click to the console,
    // which has no such button: the run would fail.
    const ScriptRun run = RunConsole(R"vts(
click TEST_FUNCTION_BUTTON
click iXCAT_DES_TEST
click SecialTests
click SET_IMAGE_BUTTON
click SET_IMAGE_BUTTON
expect VantrelTest.TextBox "Function Box"
expect VantrelTest.InBox ""
click EXIT_BUTTON
click TEST_FUNCTION_BUTTON
click EXIT_BUTTON
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    const std::string image = R"({"op":"put","member":"PacketQueOutput","value":{"text":"ReaderPosition=01\r\n)"
                              R"(PacketCount=00118\r\nPacketData=<DisplayCommand><SetImageDetailsCommand )"
                              R"(SequenceNumber=\"0\"ImageId=\"1\" Filename=\"Banner.png\" Language=\"en\">)"
                              R"(89504E47\r\n\u00e9\u00ff"}})";
    EXPECT_THAT(Calls(run),
                ElementsAre(AllOf(HasSubstr(R"("member":"PacketQueOutput")"), HasSubstr(R"(PacketCount=185\r\n)"),
                                  EndsWith(R"(PINSupportData=\"5A3C19E07B42D68F\"/>\r\n\u0000"}})")),
                            AllOf(HasSubstr(R"("member":"DisplayData")"),
                                  EndsWith(R"(Center this very very long xxxxxxxxx text line\r\n\u0000"}})")),
                            image, image));
}

TEST_F(TestFunctionsRun, AMissingImageEndsTheProgramWithFileNotFound) {
    const ScriptRun run = RunConsole(R"vts(
click TEST_FUNCTION_BUTTON
click SET_IMAGE_BUTTON
click EXIT_BUTTON
)vts");
    EXPECT_EQ(1, run.exitCode);
    EXPECT_THAT(run.err, HasSubstr("Run-time error 53: File not found"));
    EXPECT_THAT(Calls(run), Not(::testing::Contains(HasSubstr("PacketQueOutput"))));
    ASSERT_FALSE(run.trace.empty());
    EXPECT_EQ(R"({"op":"report","number":53,"description":"File not found"})", run.trace.back());
}

}  // namespace
}  // namespace vantrel::testing
