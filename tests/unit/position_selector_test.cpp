#include "console/position_selector.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using testing::RecordedCall;
using testing::TestConsole;

TEST(StartUp, SelectsPositionOneAndAsksTheServerNothing) {
    TestConsole test;
    Console& console = test.console();
    EXPECT_EQ(Variant::OfInt16(1), console.SelectedPosition);
    EXPECT_TEXT(u"01", console.SelectedPositionText);
    EXPECT_TEXT(u"Fueling Position -> 1", console.Window().TextOf("TextBoxPumpNumber"));
    EXPECT_TEXT(u"Function Box", console.FunctionBox());
    EXPECT_TEXT(u"", console.DataBox());
    EXPECT_TRUE(console.Window().Checked("Button1"));
    EXPECT_EQ(42u, console.TestString.size());
    EXPECT_EQ(0, console.StressActive);
    EXPECT_TRUE(test.calls().empty());
    for (int position = 1; position <= 32; ++position) {
        EXPECT_EQ(kLabelColor, console.Window().BackColorOf("ButtLab" + std::to_string(position)));
    }
}

TEST(PositionClick, SelectsWithoutCallingTheServer) {
    for (const auto& [position, text] : {std::pair{1, u"01"}, {9, u"09"}, {10, u"10"}, {17, u"17"}, {32, u"32"}}) {
        TestConsole test;
        test.Click("Button" + std::to_string(position));
        EXPECT_TEXT(u"Fueling Position -> " + FromUtf8(std::to_string(position)),
                    test.console().Window().TextOf("TextBoxPumpNumber"));
        EXPECT_EQ(Variant::OfInt16(static_cast<std::int16_t>(position)), test.console().SelectedPosition);
        EXPECT_TEXT(text, test.console().SelectedPositionText);
        EXPECT_TRUE(test.calls().empty());
        EXPECT_TEXT(u"Function Box", test.console().FunctionBox());
    }
}

TEST(PositionFocus, AsksForTheInformationByNumberAndMarksTheLabel) {
    TestConsole test;
    test.server().QueueAnswer("FuelingPositionInformation", Variant::OfText(u"FP=12\r\n"));
    test.Focus("Button12");
    ASSERT_EQ(1u, test.calls().size());
    const RecordedCall& call = test.calls()[0];
    EXPECT_EQ(RecordedCall::Kind::CallWithArgument, call.kind);
    EXPECT_EQ("FuelingPositionInformation", call.member);
    EXPECT_EQ(Variant::OfInt16(12), call.value);  // the number, not "12"
    EXPECT_TEXT(u"<returned data>=<Object>.FuelingPositionInformation(passed data)", test.console().FunctionBox());
    EXPECT_TEXT(u"FP=12\r\n", test.console().DataBox());
    EXPECT_EQ(kFocusedLabelColor, test.console().Window().BackColorOf("ButtLab12"));
    // Focus alone does not select.
    EXPECT_TEXT(u"01", test.console().SelectedPositionText);

    test.Blur("Button12");
    EXPECT_EQ(kLabelColor, test.console().Window().BackColorOf("ButtLab12"));
}

TEST(PositionDoubleClick, WritesOnlyTheDataBox) {
    TestConsole test;
    test.console().SetFunctionBox(u"before");
    test.server().QueueAnswer("FuelingPositionInformation", Variant::OfText(Text(u"x\0y", 3)));
    test.DblClick("Button5");
    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ(Variant::OfInt16(5), test.calls()[0].value);
    EXPECT_TEXT(u"before", test.console().FunctionBox());
    EXPECT_TEXT(Text(u"x\0y", 3), test.console().DataBox());
}

TEST(PositionFocus, AServerFailureGoesToTheErrorReport) {
    TestConsole test;
    test.server().QueueFailure("FuelingPositionInformation", RuntimeError(-2147418113, "Catastrophic failure"));
    test.Focus("Button3");
    ASSERT_EQ(1u, test.report().errors.size());
    EXPECT_EQ(-2147418113, test.report().errors[0].number());
    // The function box was written before the call; the data box was not.
    EXPECT_TEXT(u"<returned data>=<Object>.FuelingPositionInformation(passed data)", test.console().FunctionBox());
    EXPECT_TEXT(u"", test.console().DataBox());
}

}  // namespace
}  // namespace vantrel
