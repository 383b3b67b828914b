// The car wash, the price sign, the tank monitor, the reader terminals and
// the server's own members, as the console's commands reach them.
#include "car_wash_tables.h"
#include "simulator_fixture.h"

#include "server/command_block.h"

namespace vantrel::testing {
namespace {

const Text kGetCode = Nul(
    u"RequestCarWashCode\r\nProgramNumber=01\r\nPriceLevel=01\r\nOptionCount=2\r\nOptionNumber=01\r\nPriceLevel=01\r\n"
    u"OptionNumber=03\r\nPriceLevel=01\r\n");

Text CodeCommand(const char16_t* word, const Text& code) {
    return Nul(Text(word) + u"\r\nCarWashCode=" + code + u"\r\n");
}

using DevicesTest = SimulatorTest;

// The sale, status and cancel as the console reads them are the script
// tests'; here what a script does not show.
TEST_F(DevicesTest, ACarWashRequestIsBusyThenCompleteAndACodeCancelsOnce) {
    EXPECT_TEXT(u"Request=None\r\nStatus=Idle\r\n", Call("CarWashRequestStatus"));
    Put("CarWashInformationRequest", kGetCode);
    EXPECT_TEXT(u"", Call("CarWashDataRead"));
    Seconds(2);
    EXPECT_TEXT(u"Request=RequestCarWashCode\r\nStatus=Complete\r\n", Call("CarWashRequestStatus"));
    const Text code = Value(Call("CarWashDataRead"), "CarWashCode");
    for (int k = 0; k < 2; ++k) {
        Put("CarWashInformationRequest", CodeCommand(u"CancelCarWashCode", code));
        Seconds(2);
    }
    ASSERT_EQ(1u, Errors().size());
    EXPECT_TEXT(u"CarWashInformationRequest: CarWashCode=" + code + u" is Cancelled already", Errors()[0]);
}

TEST_F(DevicesTest, ACodeEnteredAtTheBayStartsAWash) {
    Put("CarWashInformationRequest", kGetCode);
    Seconds(2);
    const Text code = Value(Call("CarWashDataRead"), "CarWashCode");
    ASSERT_EQ("", simulator().forecourt().EnterWashCode(code));
    EXPECT_TEXT(u"CarWash=Washing\r\nProgramNumber=01\r\nSecondsLeft=180\r\nCodesValid=0\r\n",
                Call("CarWashOperationStatus"));
    Put("CarWashInformationRequest", Nul(u"ReturnReportData\r\n"));
    Seconds(180);
    EXPECT_TEXT(
        u"CarWashCode=" + code + u"\r\nProgramNumber=01\r\nPrice=00560\r\n",
        (Put("CarWashInformationRequest", Nul(u"ReturnTransactionData\r\n")), Seconds(2), Call("CarWashDataRead")));
    EXPECT_TEXT(u"Ready", Value(Call("CarWashOperationStatus"), "CarWash"));
}

TEST_F(DevicesTest, ThePriceTablesAlternateAndAreReadBack) {
    for (const Text* table : {&kCarWashTable1, &kCarWashTable2}) {
        Put("CarWashInformationRequest", CarWashPriceBlock(*table));
        Put("CarWashInformationRequest", Nul(u"ReturnPriceData\r\n"));
        Seconds(2);
        EXPECT_TEXT(*table, Call("CarWashDataRead"));
    }
    // Program 1 now costs 5.01 at full price.
    Put("CarWashInformationRequest",
        Nul(u"RequestCarWashCode\r\nProgramNumber=01\r\nPriceLevel=01\r\nOptionCount=0\r\n"));
    Seconds(2);
    EXPECT_TEXT(u"00501", Value(Call("CarWashDataRead"), "Price"));
    EXPECT_TRUE(Errors().empty());
}

TEST_F(DevicesTest, TheOtherDataRequestsAnswerAfterTheirBusyTime) {
    struct Case {
        const char16_t* word;
        Text data;
    };
    for (const Case& c :
         {Case{u"ReturnReportData", u"CodesIssued=0\r\nCodesUsed=0\r\nCodesCancelled=0\r\nRevenue=0.00\r\n"},
          Case{u"ReturnKeyData", u"KeyData=\r\n"}, Case{u"ReturnCardData", u"CardData=\r\n"},
          Case{u"ReturnRFIDData", u"RFIDTag=\r\n"}, Case{u"ReturnTransactionData", u"CarWashCode=\r\n"}}) {
        Put("CarWashInformationRequest", Nul(Text(c.word) + u"\r\n"));
        EXPECT_TEXT(u"Busy", Value(Call("CarWashRequestStatus"), "Status")) << Escaped(c.word);
        Seconds(2);
        EXPECT_TEXT(c.word, Value(Call("CarWashRequestStatus"), "Request"));
        EXPECT_TEXT(c.data, Call("CarWashDataRead"));
    }
}

TEST_F(DevicesTest, SelfDiagnosticsAreBusyThenComplete) {
    EXPECT_EQ(0, Number("SelfDiagnosticsReportStatus"));
    EXPECT_EQ(0, Number("SelfDiagnosticsReportStart"));
    EXPECT_EQ(1, Number("SelfDiagnosticsReportStatus"));
    Seconds(3);
    EXPECT_EQ(0, Number("SelfDiagnosticsReportStatus"));
    EXPECT_TEXT(u"1", Value(Call("SystemVersions"), "DiagnosticsRuns"));
}

TEST_F(DevicesTest, TheServersWindowLinkAndHelpShowInItsVersions) {
    EXPECT_TEXT(u"Vantrel.Application 10.29 (built-in simulator)", Value(Call("SystemVersions"), "Application"));
    Put("WindowControl", Nul(u"Visible\r\n"));
    Put("SerialPortParameters", Nul(u"PortNumber=2\r\nBaudRate=9600\r\nLogFileName=c:\\xfer\\logfile.log\r\n"));
    EXPECT_EQ(0, Number("InvokeHelpFile"));
    Text versions = Call("SystemVersions");
    EXPECT_TEXT(u"Visible", Value(versions, "Window"));
    EXPECT_TEXT(u"COM2 9600 baud", Value(versions, "Link"));
    EXPECT_TEXT(u"c:\\xfer\\logfile.log", Value(versions, "LogFile"));
    // Baud clicks without a port append; the last rate counts.
    Put("SerialPortParameters", Nul(u"BaudRate=2400\r\nBaudRate=19200\r\nLogFileName=c:\\xfer\\logfile.log\r\n"));
    Put("WindowControl", Nul(u"Hide\r\n"));
    versions = Call("SystemVersions");
    EXPECT_TEXT(u"COM1 19200 baud", Value(versions, "Link"));
    EXPECT_TEXT(u"Hidden", Value(versions, "Window"));
    EXPECT_TRUE(Errors().empty());
}

TEST_F(DevicesTest, TheReaderShowsItsDisplayPrinterBeeperAndKeypad) {
    Put("DisplayData", Nul(u"ReaderPosition=07\r\nMessage=Display Msg 1\r\nLine 2 Displayed\r\n"));
    simulator().Put("BeeperControl", Variant::OfText(Nul(u"ReaderPosition=07\nBeepCounts=03\n")));
    Put("PrintOutput", Nul(u"ReaderPosition=07\r\nJob=Footer\r\nMessage=-----Footer 1-----\r\n\r\n\r\n\r\n\r\n\r\n\r\n"
                           u"\r\n\r\n\r\n\r\n\r\n"));
    Put("PrintOutput", Nul(u"ReaderPosition=07\r\nJob=Receipt\r\nMessage=Vantrel\r\nLine 1\r\n\x1b"
                           u"B0202354000006\x03\r\n"
                           u"LastLine !\r\n\r\n\r\n\r\n\r\n\r\n"));
    Put("KeyEntryType", Nul(u"ReaderPosition=07\r\nEntryMode=NumericWithEchoNoCursor\r\n"));
    simulator().Put("KeyPadConfiguration",
                    Variant::OfText(Nul(u"ReaderPosition=07\r\nKeyData=123@R456A@789NYL0EHCe\n")));
    Put("ReaderControl", Nul(u"ReaderPosition=07\r\nChipReaderControl=Enable\r\n"));
    Put("PacketQueOutput", Text(u"ReaderPosition=07\r\nPacketCount=017\r\nPacketData=44$*1234567890123"));
    EXPECT_TEXT(
        u"ReaderPosition=07\r\nDisplayLines=2\r\nDisplayLine1=Display Msg 1\r\nDisplayLine2=Line 2 Displayed\r\n"
        u"EntryMode=NumericWithEchoNoCursor\r\nKeyPad=123@R456A@789NYL0EHCe\r\nChipReader=Enable\r\nBeeps=3\r\n"
        u"PrintJobs=2\r\nLastJob=Receipt\r\nLastJobLines=4\r\nBarCode=0202354000006\r\nHeader=\r\n"
        u"Footer=-----Footer 1-----\r\nPacketsOut=1\r\nLastPacket=44$*1234567890123\r\nImage=\r\n"
        u"PreloadedCardMessages=0\r\nPreloadedPrinterMessages=0\r\n",
        About("ReaderInformation", 7));
    EXPECT_TRUE(Errors().empty());
}

TEST_F(DevicesTest, FormattedDisplayMessagesAreLaidOut) {
    struct Case {
        Text message;
        Text lines;
    };
    const Text esc(1, kEsc);
    const Text sub(1, kSub);
    for (const Case& c : {
             Case{esc + u"G2" + esc + sub + u"000" + esc + u"=001002Hello (001/002)\r\n",
                  u"DisplayLines=1\r\nDisplayLine1=@001,002 Hello (001/002)\r\n"},
             Case{esc + u"G" + esc + u"A12" + esc + u"F\"Aerial\"14" + esc + u"=001001First Line" + esc +
                      u"=025020Second Line\r\n\n",
                  u"DisplayLines=2\r\nDisplayLine1=@001,001 First Line\r\nDisplayLine2=@025,020 Second Line\r\n"
                  u"Font=Aerial 14\r\nAlign=12\r\n"},
             Case{esc + u"G" + esc + u"A12" + esc + u"F\"Aerial\"14The First Line\nThe Second Line\r\n\n",
                  u"DisplayLines=2\r\nDisplayLine1=The First Line\r\nDisplayLine2=The Second Line\r\nFont=Aerial 14\r\n"
                  u"Align=12\r\n"},
             Case{esc + u"G" + esc + u"S1\"Key 1\"" + esc + u"S8\"Key 8\"" + esc + u"A12Select A Key",
                  u"DisplayLines=1\r\nDisplayLine1=Select A Key\r\nAlign=12\r\nSoftKey1=Key 1\r\nSoftKey8=Key 8\r\n"},
         }) {
        Put("DisplayData", u"ReaderPosition=04\r\nMessage=" + c.message);
        const Text info = About("ReaderInformation", 4);
        const std::size_t from = info.find(u"DisplayLines=");
        EXPECT_TEXT(c.lines, info.substr(from, info.find(u"EntryMode=") - from)) << Escaped(c.message);
    }
    EXPECT_TRUE(Errors().empty());
}

TEST_F(DevicesTest, PreloadedMessagesGreetTheNextCard) {
    Put("PreloadDisplayMessage", Nul(u"Section=1\r\nMessageType=Card\r\nMessageNumber=1\r\nMessage=Get it Out\r\n"));
    Put("PreloadDisplayMessage",
        Nul(u"Section=1\r\nMessageType=Printer\r\nMessageNumber=4\r\nMessage=Printers BAD\r\n"));
    ASSERT_EQ("", simulator().forecourt().SwipeCard(2, u";1?"));
    const Text info = About("ReaderInformation", 2);
    EXPECT_TEXT(u"Get it Out", Value(info, "DisplayLine1"));
    EXPECT_TEXT(u"1", Value(info, "PreloadedCardMessages"));
    EXPECT_TEXT(u"1", Value(info, "PreloadedPrinterMessages"));
}

TEST_F(DevicesTest, PacketsToATerminalPrintOrPromptByTheirContent) {
    const Text job =
        u"<PrinterCommand><PrintCommand SequenceNumber=\"0\"><PrintBarCode Characters=\"73513537\" "
        u"Symbology=\"EAN_8\"/><CutPaper/></PrintCommand></PrinterCommand>";
    ASSERT_EQ(147u, job.size());
    Put("PacketQueOutput", Nul(u"ReaderPosition=12\r\nPacketCount=147\r\nPacketData=" + job + u"\r\n"));
    const Text info = About("ReaderInformation", 12);
    EXPECT_TEXT(u"Packet", Value(info, "LastJob"));
    EXPECT_TEXT(u"73513537", Value(info, "BarCode"));
    // An image packet: five count digits, no line end, no NUL.
    const Text image =
        u"<DisplayCommand><SetImageDetailsCommand SequenceNumber=\"0\"ImageId=\"1\" "
        u"Filename=\"Banner.png\" Language=\"en\">";
    Put("PacketQueOutput", u"ReaderPosition=12\r\nPacketCount=00106\r\nPacketData=" + image);
    EXPECT_TEXT(u"Banner.png", Value(About("ReaderInformation", 12), "Image"));
    EXPECT_TEXT(u"2", Value(About("ReaderInformation", 12), "PacketsOut"));
    EXPECT_TRUE(Errors().empty());
}

}  // namespace
}  // namespace vantrel::testing
