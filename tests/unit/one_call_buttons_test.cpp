// Every button that makes exactly one server call: the exact value the
// server receives, which boxes show what, whether the value went through
// CommandData, and what stays on show when the call fails.
#include "devices/devices.h"
#include "graphics/graphics.h"
#include "server/command_block.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vantrel {
namespace {

using namespace std::string_literals;  // u"...\0"s keeps the closing NUL
using testing::kCommandDataBefore;
using testing::kDataBefore;
using testing::kFunctionBefore;
using testing::RecordedCall;
using testing::TestConsole;
using Kind = RecordedCall::Kind;

constexpr char16_t kDeviceBefore[] = u"device data before";

// One press, written as the technician reads it: the button, the call, then
// what the boxes show. A box without an expectation must keep its text.
struct Press {
    std::string button;
    Kind kind = Kind::Put;
    std::string member;
    Variant value;  // assigned or passed; a by-reference call passes the position
    int position = 7;
    std::string form = kConsoleForm;
    std::string opener;  // the console button that shows the form
    Variant answer;
    std::optional<Text> functionBox;
    std::optional<Text> dataBox;
    std::optional<Text> deviceData;
    bool throughCommandData = false;
    bool echoFirst = true;  // the function box is written before the call
    bool closes = false;    // the press hides its window

