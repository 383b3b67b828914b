// The other-devices window as a whole: opening and closing, the code box,
// the car wash code's own device data, and the price tables that alternate
// across presses and hiding.
#include "devices/devices.h"

#include "car_wash_tables.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vantrel {
namespace {

using namespace std::string_literals;
using testing::TestConsole;

// The window's load runs once, on the first showing: it resets PriceSET and
// leaves CodeNumber alone.
TEST(OtherDevicesWindow, OnlyTheFirstShowingResetsThePriceTable) {
    TestConsole test;
    Console& console = test.console();
    console.PriceSET = 1;
    console.CodeNumber = u"777";
    test.Click("OTHERDEVICESBUTTON");
    EXPECT_EQ(0, console.PriceSET);
    EXPECT_TEXT(u"777", console.CodeNumber);
    console.PriceSET = 1;
    test.Click("EXIT_CMD", kOtherDevicesForm);
    test.Click("OTHERDEVICESBUTTON");
    EXPECT_EQ(1, console.PriceSET);
}

class CodeBoxTest : public ::testing::Test {
protected:
    void SetUp() override { test_.Click("OTHERDEVICESBUTTON"); }
    void Type(Text text) { test_.Type("CodeBox", std::move(text), kOtherDevicesForm); }
    void Press(std::string_view button) { test_.Click(button, kOtherDevicesForm); }
    const Text& LastBlock() { return test_.calls().back().text(); }
    const Text& DeviceData() { return test_.console().Form(kOtherDevicesForm).TextOf("DeviceData"); }
    TestConsole test_;
};

const Text kGetCodeBody =
    u"ProgramNumber=01\r\nPriceLevel=01\r\nOptionCount=2\r\nOptionNumber=01\r\nPriceLevel=01\r\n"
    u"OptionNumber=03\r\nPriceLevel=01\r\n";

// The lines are shown before the block goes out, so they stay on show when
// it fails; a second press sends and shows the same again.
TEST_F(CodeBoxTest, GetCodeShowsItsLinesEvenWhenTheAssignmentFails) {
    test_.server().QueueFailure("CarWashInformationRequest", RuntimeError(-2147467259, "Automation error"));
    Press("CWGETCODEBUTTON");
    ASSERT_EQ(1u, test_.report().errors.size());
    EXPECT_TEXT(kGetCodeBody, DeviceData());
    Press("CWGETCODEBUTTON");
    ASSERT_EQ(2u, test_.calls().size());
    EXPECT_TEXT(test_.calls()[0].text(), test_.calls()[1].text());
    EXPECT_TEXT(kGetCodeBody, DeviceData());
}

TEST_F(CodeBoxTest, AFailedTankMonitorStartLeavesTheLastReportOnShow) {
    test_.server().QueueAnswer("TankMonitorReport", Variant::OfText(u"Tank1=12000"));
    Press("TMDATAREADBUTTON");
    test_.server().QueueFailure("TankMonitorStartReport", RuntimeError(438, "Object doesn't support this property"));
    Press("TMStartReport");
    ASSERT_EQ(1u, test_.report().errors.size());
    EXPECT_TEXT(u"Tank1=12000", DeviceData());
}

// Typing, the cancel's block and the code across hiding are the window and
// script tests'; here blanks and a tab go as typed, and the shown lines stay.
TEST_F(CodeBoxTest, TheCodeGoesAsTypedAndTheShownLinesSurviveHiding) {
    Type(u" 1a\t "s);
    Press("CANCELCODEBUTTON");
    EXPECT_TEXT(u"CancelCarWashCode\r\nCarWashCode= 1a\t \r\n\0"s, LastBlock());
    Press("CWGETCODEBUTTON");
    const Text shown = DeviceData();
    Press("EXIT_CMD");
    test_.Click("OTHERDEVICESBUTTON");
    EXPECT_TEXT(shown, DeviceData());
}

class PriceSetTest : public CodeBoxTest {
protected:
    // One press: the device data shows the table, the block carries it.
    void ExpectPress(const Text& table, std::int16_t priceSetAfter) {
        const std::size_t before = test_.calls().size();
        Press("SETPRICEBUTTON");
        ASSERT_EQ(before + 1, test_.calls().size());
        EXPECT_EQ("CarWashInformationRequest", test_.calls().back().member);
        EXPECT_TEXT(testing::CarWashPriceBlock(table), LastBlock());
        EXPECT_TEXT(table, DeviceData());
        EXPECT_TEXT(u"<Object>.CarWashInformationRequest = <data>", test_.console().FunctionBox());
        EXPECT_EQ(priceSetAfter, test_.console().PriceSET);
    }
};

TEST_F(PriceSetTest, AlternatesBetweenTheTwoTablesOnEveryPressAcrossHiding) {
    ExpectPress(testing::kCarWashTable1, 1);
    ExpectPress(testing::kCarWashTable2, 0);
    ExpectPress(testing::kCarWashTable1, 1);
    Press("EXIT_CMD");
    test_.Click("OTHERDEVICESBUTTON");
    ExpectPress(testing::kCarWashTable2, 0);
    Press("EXIT_CMD");
    test_.Click("OTHERDEVICESBUTTON");
    ExpectPress(testing::kCarWashTable1, 1);
    EXPECT_TEXT(u"", test_.console().DataBox());
}

TEST_F(PriceSetTest, AFailedPressStillMovesOnToTheOtherTable) {
    test_.server().QueueFailure("CarWashInformationRequest", RuntimeError(5, "Invalid procedure call or argument"));
    Press("SETPRICEBUTTON");
    ASSERT_EQ(1u, test_.report().errors.size());
    EXPECT_EQ(1, test_.console().PriceSET);
    EXPECT_TEXT(testing::kCarWashTable1, DeviceData());
    ExpectPress(testing::kCarWashTable2, 0);
}

}  // namespace
}  // namespace vantrel
