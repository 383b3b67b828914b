// Every button of the other-devices window: the exact value the server gets,
// and which of the three boxes (console function box, console data box,
// device data box) it touches.
#include "devices/device_commands.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace vantrel {
namespace {

using namespace std::string_literals;
using testing::RecordedCall;
using testing::TestConsole;

constexpr char16_t kFunctionBefore[] = u"function box before";
constexpr char16_t kDataBefore[] = u"data box before";
constexpr char16_t kDeviceBefore[] = u"device data before";
constexpr char16_t kCommandDataBefore[] = u"command data before";

// The window opened from the console with position 7 selected and every box
// holding a text of its own, so that a touch shows.
class OtherDevicesTest : public ::testing::Test {
protected:
    void SetUp() override {
        test_.Click("Button7");
        test_.Click("OTHERDEVICESBUTTON");
        console().SetFunctionBox(kFunctionBefore);
        console().SetDataBox(kDataBefore);
        SetDeviceData(console(), kDeviceBefore);
        console().CommandData = Variant::OfText(kCommandDataBefore);
    }

    Console& console() { return test_.console(); }
    void Press(std::string_view button) { test_.Click(button, kOtherDevicesForm); }
    const Text& DeviceData() { return console().Form(kOtherDevicesForm).TextOf("DeviceData"); }