    Press& At(int p) { return position = p, *this; }
    Press& Echo(Text text) { return functionBox = std::move(text), *this; }
    Press& Shows(Text text) { return dataBox = std::move(text), *this; }
    Press& ShowsBlock() { return Shows(value.text()); }
    Press& Through() { return throughCommandData = true, *this; }
    Press& Answers(Variant v) { return answer = std::move(v), *this; }
    Press& Device(Text text) { return deviceData = std::move(text), *this; }
    Press& EchoAfter() { return echoFirst = false, *this; }
    Press& In(std::string window, std::string button) { return form = window, opener = button, *this; }
    Press& Closes() { return closes = true, *this; }
};

Press Make(std::string button, Kind kind, std::string member, Variant value = {}) {
    Press press;
    press.button = std::move(button);
    press.kind = kind;
    press.member = std::move(member);
    press.value = std::move(value);
    return press;
}
Press Put(std::string button, std::string member, Variant value) {
    return Make(std::move(button), Kind::Put, std::move(member), std::move(value));
}
Press Put(std::string button, std::string member, Text block) {
    return Put(std::move(button), std::move(member), Variant::OfText(std::move(block)));
}
Press Call(std::string button, std::string member) { return Make(std::move(button), Kind::Call, std::move(member)); }
Press ByRef(std::string button, std::string member) {
    return Make(std::move(button), Kind::CallByRef, std::move(member));
}
Press InDevices(Press press) { return press.In(kOtherDevicesForm, "OTHERDEVICESBUTTON"); }

void PrintTo(const Press& press, std::ostream* out) { *out << press.button << " at " << press.position; }

// The families of rows: an assignment echoed in both boxes, with or
// without CommandData; a bare value that leaves one blank; a call whose
// answer the data box shows; a clear that shows one blank once it succeeded.
Press Through(const char* button, int position, const char* member, Text block, const char16_t* echo) {
    return Put(button, member, std::move(block)).At(position).Echo(echo).ShowsBlock().Through();
}
Press Direct(const char* button, int position, const char* member, Text block, const char16_t* echo) {
    return Put(button, member, std::move(block)).At(position).Echo(echo).ShowsBlock();
}
Press Bare(const char* button, int position, const char* member, Text value, const char16_t* echo) {
    return Put(button, member, std::move(value)).At(position).Echo(echo).Shows(u" ");
}
Press Read(Press call, Variant answer, const char16_t* echo, Text shown) {
    return call.Answers(std::move(answer)).Echo(echo).Shows(std::move(shown));
}
Press Clear(const char* button, const char* member, Variant answer) {
    return Call(button, member)
        .Answers(std::move(answer))
        .Echo(u"<Object>." + FromUtf8(member))
        .Shows(u" ")
        .EchoAfter();
}

constexpr char16_t kPlainAuthorize[] = u"<Object>.Authorize (data)";
constexpr char16_t kPriceEcho[] = u"<Object>.Price = (data)";
constexpr char16_t kDisplayEcho[] = u"<Object>.DispData = (data)";
constexpr char16_t kKeyEntryEcho[] = u"<Object>.KeyEntryData  = (data)";  // two blanks, not the member
constexpr char16_t kReceiptEcho[] = u"<Object>.PrintOutput = (data)";
constexpr char16_t kPrinterEcho[] = u"<Object>.PrinterOutput = (data)";
constexpr char16_t kStatusEcho[] = u"<Object>.SelfDiagnosticsReportStatus";
const Text kHoses12 = u"Hose=1\r\nTier1=1111\r\nTier2=1111\r\nHose=2\r\nTier1=2222\r\nTier2=2222\r\n";
const Text kHoses34 = u"Hose=3\r\nTier1=3333\r\nTier2=3333\r\nHose=4\r\nTier1=4444\r\nTier2=4444\r\n";
const Text kHoses56 = u"Hose=5\r\nTier1=5555\r\nTier2=5555\r\nHose=6\r\nTier1=6666\r\nTier2=6666\r\n";
// Six line ends after a receipt's text, twelve after a footer's.
const Text kReceiptLines =
    u"Line 2\r\nLine 3\r\nLine 4\r\nLine 5\r\nLine 6\r\nLine 7\r\nLine 8\r\nLine 9\r\nLine 10\r\n"
    u"LastLine !\r\n\r\n\r\n\r\n\r\n\r\n\0"s;
const Text kFooterTail = u"-----\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\0"s;

Press Price(const char* button, const Text& hoses) {
    return Direct(button, 9, "Price", u"FuelingPosition=09\r\nSlowdownPoint=15\r\n" + hoses + u"\0"s, kPriceEcho);
}

Press KeyEntry(const char* button, int position, const char16_t* mode) {
    const Text block = u"ReaderPosition=" + PositionText(position) + u"\r\nEntryMode=" + mode + u"\r\n\0"s;
    return Through(button, position, "KeyEntryType", block, kKeyEntryEcho);
}

std::vector<Press> Dispenser() {
    return {
        Through("Fillup", 7, "Authorize", u"FuelingPosition=07\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n\0"s,
                u"<Object>.Authorize = (data)"),
        Through("PresetMOP1", 12, "Authorize", u"FuelingPosition=12\r\nHose=0\r\nMOP=1\r\nLimit=000500\r\n\0"s,
                kPlainAuthorize),
        Through("PresetMOP2", 32, "Authorize", u"FuelingPosition=32\r\nHose=0\r\nMOP=2\r\nLimit=000500\r\n\0"s,
                kPlainAuthorize),
        Price("Price1", u"Hose=1\r\nTier1=1111\r\nTier2=1111\r\n"),
        Price("Price2", kHoses12),
        Price("Price3", kHoses12 + u"Hose=3\r\nTier1=3333\r\nTier2=3333\r\n"),
        Price("Price4", kHoses12 + kHoses34),
        Price("Price5", kHoses12 + kHoses34 + u"Hose=5\r\nTier1=5555\r\nTier2=5555\r\n"),
        Price("Price6", kHoses12 + kHoses34 + kHoses56),
        Price("Price3Blend",
              u"Hose=1\r\nTier1=1111\r\nTier2=1111\r\nBlend=100\r\nHose=2\r\nTier1=2222\r\nTier2=2222\r\n"
              u"Blend=050\r\nHose=3\r\nTier1=3333\r\nTier2=3333\r\nBlend=000\r\n"),
        // Bare values: no key, no separator, no NUL.
        Bare("Stop", 7, "Stop", u"07", u"<Object>.Stop = (07)"),
        Bare("STOP_ALL", 7, "Stop", u"0", u"<Object>.Stop = (0)"),
        Bare("Resume", 12, "Resume", u"12", u"<Object>.Resume = (12)"),
        Bare("Deauthorize", 3, "Deauthorize", u"03", u"<Object>.DeAuthorize = (03)"),
        Bare("PayOutSale", 32, "PayOutSale", u"32", u"<Object>.PayOutSale = (32)"),
        Read(ByRef("DispenserInfo", "DispenserInformation").At(12), Variant::OfText(u"Model=X\r\n\0"s),
             u"(return data)=<Object>.DispenserInformation (passed data)", u"Model=X\r\n\0"s),
    };
}

std::vector<Press> Terminal() {
    return {
        Through("Display", 7, "DisplayData", u"ReaderPosition=07\r\nMessage=Display Msg 1\r\nLine 2 Displayed\r\n\0"s,
                kDisplayEcho),
        Through("Display2", 32, "DisplayData", u"ReaderPosition=32\r\nMessage=Display Msg 2\r\nLine 2 Displayed\r\n\0"s,
                kDisplayEcho),
        Bare("Beeper", 5, "BeeperControl", u"ReaderPosition=05\nBeepCounts=03\n\0"s, u"<Object>.BeepData = (data)"),
        Direct("Print", 7, "PrintOutput",
               u"ReaderPosition=07\r\nJob=Receipt\r\nMessage=Vantrel\r\n-----Receipt1-----\r\nLine 1 Receipt1\r\n" +
                   kReceiptLines,
               kReceiptEcho),
        Direct(
            "PrintReceipt2", 12, "PrintOutput",
            u"ReaderPosition=12\r\nJob=Receipt\r\nMessage=Vantrel\r\n-----Receipt2-----\r\nLine 1\r\n" + kReceiptLines,
            kReceiptEcho),
        Direct("PrintHeader", 3, "PrintOutput", u"ReaderPosition=03\r\nJob=Header\r\nMessage=-----Header 1-----\r\n\0"s,
               kPrinterEcho),
        Direct("Header2", 3, "PrintOutput", u"ReaderPosition=03\r\nJob=Header\r\nMessage=-----Header 2-----\r\n\0"s,
               kPrinterEcho),
        Direct("PrintFooter", 20, "PrintOutput",
               u"ReaderPosition=20\r\nJob=Footer\r\nMessage=-----Footer 1" + kFooterTail, kPrinterEcho),
        Direct("Footer2", 20, "PrintOutput", u"ReaderPosition=20\r\nJob=Footer\r\nMessage=-----Footer 2" + kFooterTail,
               kPrinterEcho),
        // Terminal 01 whatever is selected, and nothing on show.
        Put("BarCodePrint", "PrintOutput",
            u"ReaderPosition=01\r\nJob=Receipt\r\nMessage=Vantrel\r\nLine 1\r\nLine 2\r\nLine 3\r\nLine 4\r\n\x1b"
            u"B0202354000006\x03\r\nTestLine 5\r\nTestLine 6\r\nTestLine 7\r\nTestLine 8\r\nTestLine 9\r\n"
            u"TestLine 10\r\nLastLine !\r\n\r\n\r\n\r\n\r\n\r\n\0"s)
            .At(12),
        KeyEntry("KeyEntryDNoCur", 7, u"DESEncryptionNoCursor"),
        KeyEntry("KeyEntryF", 7, u"AnyKey"),
        KeyEntry("KeyEntryNE", 9, u"NumericWithEcho"),
        KeyEntry("KeyEntryNENC", 10, u"NumericWithEchoNoCursor"),
        KeyEntry("KeyEntryNNE", 1, u"NumericWithOutEcho"),
        KeyEntry("KeyEntryNNENC", 32, u"NumericWithOutEchoNoCursor"),
        Read(ByRef("ReaderInfo", "ReaderInformation"), Variant::OfText(u"Reader=07\r\nType=QCAT\r\n\0"s),
             u"(return data)=<Object>.ReaderInformation (passed data)", u"Reader=07\r\nType=QCAT\r\n\0"s),
    };
}

std::vector<Press> Queues() {
    const Text controls = u"Card=1\r\nData=\x1b\x03\0end\n"s;
    return {
        Read(Call("CardQue", "CardQue"), Variant::OfText(controls), u"<data>=<Object>.CardQue", controls),
        Read(Call("KeyQue", "KeyQue"), Variant(), u"<data>=<Object>.KeyQue", u""),
        Read(Call("CashIn", "CashInQue"), Variant::OfText(u""), u"(data)=<Object>.CashInQue", u""),
        Read(Call("QueCounts", "QueCountQuery"), Variant::OfInt16(-7), u"<data>=<Object>.QueCountQuery", u"-7"),
        // The packet view of an empty answer; the others are the view's own tests.
        Read(Call("PacketQue", "PacketQueInput"), Variant::OfText(u""), u"(data)=<Object>.PacketQueInput", u""),
        Clear("ClearCardEntry", "ClearTopCardQue", Variant::OfInt16(3)),
        Clear("ClearCashEntry", "ClearTopCashQue", Variant::OfText(u" 12 ")),
        Clear("ClearKeyEntry", "ClearTopKeyQue", Variant()),
        Clear("ClearErrorQue", "ClearErrorQue", Variant::OfBoolean(true)),
        Clear("ClearPacketEntry", "ClearPacketEntry", Variant::OfInt32(-32768)),
        Through("PacketOut", 9, "PacketQueOutput",
                u"ReaderPosition=09\r\nPacketCount=003\r\nPacketData=C\x10\x07\r\n\0"s,
                u"<Object>.PacketQueOutput = (data)"),
    };
}

std::vector<Press> System() {
    return {
        Read(Call("SystemVersions", "SystemVersions"), Variant::OfText(u"App=10.29\r\nLink=\x1bup"),
             u"(data)=<Object>.SystemVersions", u"App=10.29\r\nLink=\x1bup"),
        Call("SelfTestStart", "SelfDiagnosticsReportStart")
            .Answers(Variant::OfInt16(7))
            .Echo(u"<Object>.SelfDiagnosticsReportStart"),
        Read(Call("SelfTestStatus", "SelfDiagnosticsReportStatus"), Variant(), kStatusEcho,
             u"Self Diagnositcs\r\nreport Complete"),
        Read(Call("SelfTestStatus", "SelfDiagnosticsReportStatus"), Variant::OfInt16(-1), kStatusEcho,
             u"Self Diagnositcs\r\nreport busy"),
        Call("HELP_BUTTON", "InvokeHelpFile").Answers(Variant::OfInt16(-1)),
    };
}

const Text kCarWashEcho = u"<Object>.CarWashInformationRequest = <data>";

Press CarWash(const char* button, const Text& block) {
    return InDevices(Put(button, "CarWashInformationRequest", block)).Echo(kCarWashEcho);
}

Press DeviceRead(const char* button, const char* member, const char16_t* echo) {
    const Text answer = u"answer of " + FromUtf8(member) + u"\r\nwith\0NUL"s;
    Press press = InDevices(Call(button, member)).Answers(Variant::OfText(answer)).Device(answer);
    return echo ? press.Echo(echo) : press;
}

// The window never writes the console's data box.
std::vector<Press> OtherDevices() {
    return {
        CarWash("CWGETCODEBUTTON",
                u"RequestCarWashCode\r\nProgramNumber=01\r\nPriceLevel=01\r\nOptionCount=2\r\nOptionNumber=01\r\n"
                u"PriceLevel=01\r\nOptionNumber=03\r\nPriceLevel=01\r\n\0"s)
            .Device(u"ProgramNumber=01\r\nPriceLevel=01\r\nOptionCount=2\r\nOptionNumber=01\r\nPriceLevel=01\r\n"
                    u"OptionNumber=03\r\nPriceLevel=01\r\n"),
        CarWash("CANCELCODEBUTTON", u"CancelCarWashCode\r\nCarWashCode=\r\n\0"s),
        CarWash("CODESTATUS_BUTTON", u"CarWashCodeStatus\r\nCarWashCode=\r\n\0"s),
        CarWash("KEYREADBUTTON", u"ReturnKeyData\r\n\0"s),
        CarWash("PRICEREADBUTTON", u"ReturnPriceData\r\n\0"s),
        CarWash("REPORTREADBUTTON", u"ReturnReportData\r\n\0"s),
        CarWash("RFIDREADBUTTON", u"ReturnRFIDData\r\n\0"s),
        CarWash("TRANSREADBUTTON", u"ReturnTransactionData\r\n\0"s),
        CarWash("CWCARDREADBUTTON", u"ReturnCardData\r\n\0"s),
        DeviceRead("CAR_WASHSTATUSBUTTON", "CarWashRequestStatus", u"(data)=<Object>.CarWashRequestStatus"),
        DeviceRead("CARWASHREADDATABUTTON", "CarWashDataRead", u"(data)=<Object>.CarWashDataRead"),
        DeviceRead("COMMANDSTATUSBUTTON", "CarWashOperationStatus", u"(data)=<Object>.CarWashOperationStatus"),
        DeviceRead("PRICE_SIGN_GET_STATUS", "PriceSignDataRead", nullptr),
        InDevices(Put("PRICE_SIGN_SEND_PRICES", "PriceSignDataSend",
                      u"Command=SendPrices\r\nLine1=001000\r\nLine2=002000\r\nLine3=003000\r\nLine4=004000\r\n"
                      u"Line5=005000\r\n\0"s)),
        InDevices(
            Put("PRICE_SIGN_SEND_CONTROL", "PriceSignDataSend", u"Command=DisplayControl\r\nIntensity=M08\r\n\0"s)),
        // The whole number 1, not a text; the last report goes once the start went through.
        InDevices(Put("TMStartReport", "TankMonitorStartReport", Variant::OfInt16(1)))
            .Echo(u"<Object>.TankMonitorStartReport = (data)")
            .Device(u""),
        DeviceRead("TMREPORTSTATUSBUTTON", "TankMonitorReportStatus", u"(data)=<Object>.TankMonitorReportStatus"),
        DeviceRead("TMDATAREADBUTTON", "TankMonitorReport", u"(data)=<Object>.TankMonitorReport"),
        InDevices(
            Put("WAYNE_CHIP_READER_ENABLE", "ReaderControl", u"ReaderPosition=07\r\nChipReaderControl=Enable\r\n\0"s)),
        InDevices(Put("WAYNE_CHIP_READER_DISABLE", "ReaderControl",
                      u"ReaderPosition=07\r\nChipReaderControl=Disable\r\n\0"s)),
        // The one command of the window that goes through CommandData.
        InDevices(Put("PACKETPRN", "PacketQueOutput",
                      u"ReaderPosition=07\r\nPacketCount=147\r\nPacketData=<PrinterCommand><PrintCommand "
                      u"SequenceNumber=\"0\"><PrintBarCode Characters=\"73513537\" Symbology=\"EAN_8\"/><CutPaper/>"
                      u"</PrintCommand></PrinterCommand>\r\n\0"s))
            .Through(),
    };
}

// The screens and test functions at the first and the last position.
std::vector<Press> Graphics() {
    const Text esc = u"\x1b";
    const Text head = esc + u"G" + esc + u"\x1a" + u"000" + esc;
    const Text aerial = esc + u"G" + esc + u"A12" + esc + u"F\"Aerial\"14";
    const Text crLfNul = u"\r\n\0"s;
    const std::vector<std::pair<const char*, Text>> screens = {
        {"GilbarcoInfo", head + u"=100100Hello @ 100 / 100" + crLfNul},
        {"Wayne2Line", esc + u"G2" + esc + u"\x1a" + u"000" + esc + u"=001002Hello (001/002)" + crLfNul},
        {"Wayne3Line", esc + u"G3" + esc + u"\x1a" + u"000" + esc + u"=010020Hello (010/020)" + crLfNul},
        {"Wayne4Line", esc + u"G4" + esc + u"\x1a" + u"000" + esc + u"=040030Hello (040/030)" + crLfNul},
        {"Wayne5Line", esc + u"G5" + esc + u"\x1a" + u"000" + esc + u"=065030Hello (065/030)" + crLfNul},
        {"WayneQCat", head + u"=001001Hello (First Line)" + esc + u"=001015Hello (Second Line)" + esc +
                          u"=030120Col/Row (30/120)" + crLfNul},
        {"iXCAT_FORMAT_LINE", aerial + esc + u"=001001First Line" + esc + u"=025020Second Line" + esc +
                                  u"=050040Third Line" + esc + u"=075060Fourth Line" + esc + u"=100080Fifth Line" +
                                  esc + u"=125100Sixth Line" + esc + u"=150120Seventh Line" + esc +
                                  u"=175140Eigth Line" + esc + u"=200160Ninth Line\r\n\n"},
        {"iXCAT_MULTI_LINE", aerial + u"The First Line\nThe Second Line\nThe Third Line\nThe Fourth Line\n"
                                      u"The Fifth Line\nThe Sixth Line\nThe Seventh Line\nThe Eigth Line\r\n\n"},
        {"iXCAT_FUNC", esc + u"G" + esc + u"S1\"Key 1\"" + esc + u"S2\"Key 2\"" + esc + u"S3\"Key 3\"" + esc +
                           u"S4\"Key 4\"" + esc + u"S5\"Key 5\"" + esc + u"S6\"Key 6\"" + esc + u"S7\"Key 7\"" + esc +
                           u"S8\"Key 8\"" + esc + u"A12Select A Key"},
    };
    const Text prompt =
        u"<DisplaySecurePromptCommand SequenceNumber=\"0\" PromptId=\"3\" Language=\"en\" "
        u"SecurityLevel=\"Encrypted\" MaxLength=\"4\" AutoTerminate=\"true\" Hidden=\"false\" "
        u"PINSupportData=\"5A3C19E07B42D68F\"/>";
    std::vector<Press> presses;
    for (const int position : {1, 32}) {
        const Text reader = u"ReaderPosition=" + PositionText(position) + u"\r\n";
        for (const auto& [button, message] : screens) {
            presses.push_back(Through(button, position, "DisplayData", reader + u"Message=" + message, kDisplayEcho)
                                  .In(kGraphicsDisplayForm, "InfoDisplay")
                                  .Closes());
        }
        // The test functions pass their own values, show nothing and stay open.
        presses.push_back(
            Put("iXCAT_DES_TEST", "PacketQueOutput", reader + u"PacketCount=185\r\nPacketData=" + prompt + u"\r\n\0"s)
                .At(position)
                .In(kTestFunctionForm, "TEST_FUNCTION_BUTTON"));
        presses.push_back(Put("SecialTests", "DisplayData",
                              reader + u"Message=" + head + u"A22" + esc +
                                  u"F\"Courier New\"14Center this very very long xxxxxxxxx text line\r\n\0"s)
                              .At(position)
                              .In(kTestFunctionForm, "TEST_FUNCTION_BUTTON"));
    }
    return presses;
}

class OneCall : public ::testing::TestWithParam<Press> {
protected:
    // The console at the press's position with its window shown, every box
    // holding a text of its own so that a touch shows.
    void Prepare(const Press& press) {
        test.Select(press.position);
        if (!press.opener.empty()) {
            test.Click(press.opener);
        }
        test.server().calls.clear();
        testing::MarkUntouched(test.console());
        test.console().Form(kOtherDevicesForm).SetText("DeviceData", kDeviceBefore);
    }
    Variant Expected(const Press& press) const {
        return press.kind == Kind::CallByRef ? Variant::OfInt16(static_cast<std::int16_t>(press.position))
                                             : press.value;
    }
    void ExpectCall(const Press& press) {
        ASSERT_EQ(1u, test.calls().size());
        const RecordedCall& call = test.calls()[0];
        EXPECT_EQ(press.member, call.member);
        EXPECT_EQ(press.kind, call.kind);
        if (press.value.is(Variant::Kind::Text)) {
            EXPECT_TEXT(press.value.text(), call.text());
        }
        EXPECT_EQ(Expected(press), call.value.value_or(Variant()));
    }
    TestConsole test;
};

TEST_P(OneCall, SendsItsValueAndTouchesOnlyItsBoxes) {
    const Press& press = GetParam();
    Prepare(press);
    test.server().QueueAnswer(press.member, press.answer);
    test.Click(press.button, press.form);

    ASSERT_TRUE(test.report().errors.empty());
    ExpectCall(press);
    EXPECT_TEXT(press.functionBox.value_or(kFunctionBefore), test.console().FunctionBox());
    EXPECT_TEXT(press.dataBox.value_or(kDataBefore), test.console().DataBox());
    EXPECT_TEXT(press.deviceData.value_or(kDeviceBefore), test.console().Form(kOtherDevicesForm).TextOf("DeviceData"));
    EXPECT_EQ(press.throughCommandData ? press.value : Variant::OfText(kCommandDataBefore), test.console().CommandData);
    EXPECT_EQ(press.closes ? std::vector<std::string>{press.form} : std::vector<std::string>{}, test.windows().hidden);
    EXPECT_TRUE(test.prompter().boxes.empty());
}

// A failing call ends the console through the error report: the function box
// shows the command when it was written first, the data box keeps its text,
// a value already copied into CommandData stays there, and the window stays.
TEST_P(OneCall, AFailingCallGoesToTheReportAndStopsThere) {
    const Press& press = GetParam();
    Prepare(press);
    test.server().QueueFailure(press.member, RuntimeError(438, "Object doesn't support this property or method"));
    test.Click(press.button, press.form);

    ASSERT_EQ(1u, test.report().errors.size());
    EXPECT_EQ(438, test.report().errors[0].number());
    ExpectCall(press);
    EXPECT_TEXT(press.echoFirst ? press.functionBox.value_or(kFunctionBefore) : kFunctionBefore,
                test.console().FunctionBox());
    EXPECT_TEXT(kDataBefore, test.console().DataBox());
    EXPECT_EQ(press.throughCommandData ? press.value : Variant::OfText(kCommandDataBefore), test.console().CommandData);
    EXPECT_TRUE(test.windows().hidden.empty());
}

// An answer that is no 16-bit number ends the console even where the number
// is dropped, after the server has acted; the data box keeps its text.
TEST(DroppedNumbers, AnAnswerThatIsNoNumberEndsThroughTheReport) {
    struct Case {
        const char* button;
        const char* member;
        Variant answer;
        int error;
    };
    for (const Case& c : {
             Case{"ClearCardEntry", "ClearTopCardQue", Variant::OfText(u"abc"), 13},
             Case{"ClearCashEntry", "ClearTopCashQue", Variant::OfText(u"OK\r\n"), 13},
             Case{"ClearKeyEntry", "ClearTopKeyQue", Variant::OfInt32(70000), 6},
             Case{"ClearErrorQue", "ClearErrorQue", Variant::OfText(u"32768"), 6},
             Case{"ClearPacketEntry", "ClearPacketEntry", Variant::Null(), 94},
             Case{"KeyQue", "KeyQue", Variant::Null(), 94},
             Case{"PacketQue", "PacketQueInput", Variant::Null(), 94},
             Case{"SelfTestStart", "SelfDiagnosticsReportStart", Variant::OfText(u"started"), 13},
             Case{"SelfTestStatus", "SelfDiagnosticsReportStatus", Variant::OfInt32(40000), 6},
             Case{"HELP_BUTTON", "InvokeHelpFile", Variant::OfText(u"help"), 13},
             Case{"DispenserInfo", "DispenserInformation", Variant::Null(), 94},
         }) {
        TestConsole test;
        testing::MarkUntouched(test.console());
        test.server().QueueAnswer(c.member, c.answer);
        test.Click(c.button);
        EXPECT_EQ(std::vector<std::string>{c.member}, test.members()) << c.button;
        ASSERT_EQ(1u, test.report().errors.size()) << c.button;
        EXPECT_EQ(c.error, test.report().errors[0].number()) << c.button;
        EXPECT_TEXT(kDataBefore, test.console().DataBox());
    }
}

std::string Name(const ::testing::TestParamInfo<Press>& info) {
    return info.param.button + "_" + std::to_string(info.index);
}

INSTANTIATE_TEST_SUITE_P(Dispenser, OneCall, ::testing::ValuesIn(Dispenser()), Name);
INSTANTIATE_TEST_SUITE_P(Terminal, OneCall, ::testing::ValuesIn(Terminal()), Name);
INSTANTIATE_TEST_SUITE_P(Queues, OneCall, ::testing::ValuesIn(Queues()), Name);
INSTANTIATE_TEST_SUITE_P(System, OneCall, ::testing::ValuesIn(System()), Name);
INSTANTIATE_TEST_SUITE_P(OtherDevices, OneCall, ::testing::ValuesIn(OtherDevices()), Name);
INSTANTIATE_TEST_SUITE_P(Graphics, OneCall, ::testing::ValuesIn(Graphics()), Name);

}  // namespace
}  // namespace vantrel
