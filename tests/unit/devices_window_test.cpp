// The other-devices window as a whole: its layout, opening and closing, the
// code box, and the price tables that alternate across presses and hiding.
#include "devices/device_commands.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vantrel {
namespace {

using namespace std::string_literals;
using testing::TestConsole;

struct Row {
    const char* name;
    ControlKind kind;
    const char16_t* caption;
    int left, top, width, height;
};

std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.name; }

constexpr ControlKind kButton = ControlKind::CommandButton;
constexpr ControlKind kLabel = ControlKind::Label;
constexpr ControlKind kBox = ControlKind::TextBox;

const std::vector<Row> kLayout = {
    {"Label2", kLabel, u"WAYNE iXCAT EMV         CONTROL", 240, 240, 2535, 735},
    {"WAYNE_CHIP_READER_ENABLE", kButton, u"ENABLE CHIP READER", 600, 1080, 1695, 495},
    {"WAYNE_CHIP_READER_DISABLE", kButton, u"DISABLE_CHIP READER", 600, 1920, 1695, 495},
    {"PACKETPRN", kButton, u"PACKET PRINT BAR CODE", 600, 2760, 1695, 495},
    {"CARWASHLABEL", kLabel, u"CAR WASH", 3120, 240, 1455, 255},
    {"CWCOmmandsLABEL", kLabel, u"COMMANDS", 3000, 720, 1695, 375},
    {"CWGETCODEBUTTON", kButton, u"GET CODE", 3000, 1200, 855, 495},
    {"CODESTATUS_BUTTON", kButton, u"CODE STATUS", 4080, 1200, 855, 495},
    {"CAR_WASHSTATUSBUTTON", kButton, u"WASH STATUS", 3000, 1800, 855, 495},
    {"CANCELCODEBUTTON", kButton, u"CANCEL CODE", 4080, 1800, 855, 495},
    {"PRICEREADBUTTON", kButton, u"PRICE READ", 3000, 2400, 855, 495},
    {"SETPRICEBUTTON", kButton, u"PRICE SET", 4080, 2400, 855, 495},
    {"REPORTREADBUTTON", kButton, u"REPORT READ", 3000, 3000, 855, 495},
    {"COMMANDSTATUSBUTTON", kButton, u"COMMAND STATUS", 3000, 3840, 1935, 375},
    {"CARWASHREADDATABUTTON", kButton, u"READ DATA", 3000, 4320, 1935, 375},
    {"CODEBOXLABEL", kLabel, u"CODE #", 3360, 4800, 1455, 255},
    {"CodeBox", kBox, u"", 3360, 5160, 1455, 375},
    {"RFIDREADBUTTON", kButton, u"RFID READ", 2400, 5040, 855, 495},
    {"KEYREADBUTTON", kButton, u"KEY READ", 2400, 5640, 855, 495},
    {"CWCARDREADBUTTON", kButton, u"CARD READ", 3360, 5640, 855, 495},
    {"TRANSREADBUTTON", kButton, u"TRANS READ", 4320, 5640, 855, 495},
    {"TM_LABEL", kLabel, u"TANK MONITOR", 5040, 240, 2055, 255},
    {"TMStartReport", kButton, u"START REPORT", 5280, 720, 1695, 375},
    {"TMREPORTSTATUSBUTTON", kButton, u"REPORT STATUS", 5280, 1320, 1695, 375},
    {"TMDATAREADBUTTON", kButton, u"READ REPORT", 5280, 1920, 1695, 375},
    {"Label1", kLabel, u"PRICE SIGN", 5400, 3240, 1575, 375},
    {"PRICE_SIGN_GET_STATUS", kButton, u"GET STATUS", 5400, 3720, 1575, 375},
    {"PRICE_SIGN_SEND_PRICES", kButton, u"SEND PRICES", 5400, 4320, 1575, 375},
    {"PRICE_SIGN_SEND_CONTROL", kButton, u"SEND CONTROL", 5400, 4920, 1575, 375},
    {"DeviceDataLabel", kLabel, u"DEVICE DATA", 8400, 120, 1935, 375},
    {"DeviceData", kBox, u"", 7440, 600, 3255, 3255},
    {"EXIT_CMD", kButton, u"EXIT", 120, 6000, 1095, 375},
};

class OtherDevicesLayout : public ::testing::TestWithParam<Row> {
protected:
    TestConsole test_;
};

TEST_P(OtherDevicesLayout, PlacesTheControlAtItsTwips) {
    const Row& row = GetParam();
    const Control* control = test_.console().Description(kOtherDevicesForm).Find(row.name);
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(row.kind, control->kind);
    EXPECT_TEXT(row.caption, control->caption);
    EXPECT_EQ(row.left, control->left);
    EXPECT_EQ(row.top, control->top);
    EXPECT_EQ(row.width, control->width);
    EXPECT_EQ(row.height, control->height);
    // A button without a handler would be a dead control on the bench.
    EXPECT_EQ(row.kind == kButton, static_cast<bool>(control->click));
}

