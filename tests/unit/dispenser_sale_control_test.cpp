// Sale control and dispenser information: bare values, the number by
// reference, and where every dispenser button sits on the console window.
#include "unit/dispenser_helpers.h"

namespace vantrel {
namespace {

using testing::ExpectOnePut;
using testing::MarkUntouched;
using testing::RecordedCall;
using testing::TestConsole;

struct BareCase {
    const char* button;
    int position;
    const char16_t* functionBox;
    const char* member;
    const char16_t* value;
};

class SaleControl : public ::testing::TestWithParam<BareCase> {};

TEST_P(SaleControl, AssignsTheBareValueAndLeavesOneBlank) {
    const BareCase& c = GetParam();
    TestConsole test;
    test.Select(c.position);
    test.server().calls.clear();
    MarkUntouched(test.console());
    test.Click(c.button);
    EXPECT_TEXT(c.functionBox, test.console().FunctionBox());
    ExpectOnePut(test, c.member, c.value);
    EXPECT_TEXT(u" ", test.console().DataBox());
    EXPECT_EQ(Variant::OfText(u"command data before"), test.console().CommandData);
    EXPECT_TRUE(test.prompter().boxes.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, SaleControl,
    ::testing::Values(BareCase{"Stop", 7, u"<Object>.Stop = (07)", "Stop", u"07"},
                      BareCase{"Resume", 12, u"<Object>.Resume = (12)", "Resume", u"12"},
                      BareCase{"Deauthorize", 3, u"<Object>.DeAuthorize = (03)", "Deauthorize", u"03"},
                      BareCase{"PayOutSale", 32, u"<Object>.PayOutSale = (32)", "PayOutSale", u"32"},
                      BareCase{"STOP_ALL", 7, u"<Object>.Stop = (0)", "Stop", u"0"},
                      BareCase{"STOP_ALL", 1, u"<Object>.Stop = (0)", "Stop", u"0"}));

TEST(DispenserInfo, PassesTheSelectedNumberByReferenceAndShowsTheAnswer) {
    TestConsole test;
    test.Select(12);
    test.server().calls.clear();
    MarkUntouched(test.console());
    test.server().QueueAnswer("DispenserInformation", Variant::OfText(Text(u"Model=X\r\n\0", 10)));
    test.Click("DispenserInfo");
    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ(RecordedCall::Kind::CallByRef, test.calls()[0].kind);
    EXPECT_EQ("DispenserInformation", test.calls()[0].member);
    EXPECT_EQ(Variant::OfInt16(12), test.calls()[0].value);  // the number, not "12"
    EXPECT_TEXT(u"(return data)=<Object>.DispenserInformation (passed data)", test.console().FunctionBox());
    EXPECT_TEXT(Text(u"Model=X\r\n\0", 10), test.console().DataBox());
    EXPECT_EQ(Variant::OfText(u"command data before"), test.console().CommandData);

    // An empty answer empties the data box.
    test.Click("DispenserInfo");
    EXPECT_TEXT(u"", test.console().DataBox());
}

// After a bar-code print the text says "01" while the number stays 7: the
// bare-value commands follow the text, the information request the number.
TEST(DispenserInfo, FollowsTheNumberWhereStopFollowsTheText) {
    TestConsole test;
    test.Select(7);
    test.server().calls.clear();
    test.console().SelectedPositionText = u"01";
    test.Click("Stop");
    test.Click("DispenserInfo");
    ASSERT_EQ(2u, test.calls().size());
    EXPECT_TEXT(u"01", test.calls()[0].text());
    EXPECT_EQ(Variant::OfInt16(7), test.calls()[1].value);
}

TEST(DispenserInfo, AnAnswerThatIsNoTextEndsThroughTheReport) {
    TestConsole test;
    MarkUntouched(test.console());
    test.server().QueueAnswer("DispenserInformation", Variant::Null());
    test.Click("DispenserInfo");
    ASSERT_EQ(1u, test.report().errors.size());
    EXPECT_EQ(94, test.report().errors[0].number());
    EXPECT_TEXT(u"data before", test.console().DataBox());
}

struct Placement {
    const char* name;
    const char16_t* caption;
    int left;
    int top;
    int width;
    int height;
    std::optional<Color> graphical;
};

TEST(DispenserLayout, EveryButtonAtItsTwipsCaptionAndColour) {
    TestConsole test;
    const FormDescription& form = test.console().Description(kConsoleForm);
    for (const Placement& p : {
             Placement{"Preset", u"  Auth ", 5160, 4920, 615, 375, std::nullopt},
             Placement{"Fillup", u"Fillup", 5760, 4920, 495, 345, 0x00FFC0C0},
             Placement{"MultiHoseLock", u"MHL", 6240, 4920, 495, 375, 0x0000FFFF},
             Placement{"PresetMOP1", u"MOP1", 5160, 5400, 735, 375, std::nullopt},
             Placement{"PresetMOP2", u"MOP2", 6000, 5400, 735, 375, std::nullopt},
             Placement{"Price", u"Price", 3960, 4920, 1095, 375, std::nullopt},
             Placement{"Price1", u"P1", 3960, 5400, 495, 375, std::nullopt},
             Placement{"Price2", u"P2", 4560, 5400, 495, 375, std::nullopt},
             Placement{"Price3", u"P3", 3960, 5880, 495, 375, std::nullopt},
             Placement{"Price4", u"P4", 4560, 5880, 495, 375, std::nullopt},
             Placement{"Price5", u"P5", 3960, 6360, 495, 375, std::nullopt},
             Placement{"Price6", u"P6", 4560, 6360, 495, 375, std::nullopt},
             Placement{"Price3Blend", u"", 4320, 5880, 135, 135, 0x00008000},
             Placement{"Deauthorize", u"Deauthorize", 5160, 5880, 1455, 375, std::nullopt},
             Placement{"Stop", u"Stop", 5160, 6360, 1455, 375, std::nullopt},
             Placement{"STOP_ALL", u"ALL", 6120, 6360, 495, 375, 0x000000FF},
             Placement{"Resume", u"Resume", 5160, 6840, 1455, 375, std::nullopt},
             Placement{"PayOutSale", u"PayOutSale", 5160, 7320, 1455, 375, std::nullopt},
             Placement{"DispenserInfo", u"Dispenser Info", 240, 1680, 1335, 255, std::nullopt},
         }) {
        const Control* control = form.Find(p.name);
        ASSERT_NE(control, nullptr) << p.name;
        EXPECT_EQ(ControlKind::CommandButton, control->kind) << p.name;
        EXPECT_TEXT(p.caption, control->caption);
        EXPECT_EQ(p.left, control->left) << p.name;
        EXPECT_EQ(p.top, control->top) << p.name;
        EXPECT_EQ(p.width, control->width) << p.name;
        EXPECT_EQ(p.height, control->height) << p.name;
        EXPECT_EQ(p.graphical.has_value(), control->style == ButtonStyle::Graphical) << p.name;
        EXPECT_EQ(p.graphical, control->backColor) << p.name;
    }
}

}  // namespace
}  // namespace vantrel
