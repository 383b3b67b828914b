// Blocks the simulator cannot act on are not thrown back: each leaves one
// readable entry in the error queue and the model as it was. Members it does
// not know, or used the wrong way, raise error 438.
#include "simulator_fixture.h"

namespace vantrel::testing {
namespace {

struct Rejected {
    const char* member;
    Text value;
    const char16_t* entry;
};

class RejectedBlockTest : public SimulatorTest, public ::testing::WithParamInterface<Rejected> {};

TEST_P(RejectedBlockTest, LandsInTheErrorQueueAndChangesNothing) {
    const Rejected& c = GetParam();
    const Text positionBefore = Position(7);
    const Text readerBefore = About("ReaderInformation", 7);
    simulator().Put(c.member, Variant::OfText(c.value));
    const std::vector<Text> errors = Errors();
    ASSERT_EQ(1u, errors.size());
    EXPECT_TEXT(c.entry, errors[0]);
    EXPECT_TEXT(positionBefore, Position(7));
    EXPECT_TEXT(readerBefore, About("ReaderInformation", 7));
    EXPECT_TEXT(u"CardQue=0\r\nKeyQue=0\r\nCashInQue=0\r\nErrorQue=1\r\nPacketQue=0\r\n", Call("QueCountQuery"));
}

INSTANTIATE_TEST_SUITE_P(
    Blocks, RejectedBlockTest,
    ::testing::Values(
        Rejected{"Authorize", Nul(u"FuelingPosition=33\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n"),
                 u"Authorize: line 1: FuelingPosition=33 is not a fueling position (01 to 32)"},
        Rejected{"Authorize", Nul(u""), u"Authorize: the block ends where FuelingPosition= was expected"},
        Rejected{"Authorize", Nul(u"FuelingPosition=07\r\nHose=9\r\nMOP=F\r\nLimit=999999\r\n"),
                 u"Authorize: Hose=9 is not a hose (0 for any, 1 to 8, or a mask M00000101)"},
        Rejected{"Authorize", Nul(u"FuelingPosition=07\r\nHose=0\r\nMOP=F \r\nLimit=12\r\n"),
                 u"Authorize: MOP=F  is not a method of payment (1, 2 or F)"},
        Rejected{"Authorize", Nul(u"FuelingPosition=07\r\nHose=3\r\nMOP=1\r\nLimit=12a\r\n"),
                 u"Authorize: Limit=12a is not a limit (1 to 6 digits, in cents, not 0)"},
        Rejected{"Authorize", Nul(u"FuelingPosition=07\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\nExtra=1\r\n"),
                 u"Authorize: line 5: nothing more expected, found \"Extra=1\""},
        Rejected{"Authorize", Text(u"FuelingPosition=07\0\r\nHose=0\r\n", 29),
                 u"Authorize: a NUL stands before the end of the block"},
        Rejected{"Price", Nul(u"FuelingPosition=07\r\nSlowdownPoint=15\r\nTier1=1111\r\n"),
                 u"Price: line 3: Hose= expected, found \"Tier1=1111\""},
        Rejected{"Price", Nul(u""), u"Price: the block ends where FuelingPosition= was expected"},
        Rejected{"Price", Nul(u"FuelingPosition=07\r\nSlowdownPoint=15\r\n"), u"Price: the block sets no hose prices"},
        Rejected{
            "Price", Nul(u"FuelingPosition=07\r\nSlowdownPoint=15\r\nHose=1\r\nTier1=1111\r\nTier2=abc\r\n"),
            u"Price: line 5: Tier2=abc is not a price (1 to 6 digits in thousandths, or up to three decimals: 1459, "
            u"1.459)"},
        Rejected{"Price", Nul(u"FuelingPosition=07\r\nSlowdownPoint=15\r\nHose=9\r\nTier1=1\r\nTier2=1\r\n"),
                 u"Price: line 3: Hose=9 is not one digit up to 8"},
        Rejected{"Price",
                 Nul(u"FuelingPosition=07\r\nSlowdownPoint=15\r\nHose=1\r\nTier1=1\r\nTier2=1\r\nHose=1\r\nTier1=2\r\n"
                     u"Tier2=2\r\n"),
                 u"Price: line 6: Hose=1 comes twice"},
        Rejected{"KeyEntryType", Nul(u"ReaderPosition=07\r\nEntryMode=Numeric\r\n"),
                 u"KeyEntryType: EntryMode=Numeric is not a key entry mode"},
        Rejected{"DisplayData", Nul(u"ReaderPosition=07\r\nMessage=\x1bQ\r\n"),
                 u"DisplayData: character 1 of the message: unknown display element ESC Q"},
        Rejected{"DisplayData", Nul(u"ReaderPosition=07\r\nMessage=\x1b=12\r\n"),
                 u"DisplayData: character 1 of the message: ESC = needs three digits of column and three of row"},
        Rejected{"PrintOutput", Nul(u"ReaderPosition=07\r\nJob=Ticket\r\nMessage=x\r\n"),
                 u"PrintOutput: Job=Ticket is not a print job (Receipt, Header or Footer)"},
        Rejected{"PrintOutput",
                 Nul(u"ReaderPosition=07\r\nJob=Receipt\r\nMessage=x\r\n\x1b"
                     u"B0202354000007\x03\r\n"),
                 u"PrintOutput: bar code 0202354000007 has a wrong check digit"},
        Rejected{"PacketQueOutput", Nul(u"ReaderPosition=07\r\nPacketCount=009\r\nPacketData=C\x10\x07\r\n"),
                 u"PacketQueOutput: PacketCount=9 but only 6 characters follow PacketData="},
        Rejected{"PacketQueOutput", Nul(u"ReaderPosition=7\r\nPacketCount=003\r\nPacketData=C\x10\x07\r\n"),
                 u"PacketQueOutput: ReaderPosition=7 is not a fueling position (01 to 32)"},
        Rejected{"PacketQueOutput", Nul(u"ReaderPosition=07\r\nPacketCount=003\r\nData=C\x10\x07\r\n"),
                 u"PacketQueOutput: PacketData= does not follow the PacketCount= line"},
        Rejected{"BeeperControl", Nul(u"ReaderPosition=07\nBeepCounts=3\n"),
                 u"BeeperControl: line 2: BeepCounts=3 is not 2 digits up to 99"},
        Rejected{"KeyPadConfiguration", Nul(u"ReaderPosition=07\r\nKeyData=\n"),
                 u"KeyPadConfiguration: line 2: KeyData= is empty"},
        Rejected{"ReaderControl", Nul(u"ReaderPosition=07\r\nChipReaderControl=On\r\n"),
                 u"ReaderControl: line 2: ChipReaderControl=On is neither Enable nor Disable"},
        Rejected{"PreloadDisplayMessage", Nul(u"Section=1\r\nMessageType=Banner\r\nMessageNumber=1\r\nMessage=x\r\n"),
                 u"PreloadDisplayMessage: line 2: MessageType=Banner is neither Card nor Printer"},
        Rejected{"WindowControl", Nul(u"Show\r\n"), u"WindowControl: line 1: \"Show\" is neither Visible nor Hide"},
        Rejected{"SerialPortParameters", Nul(u"100BaudRate=9600\r\nLogFileName=c:\\xfer\\logfile.log\r\n"),
                 u"SerialPortParameters: line 1: LogFileName= expected, found \"100BaudRate=9600\""},
        Rejected{"CarWashInformationRequest", Nul(u"WashMyCar\r\n"),
                 u"CarWashInformationRequest: line 1: WashMyCar is not a car wash request"},
        Rejected{"CarWashInformationRequest", Nul(u"CancelCarWashCode\r\nCarWashCode=12345\r\n"),
                 u"CarWashInformationRequest: CarWashCode=12345 is not a code of this wash"},
        Rejected{"CarWashInformationRequest", Nul(u"CarWashCodeStatus\r\nCarWashCode=\r\n"),
                 u"CarWashInformationRequest: line 2: CarWashCode= is empty"},
        Rejected{"CarWashInformationRequest",
                 Nul(u"SetPriceData\r\nProgramCount=01\r\nProgramNumber=01\r\nFullPrice=500\r\n"),
                 u"CarWashInformationRequest: line 4: FullPrice=500 is not five digits"},
        Rejected{"CarWashInformationRequest",
                 Nul(u"RequestCarWashCode\r\nProgramNumber=07\r\nPriceLevel=01\r\nOptionCount=0\r\n"),
                 u"CarWashInformationRequest: line 2: ProgramNumber=07 is not in the price table"},
        Rejected{"PriceSignDataSend", Nul(u"Command=Blink\r\n"),
                 u"PriceSignDataSend: line 1: Command=Blink is neither SendPrices nor DisplayControl"},
        Rejected{"PriceSignDataSend", Nul(u"Command=SendPrices\r\nLine1=1000\r\n"),
                 u"PriceSignDataSend: line 2: Line1=1000 is not six digits"},
        Rejected{"Stop", Text(u"7"), u"Stop: \"7\" is not a fueling position (01 to 32, or 0 for all)"},
        Rejected{"PayOutSale", Text(u"0"), u"PayOutSale: \"0\" is not a fueling position (01 to 32)"},
        Rejected{"Resume", Text(u"07"), u"Resume: position 07 is not stopped (State=Idle)"},
        Rejected{"Deauthorize", Text(u"07"), u"Deauthorize: position 07 is not authorized (State=Idle)"},
        Rejected{"TankMonitorStartReport", Text(u"1"),
                 u"TankMonitorStartReport: the report starts with the number 1, not a value that is no number"}));

TEST_F(SimulatorTest, ANumberWhereABlockBelongsIsReportedNotApplied) {
    simulator().Put("DisplayData", Variant::OfInt16(7));
    simulator().Put("TankMonitorStartReport", Variant::OfInt32(70000));
    const std::vector<Text> errors = Errors();
    ASSERT_EQ(2u, errors.size());
    EXPECT_TEXT(u"DisplayData: the value is no text", errors[0]);
    EXPECT_TEXT(u"TankMonitorStartReport: the report starts with the number 1, not the number 70000", errors[1]);
    EXPECT_TEXT(u"ReportStatus=Idle\r\n", Call("TankMonitorReportStatus"));
}

TEST_F(SimulatorTest, AnInformationRequestOutOfRangeAnswersEmptyAndReports) {
    EXPECT_TEXT(u"", About("FuelingPositionInformation", 33));
    EXPECT_TEXT(u"", About("ReaderInformation", 0));
    const std::vector<Text> errors = Errors();
    ASSERT_EQ(2u, errors.size());
    EXPECT_TEXT(u"FuelingPositionInformation: there is no fueling position 33 (1 to 32)", errors[0]);
    EXPECT_TEXT(u"ReaderInformation: there is no fueling position 0 (1 to 32)", errors[1]);
}

TEST_F(SimulatorTest, ControlCharactersInARejectedValueShowAsNamesOnOneLine) {
    Put("KeyEntryType", Nul(u"ReaderPosition=07\r\nEntryMode=Any\x1bKey\x10\r\n"));
    ASSERT_EQ(1u, Errors().size());
    EXPECT_TEXT(u"KeyEntryType: EntryMode=Any<ESC>Key<x10> is not a key entry mode", Errors()[0]);
}

TEST_F(SimulatorTest, TheErrorQueueKeepsTheNewestHundredAndCountsTheRest) {
    for (int i = 0; i < 105; ++i) {
        Put("Stop", Text(u"x") + FromUtf8(std::to_string(i)));
    }
    const Text answer = Call("ReadErrorQue");
    const Text oldestKept = u"ErrorCount=100\r\nErrorsLost=5\r\nError=Stop: \"x5\" is not";
    EXPECT_TEXT(oldestKept, answer.substr(0, oldestKept.size()));
    EXPECT_EQ(0, Number("ClearErrorQue"));
    EXPECT_TEXT(u"ErrorCount=0\r\n", Call("ReadErrorQue"));
}

TEST_F(SimulatorTest, UnknownMembersAndWrongInvocationsRaise438) {
    const auto raises438 = [](auto&& call) {
        try {
            call();
        } catch (const RuntimeError& error) {
            return error.number() == 438;
        }
        return false;
    };
    Variant position = Variant::OfInt16(7);
    EXPECT_TRUE(raises438([&] { simulator().Put("NoSuchMember", Variant::OfText(u"x")); }));
    EXPECT_TRUE(raises438([&] { simulator().Call("NoSuchMember"); }));
    EXPECT_TRUE(raises438([&] { simulator().Put("CardQue", Variant::OfText(u"x")); }));
    EXPECT_TRUE(raises438([&] { simulator().Call("Authorize"); }));
    EXPECT_TRUE(raises438([&] { simulator().Call("CardQue", position); }));
    EXPECT_TRUE(raises438([&] { simulator().CallByRef("ClearErrorQue", position); }));
    EXPECT_TRUE(raises438([&] { simulator().Call("DispenserInformation"); }));
    // Late binding ignores case.
    EXPECT_TRUE(simulator().Knows("fuelingpositioninformation"));
    EXPECT_TEXT(u"ReaderPosition=07\r\n", ToText(simulator().CallByRef("READERINFORMATION", position)).substr(0, 19));
    EXPECT_TEXT(u"FuelingPosition=07\r\n",
                ToText(simulator().CallByRef("fuelingPositionInformation", position)).substr(0, 20));
    EXPECT_TRUE(Errors().empty());
}

}  // namespace
}  // namespace vantrel::testing