INSTANTIATE_TEST_SUITE_P(EveryControl, OtherDevicesLayout, ::testing::ValuesIn(kLayout));

TEST(OtherDevicesWindow, HasItsCaptionSizeAndNoOtherControls) {
    TestConsole test;
    const FormDescription& form = test.console().Description(kOtherDevicesForm);
    EXPECT_TEXT(u"OTHER DEVICES", form.caption);
    EXPECT_EQ(10920, form.clientWidth);
    EXPECT_EQ(6480, form.clientHeight);
    EXPECT_EQ(kLayout.size(), form.controls.size());

    const Control* deviceData = form.Find("DeviceData");
    ASSERT_NE(deviceData, nullptr);
    EXPECT_TRUE(deviceData->multiLine);
    EXPECT_EQ(ScrollBars::Both, deviceData->scrollBars);
    const Control* codeBox = form.Find("CodeBox");
    ASSERT_NE(codeBox, nullptr);
    EXPECT_FALSE(codeBox->multiLine);
    EXPECT_FALSE(codeBox->readOnly);  // the technician types the code here
    EXPECT_TRUE(static_cast<bool>(codeBox->change));
}

TEST(OtherDevicesWindow, TheConsoleButtonIsGreenAndGraphical) {
    TestConsole test;
    const Control* button = test.console().Description(kConsoleForm).Find("OTHERDEVICESBUTTON");
    ASSERT_NE(button, nullptr);
    EXPECT_TEXT(u"OTHER DEVICES", button->caption);
    EXPECT_EQ(ButtonStyle::Graphical, button->style);
    EXPECT_EQ(Color{0x0000FF00}, button->backColor);
    EXPECT_EQ(240, button->left);
    EXPECT_EQ(480, button->top);
    EXPECT_EQ(1335, button->width);
    EXPECT_EQ(615, button->height);
}

TEST(OtherDevicesWindow, OpensModallyAndExitOnlyHidesIt) {
    TestConsole test;
    EXPECT_FALSE(test.console().IsLoaded(kOtherDevicesForm));
    test.Click("OTHERDEVICESBUTTON");
    EXPECT_TRUE(test.console().IsLoaded(kOtherDevicesForm));
    EXPECT_EQ(std::vector<std::string>{kOtherDevicesForm}, test.windows().shown);
    test.Click("EXIT_CMD", kOtherDevicesForm);
    EXPECT_EQ(std::vector<std::string>{kOtherDevicesForm}, test.windows().hidden);
    test.Click("OTHERDEVICESBUTTON");
    EXPECT_EQ(2u, test.windows().shown.size());
    // Opening and closing asks the server nothing and writes no console box.
    EXPECT_TRUE(test.calls().empty());
    EXPECT_TEXT(u"Function Box", test.console().FunctionBox());
    EXPECT_TEXT(u"", test.console().DataBox());
}

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
    TestConsole test_;
};

TEST_F(CodeBoxTest, EveryChangeCopiesTheWholeTextIntoCodeNumber) {
    EXPECT_TEXT(u"", test_.console().CodeNumber);
    for (const Text& keystrokes : {u"1"s, u"12"s, u"123"s, u"12"s, u" 1a\t "s}) {
        Type(keystrokes);
        EXPECT_TEXT(keystrokes, test_.console().CodeNumber);
    }
    EXPECT_TRUE(test_.calls().empty());
}

TEST_F(CodeBoxTest, TypedCodeGoesIntoCancelAndAClearedBoxIntoStatus) {
    Type(u"12345");
    Press("CANCELCODEBUTTON");
    EXPECT_TEXT(u"CancelCarWashCode\r\nCarWashCode=12345\r\n\0"s, LastBlock());
    Type(u"");
    Press("CODESTATUS_BUTTON");
    EXPECT_TEXT(u"CarWashCodeStatus\r\nCarWashCode=\r\n\0"s, LastBlock());
    EXPECT_TEXT(u"", test_.console().Form(kOtherDevicesForm).TextOf("DeviceData"));
}

TEST_F(CodeBoxTest, HidingAndReopeningKeepsTheCodeAndTheDeviceData) {
    Type(u"4711");
    Press("CWGETCODEBUTTON");
    const Text shown = test_.console().Form(kOtherDevicesForm).TextOf("DeviceData");
    Press("EXIT_CMD");
    test_.Click("OTHERDEVICESBUTTON");
    EXPECT_TEXT(u"4711", test_.console().Form(kOtherDevicesForm).TextOf("CodeBox"));
    EXPECT_TEXT(u"4711", test_.console().CodeNumber);
    EXPECT_TEXT(shown, test_.console().Form(kOtherDevicesForm).TextOf("DeviceData"));
    Press("CODESTATUS_BUTTON");
    EXPECT_TEXT(u"CarWashCodeStatus\r\nCarWashCode=4711\r\n\0"s, LastBlock());
}

