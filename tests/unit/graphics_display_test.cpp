#include "graphics/graphics.h"
#include "server/command_block.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <tuple>

namespace vantrel {
namespace {

using testing::RecordedCall;
using testing::TestConsole;

const Text ESC = u"\x1b";
const Text SUB = u"\x1a";
const Text kCrLfNul(u"\r\n\0", 3);
const Text kCrLfLf = u"\r\n\n";
const Text kNothing;

struct ScreenCase {
    const char* button;
    Text message;  // after "Message="
    Text end;
};

void PrintTo(const ScreenCase& screen, std::ostream* out) { *out << screen.button; }

// The screens as the terminal documentation lists them, element by element.
std::vector<ScreenCase> Screens() {
    const Text aerial = ESC + u"F\"Aerial\"14";
    return {
        {"GilbarcoInfo", ESC + u"G" + ESC + SUB + u"000" + ESC + u"=100100Hello @ 100 / 100", kCrLfNul},
        {"Wayne2Line", ESC + u"G2" + ESC + SUB + u"000" + ESC + u"=001002Hello (001/002)", kCrLfNul},
        {"Wayne3Line", ESC + u"G3" + ESC + SUB + u"000" + ESC + u"=010020Hello (010/020)", kCrLfNul},
        {"Wayne4Line", ESC + u"G4" + ESC + SUB + u"000" + ESC + u"=040030Hello (040/030)", kCrLfNul},
        {"Wayne5Line", ESC + u"G5" + ESC + SUB + u"000" + ESC + u"=065030Hello (065/030)", kCrLfNul},
        {"WayneQCat",
         ESC + u"G" + ESC + SUB + u"000" + ESC + u"=001001Hello (First Line)" + ESC + u"=001015Hello (Second Line)" +
             ESC + u"=030120Col/Row (30/120)",
         kCrLfNul},
        {"iXCAT_FORMAT_LINE",
         ESC + u"G" + ESC + u"A12" + aerial + ESC + u"=001001First Line" + ESC + u"=025020Second Line" + ESC +
             u"=050040Third Line" + ESC + u"=075060Fourth Line" + ESC + u"=100080Fifth Line" + ESC +
             u"=125100Sixth Line" + ESC + u"=150120Seventh Line" + ESC + u"=175140Eigth Line" + ESC +
             u"=200160Ninth Line",
         kCrLfLf},
        {"iXCAT_MULTI_LINE",
         ESC + u"G" + ESC + u"A12" + aerial +
             u"The First Line\nThe Second Line\nThe Third Line\nThe Fourth Line\nThe Fifth Line\n"
             u"The Sixth Line\nThe Seventh Line\nThe Eigth Line",
         kCrLfLf},
        {"iXCAT_FUNC",
         ESC + u"G" + ESC + u"S1\"Key 1\"" + ESC + u"S2\"Key 2\"" + ESC + u"S3\"Key 3\"" + ESC + u"S4\"Key 4\"" + ESC +
             u"S5\"Key 5\"" + ESC + u"S6\"Key 6\"" + ESC + u"S7\"Key 7\"" + ESC + u"S8\"Key 8\"" + ESC +
             u"A12Select A Key",
         kNothing},
    };
}

class GraphicsScreen : public ::testing::TestWithParam<std::tuple<ScreenCase, int>> {};

TEST_P(GraphicsScreen, SendsItsBlockThroughCommandDataEchoesItAndCloses) {
    const auto& [screen, position] = GetParam();
    TestConsole test;
    test.Click("Button" + std::to_string(position));
    test.Click("InfoDisplay");
    test.Click(screen.button, kGraphicsDisplayForm);

    const Text expected = u"ReaderPosition=" + PositionText(position) + u"\r\nMessage=" + screen.message + screen.end;
    ASSERT_EQ(1u, test.calls().size());
    const RecordedCall& call = test.calls()[0];
    EXPECT_EQ(RecordedCall::Kind::Put, call.kind);
    EXPECT_EQ("DisplayData", call.member);
    EXPECT_TEXT(expected, call.text());
    EXPECT_EQ(Variant::OfText(expected), test.console().CommandData);
    EXPECT_TEXT(u"<Object>.DispData = (data)", test.console().FunctionBox());
    EXPECT_TEXT(expected, test.console().DataBox());
    EXPECT_EQ(std::vector<std::string>{kGraphicsDisplayForm}, test.windows().hidden);
    EXPECT_TRUE(test.report().errors.empty());
}

INSTANTIATE_TEST_SUITE_P(EveryButton, GraphicsScreen,
                         ::testing::Combine(::testing::ValuesIn(Screens()), ::testing::Values(1, 32)),
                         [](const auto& info) {
                             return std::string(std::get<0>(info.param).button) + "_at_" +
                                    std::to_string(std::get<1>(info.param));
                         });

TEST(GraphicsWindow, InfoDispOpensTheOneWindowAndWritesNoBox) {
    TestConsole test;
    test.Click("InfoDisplay");
    test.Click("EXIT_BUTTON", kGraphicsDisplayForm);
    test.Click("InfoDisplay");
    EXPECT_EQ((std::vector<std::string>{kGraphicsDisplayForm, kGraphicsDisplayForm}), test.windows().shown);
    EXPECT_EQ(std::vector<std::string>{kGraphicsDisplayForm}, test.windows().hidden);
    EXPECT_TRUE(test.console().IsLoaded(kGraphicsDisplayForm));
    EXPECT_TRUE(test.calls().empty());
    EXPECT_TEXT(u"Function Box", test.console().FunctionBox());
    EXPECT_TEXT(u"", test.console().DataBox());
    EXPECT_TRUE(test.console().CommandData.is(Variant::Kind::Empty));
}

TEST(GraphicsWindow, AServerFailureLeavesTheDataBoxAndTheWindowAsTheyWere) {
    TestConsole test;
    test.console().SetDataBox(u"before");
    test.server().QueueFailure("DisplayData", RuntimeError(-2147418113, "Catastrophic failure"));
    test.Click("InfoDisplay");
    test.Click("Wayne3Line", kGraphicsDisplayForm);
    ASSERT_EQ(1u, test.report().errors.size());
    EXPECT_EQ(-2147418113, test.report().errors[0].number());
    EXPECT_TEXT(u"<Object>.DispData = (data)", test.console().FunctionBox());
    EXPECT_TEXT(u"before", test.console().DataBox());
    EXPECT_TRUE(test.windows().hidden.empty());
}

}  // namespace
}  // namespace vantrel