    TestConsole test_;
};

// What the technician and the server see after one press.
struct ButtonCase {
    const char* button;
    const char* member;
    RecordedCall::Kind kind;
    std::optional<Variant> value;     // what was assigned; none for a call
    std::optional<Text> functionBox;  // none: left as it was
    std::optional<Text> deviceData;   // none: left as it was
    bool throughCommandData = false;  // the block also went into CommandData
};

std::ostream& operator<<(std::ostream& out, const ButtonCase& press) { return out << press.button; }

Variant Block(Text text) { return Variant::OfText(std::move(text)); }

const Text kCarWashEcho = u"<Object>.CarWashInformationRequest = <data>";
const Text kGetCodeBody =
    u"ProgramNumber=01\r\nPriceLevel=01\r\nOptionCount=2\r\nOptionNumber=01\r\nPriceLevel=01\r\n"
    u"OptionNumber=03\r\nPriceLevel=01\r\n";
const Text kPrinterJob =
    u"<PrinterCommand><PrintCommand SequenceNumber=\"0\"><PrintBarCode Characters=\"73513537\" "
    u"Symbology=\"EAN_8\"/><CutPaper/></PrintCommand></PrinterCommand>";

// A call's answer is the member's name behind "answer of ", queued before the press.
Text AnswerOf(const std::string& member) { return u"answer of " + FromUtf8(member) + u"\r\nwith\0NUL"s; }

class EveryButton : public OtherDevicesTest, public ::testing::WithParamInterface<ButtonCase> {};

TEST_P(EveryButton, SendsItsExactValueAndTouchesOnlyItsBoxes) {
    const ButtonCase& press = GetParam();
    if (press.kind == RecordedCall::Kind::Call) {
        test_.server().QueueAnswer(press.member, Variant::OfText(AnswerOf(press.member)));
    }
    Press(press.button);

    ASSERT_TRUE(test_.report().errors.empty());
    ASSERT_EQ(1u, test_.calls().size());
    const RecordedCall& call = test_.calls()[0];
    EXPECT_EQ(press.member, call.member);
    EXPECT_EQ(press.kind, call.kind);
    if (press.value && press.value->is(Variant::Kind::Text)) {
        ASSERT_TRUE(call.value.has_value());
        EXPECT_TEXT(press.value->text(), call.text());
    }
    EXPECT_EQ(press.value, call.value);

    EXPECT_TEXT(press.functionBox.value_or(kFunctionBefore), console().FunctionBox());
    const Text expectedDevice =
        press.kind == RecordedCall::Kind::Call ? AnswerOf(press.member) : press.deviceData.value_or(kDeviceBefore);
    EXPECT_TEXT(expectedDevice, DeviceData());
    // The window never writes the console's data box.
    EXPECT_TEXT(kDataBefore, console().DataBox());
    EXPECT_EQ(press.throughCommandData ? *press.value : Variant::OfText(kCommandDataBefore), console().CommandData);
}

INSTANTIATE_TEST_SUITE_P(
    CarWash, EveryButton,
    ::testing::Values(
        ButtonCase{
            "CWGETCODEBUTTON", "CarWashInformationRequest", RecordedCall::Kind::Put,
            Block(u"RequestCarWashCode\r\nProgramNumber=01\r\nPriceLevel=01\r\nOptionCount=2\r\nOptionNumber=01\r\n"
                  u"PriceLevel=01\r\nOptionNumber=03\r\nPriceLevel=01\r\n\0"s),
            kCarWashEcho, kGetCodeBody},
        ButtonCase{"CANCELCODEBUTTON", "CarWashInformationRequest", RecordedCall::Kind::Put,
                   Block(u"CancelCarWashCode\r\nCarWashCode=\r\n\0"s), kCarWashEcho, std::nullopt},
        ButtonCase{"CODESTATUS_BUTTON", "CarWashInformationRequest", RecordedCall::Kind::Put,
                   Block(u"CarWashCodeStatus\r\nCarWashCode=\r\n\0"s), kCarWashEcho, std::nullopt},
        ButtonCase{"CAR_WASHSTATUSBUTTON", "CarWashRequestStatus", RecordedCall::Kind::Call, std::nullopt,
                   u"(data)=<Object>.CarWashRequestStatus", std::nullopt},
        ButtonCase{"CARWASHREADDATABUTTON", "CarWashDataRead", RecordedCall::Kind::Call, std::nullopt,
                   u"(data)=<Object>.CarWashDataRead", std::nullopt},
        ButtonCase{"COMMANDSTATUSBUTTON", "CarWashOperationStatus", RecordedCall::Kind::Call, std::nullopt,
                   u"(data)=<Object>.CarWashOperationStatus", std::nullopt}));

INSTANTIATE_TEST_SUITE_P(
    DataRequests, EveryButton,
    ::testing::Values(ButtonCase{"KEYREADBUTTON", "CarWashInformationRequest", RecordedCall::Kind::Put,
                                 Block(u"ReturnKeyData\r\n\0"s), kCarWashEcho, std::nullopt},
                      ButtonCase{"PRICEREADBUTTON", "CarWashInformationRequest", RecordedCall::Kind::Put,
                                 Block(u"ReturnPriceData\r\n\0"s), kCarWashEcho, std::nullopt},
                      ButtonCase{"REPORTREADBUTTON", "CarWashInformationRequest", RecordedCall::Kind::Put,
                                 Block(u"ReturnReportData\r\n\0"s), kCarWashEcho, std::nullopt},
                      ButtonCase{"RFIDREADBUTTON", "CarWashInformationRequest", RecordedCall::Kind::Put,
                                 Block(u"ReturnRFIDData\r\n\0"s), kCarWashEcho, std::nullopt},
                      ButtonCase{"TRANSREADBUTTON", "CarWashInformationRequest", RecordedCall::Kind::Put,
                                 Block(u"ReturnTransactionData\r\n\0"s), kCarWashEcho, std::nullopt},
                      ButtonCase{"CWCARDREADBUTTON", "CarWashInformationRequest", RecordedCall::Kind::Put,
                                 Block(u"ReturnCardData\r\n\0"s), kCarWashEcho, std::nullopt}));

INSTANTIATE_TEST_SUITE_P(
    PriceSign, EveryButton,
    ::testing::Values(ButtonCase{"PRICE_SIGN_GET_STATUS", "PriceSignDataRead", RecordedCall::Kind::Call, std::nullopt,
                                 std::nullopt, std::nullopt},
                      ButtonCase{"PRICE_SIGN_SEND_PRICES", "PriceSignDataSend", RecordedCall::Kind::Put,
                                 Block(u"Command=SendPrices\r\nLine1=001000\r\nLine2=002000\r\nLine3=003000\r\n"
                                       u"Line4=004000\r\nLine5=005000\r\n\0"s),
                                 std::nullopt, std::nullopt},
                      ButtonCase{"PRICE_SIGN_SEND_CONTROL", "PriceSignDataSend", RecordedCall::Kind::Put,
                                 Block(u"Command=DisplayControl\r\nIntensity=M08\r\n\0"s), std::nullopt,
                                 std::nullopt}));

INSTANTIATE_TEST_SUITE_P(
    TankMonitor, EveryButton,
    ::testing::Values(ButtonCase{"TMStartReport", "TankMonitorStartReport", RecordedCall::Kind::Put,
                                 Variant::OfInt16(1), u"<Object>.TankMonitorStartReport = (data)", Text()},
                      ButtonCase{"TMREPORTSTATUSBUTTON", "TankMonitorReportStatus", RecordedCall::Kind::Call,
                                 std::nullopt, u"(data)=<Object>.TankMonitorReportStatus", std::nullopt},
                      ButtonCase{"TMDATAREADBUTTON", "TankMonitorReport", RecordedCall::Kind::Call, std::nullopt,
                                 u"(data)=<Object>.TankMonitorReport", std::nullopt}));

INSTANTIATE_TEST_SUITE_P(
    ReaderTerminal, EveryButton,
    ::testing::Values(
        ButtonCase{"WAYNE_CHIP_READER_ENABLE", "ReaderControl", RecordedCall::Kind::Put,
                   Block(u"ReaderPosition=07\r\nChipReaderControl=Enable\r\n\0"s), std::nullopt, std::nullopt},
        ButtonCase{"WAYNE_CHIP_READER_DISABLE", "ReaderControl", RecordedCall::Kind::Put,
                   Block(u"ReaderPosition=07\r\nChipReaderControl=Disable\r\n\0"s), std::nullopt, std::nullopt},
        ButtonCase{"PACKETPRN", "PacketQueOutput", RecordedCall::Kind::Put,
                   Block(u"ReaderPosition=07\r\nPacketCount=147\r\nPacketData=" + kPrinterJob + u"\r\n\0"s),
                   std::nullopt, std::nullopt, true}));

TEST_F(OtherDevicesTest, GetCodeTwiceSendsTheSameBlockAndShowsTheSameSevenLines) {
    Press("CWGETCODEBUTTON");
    const Text firstShown = DeviceData();
    Press("CWGETCODEBUTTON");
    ASSERT_EQ(2u, test_.calls().size());
    EXPECT_TEXT(test_.calls()[0].text(), test_.calls()[1].text());
    EXPECT_TEXT(firstShown, DeviceData());
    EXPECT_TEXT(kGetCodeBody, DeviceData());
}

TEST_F(OtherDevicesTest, GetCodeShowsItsLinesEvenWhenTheAssignmentFails) {
    test_.server().QueueFailure("CarWashInformationRequest", RuntimeError(-2147467259, "Automation error"));
    Press("CWGETCODEBUTTON");
    ASSERT_EQ(1u, test_.report().errors.size());
    EXPECT_EQ(-2147467259, test_.report().errors[0].number());
    EXPECT_TEXT(kGetCodeBody, DeviceData());
    EXPECT_TEXT(kCarWashEcho, console().FunctionBox());
}

TEST_F(OtherDevicesTest, AFailedTankMonitorStartLeavesTheDeviceDataAsItWas) {
    test_.server().QueueFailure("TankMonitorStartReport", RuntimeError(438, "Object doesn't support this property"));
    Press("TMStartReport");
    ASSERT_EQ(1u, test_.report().errors.size());
    EXPECT_TEXT(kDeviceBefore, DeviceData());
    EXPECT_TEXT(u"<Object>.TankMonitorStartReport = (data)", console().FunctionBox());
}

TEST_F(OtherDevicesTest, AnEmptyOrNumericAnswerIsShownAsText) {
    test_.server().QueueAnswer("PriceSignDataRead", Variant::OfInt16(-12));
    Press("PRICE_SIGN_GET_STATUS");
    EXPECT_TEXT(u"-12", DeviceData());
    EXPECT_TEXT(kFunctionBefore, console().FunctionBox());
    test_.server().QueueAnswer("TankMonitorReport", Variant());
    Press("TMDATAREADBUTTON");
    EXPECT_TEXT(u"", DeviceData());
}

TEST_F(OtherDevicesTest, ReaderCommandsCarryThePositionSelectedAtThePress) {
    test_.Click("Button12");
    Press("WAYNE_CHIP_READER_ENABLE");
    test_.Click("Button3");
    Press("PACKETPRN");
    ASSERT_EQ(2u, test_.calls().size());
    EXPECT_TEXT(u"ReaderPosition=12\r\nChipReaderControl=Enable\r\n\0"s, test_.calls()[0].text());
    EXPECT_EQ(0u, test_.calls()[1].text().rfind(u"ReaderPosition=03\r\n", 0));
}

// The packet print follows the packet layout: a 47-character header whose
// count is the number of data characters between "PacketData=" and the
// closing CR LF NUL.
TEST_F(OtherDevicesTest, PacketPrintCountsItsOwnData) {
    Press("PACKETPRN");
    ASSERT_EQ(1u, test_.calls().size());
    const Text& block = test_.calls()[0].text();
    ASSERT_GT(block.size(), 47u + 3u);
    EXPECT_TEXT(u"PacketData=", block.substr(36, 11));
    const Text data = block.substr(47, block.size() - 47 - 3);
    EXPECT_TEXT(u"\r\n\0"s, block.substr(block.size() - 3));
    EXPECT_EQ(147u, data.size());
    EXPECT_TEXT(u"147", block.substr(31, 3));
    EXPECT_TEXT(kPrinterJob, data);
}

}  // namespace
}  // namespace vantrel