const Text kTable1 =
    u"ProgramCount=03\r\n"
    u"ProgramNumber=01\r\nFullPrice=00500\r\nDiscount1Price=00400\r\nDiscount2Price=00300\r\n"
    u"ProgramNumber=02\r\nFullPrice=00600\r\nDiscount1Price=00500\r\nDiscount2Price=00400\r\n"
    u"ProgramNumber=03\r\nFullPrice=00700\r\nDiscount1Price=00600\r\nDiscount2Price=00500\r\n"
    u"OptionCount=03\r\n"
    u"OptionNumber=01\r\nFullPrice=00025\r\nDiscount1Price=00020\r\nDiscount2Price=00015\r\n"
    u"OptionNumber=02\r\nFullPrice=00030\r\nDiscount1Price=00025\r\nDiscount2Price=00020\r\n"
    u"OptionNumber=03\r\nFullPrice=00035\r\nDiscount1Price=00030\r\nDiscount2Price=00025\r\n";
const Text kTable2 =
    u"ProgramCount=03\r\n"
    u"ProgramNumber=01\r\nFullPrice=00501\r\nDiscount1Price=00401\r\nDiscount2Price=00301\r\n"
    u"ProgramNumber=02\r\nFullPrice=00601\r\nDiscount1Price=00501\r\nDiscount2Price=00401\r\n"
    u"ProgramNumber=03\r\nFullPrice=00701\r\nDiscount1Price=00601\r\nDiscount2Price=00501\r\n"
    u"OptionCount=03\r\n"
    u"OptionNumber=01\r\nFullPrice=00026\r\nDiscount1Price=00021\r\nDiscount2Price=00016\r\n"
    u"OptionNumber=02\r\nFullPrice=00031\r\nDiscount1Price=00026\r\nDiscount2Price=00021\r\n"
    u"OptionNumber=03\r\nFullPrice=00036\r\nDiscount1Price=00031\r\nDiscount2Price=00026\r\n";

Text PriceBlock(const Text& table) { return u"SetPriceData\r\n" + table + u"\r\n\r\n\0"s; }

class PriceSetTest : public CodeBoxTest {
protected:
    // One press: the device data shows the table, the block carries it.
    void ExpectPress(const Text& table, std::int16_t priceSetAfter) {
        const std::size_t before = test_.calls().size();
        Press("SETPRICEBUTTON");
        ASSERT_EQ(before + 1, test_.calls().size());
        EXPECT_EQ("CarWashInformationRequest", test_.calls().back().member);
        EXPECT_TEXT(PriceBlock(table), LastBlock());
        EXPECT_TEXT(table, test_.console().Form(kOtherDevicesForm).TextOf("DeviceData"));
        EXPECT_TEXT(u"<Object>.CarWashInformationRequest = <data>", test_.console().FunctionBox());
        EXPECT_EQ(priceSetAfter, test_.console().PriceSET);
    }
};

TEST_F(PriceSetTest, AlternatesBetweenTheTwoTablesOnEveryPress) {
    ExpectPress(kTable1, 1);
    ExpectPress(kTable2, 0);
    ExpectPress(kTable1, 1);
    ExpectPress(kTable2, 0);
    EXPECT_TEXT(u"", test_.console().DataBox());
}

TEST_F(PriceSetTest, TheTablesHaveTwentySixLinesAndTheBlockTwoEmptyOnes) {
    ExpectPress(kTable1, 1);
    const Text& shown = test_.console().Form(kOtherDevicesForm).TextOf("DeviceData");
    std::size_t lines = 0;
    for (std::size_t at = shown.find(u"\r\n"); at != Text::npos; at = shown.find(u"\r\n", at + 2)) {
        ++lines;
    }
    EXPECT_EQ(26u, lines);
    EXPECT_TEXT(u"Discount2Price=00025\r\n\r\n\r\n\0"s, LastBlock().substr(LastBlock().size() - 27));
}

TEST_F(PriceSetTest, HidingDoesNotRestartTheAlternation) {
    ExpectPress(kTable1, 1);
    Press("EXIT_CMD");
    test_.Click("OTHERDEVICESBUTTON");
    ExpectPress(kTable2, 0);
    Press("EXIT_CMD");
    test_.Click("OTHERDEVICESBUTTON");
    ExpectPress(kTable1, 1);
}

TEST_F(PriceSetTest, AFailedPressStillMovesOnToTheOtherTable) {
    test_.server().QueueFailure("CarWashInformationRequest", RuntimeError(5, "Invalid procedure call or argument"));
    Press("SETPRICEBUTTON");
    ASSERT_EQ(1u, test_.report().errors.size());
    EXPECT_EQ(1, test_.console().PriceSET);
    EXPECT_TEXT(kTable1, test_.console().Form(kOtherDevicesForm).TextOf("DeviceData"));
    ExpectPress(kTable2, 0);
}

}  // namespace
}  // namespace vantrel
