// Whole sales on the simulator's manual clock: authorize, lift, fuel to the
// limit, stop, resume, hang up, pay out, as the console reads them back.
#include "simulator_fixture.h"

namespace vantrel::testing {
namespace {

const Text kFillup07 = Nul(u"FuelingPosition=07\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n");
const Text kMop1At03 = Nul(u"FuelingPosition=03\r\nHose=0\r\nMOP=1\r\nLimit=000500\r\n");

class SaleTest : public SimulatorTest {
protected:
    // A fill-up at position 07 with the nozzle of `hose` lifted: fuel flows.
    void Fueling07(int hose) {
        Put("Authorize", kFillup07);
        ASSERT_EQ("", simulator().forecourt().Lift(7, hose));
    }
};

TEST_F(SaleTest, AFillUpFlowsWithTimeAndEndsWhenTheCarIsFull) {
    Put("Authorize", kFillup07);
    EXPECT_TEXT(u"Authorized", Position(7, "State"));
    EXPECT_TEXT(u"999999", Position(7, "Limit"));
    Seconds(30);
    EXPECT_TEXT(u"0.000", Position(7, "Volume"));  // nobody has lifted a nozzle

    ASSERT_EQ("", simulator().forecourt().Lift(7, 2));
    EXPECT_TEXT(u"Fueling", Position(7, "State"));
    EXPECT_TEXT(u"1.529", Position(7, "UnitPrice"));  // hose 2, tier 1
    Seconds(10);
    EXPECT_TEXT(u"6.000", Position(7, "Volume"));  // 0.6 litres a second
    EXPECT_TEXT(u"9.17", Position(7, "Amount"));
    // This car takes 41 litres; the sale ends there by itself.
    Seconds(120);
    EXPECT_TEXT(u"Finished", Position(7, "State"));
    EXPECT_TEXT(u"41.000", Position(7, "Volume"));
    EXPECT_TEXT(u"62.68", Position(7, "Amount"));
    EXPECT_TRUE(Errors().empty());
}

TEST_F(SaleTest, APresetSlowsDownBeforeItsLimitAndStopsExactlyAtIt) {
    Put("Authorize", kMop1At03);
    ASSERT_EQ("", simulator().forecourt().Lift(3, 1));
    Seconds(5);
    EXPECT_TEXT(u"3.000", Position(3, "Volume"));
    // The last 15 cents flow at a sixth of the speed.
    Seconds(1);
    EXPECT_TEXT(u"3.370", Position(3, "Volume"));
    EXPECT_TEXT(u"Fueling", Position(3, "State"));
    Seconds(1);
    EXPECT_TEXT(u"Finished", Position(3, "State"));
    EXPECT_TEXT(u"5.00", Position(3, "Amount"));
    EXPECT_TEXT(u"3.427", Position(3, "Volume"));
}

TEST_F(SaleTest, StopWithZeroStopsEveryPositionAndNothingElse) {
    Put("Authorize", kFillup07);
    Put("Authorize", kMop1At03);
    ASSERT_EQ("", simulator().forecourt().Lift(7, 1));
    Put("Stop", u"0");
    EXPECT_TEXT(u"Stopped", Position(7, "State"));
    EXPECT_TEXT(u"Stopped", Position(3, "State"));
    EXPECT_TEXT(u"Idle", Position(12, "State"));
    EXPECT_TRUE(Errors().empty());
}

// A fresh position, a stop and resume, and what a payout leaves are the
// console scripts' whole sale; here the second payout.
TEST_F(SaleTest, ASaleIsPaidOutOnce) {
    Fueling07(2);
    Seconds(5);
    ASSERT_EQ("", simulator().forecourt().Hang(7));
    Put("PayOutSale", u"07");
    EXPECT_TEXT(u"Idle", Position(7, "State"));
    EXPECT_TEXT(u"0.000", Position(7, "Volume"));
    Put("PayOutSale", u"07");
    ASSERT_EQ(1u, Errors().size());
    EXPECT_TEXT(u"PayOutSale: position 07 has no sale to pay out (State=Idle)", Errors()[0]);
}

TEST_F(SaleTest, LiftingBeforeTheAuthorizationStartsTheSaleWithIt) {
    ASSERT_EQ("", simulator().forecourt().Lift(7, 3));
    EXPECT_TEXT(u"Idle", Position(7, "State"));
    EXPECT_TEXT(u"Up", Position(7, "Nozzle"));
    Put("Authorize", Nul(u"FuelingPosition=07\r\nHose=3\r\nMOP=2\r\nLimit=000100\r\n"));
    EXPECT_TEXT(u"Fueling", Position(7, "State"));
    EXPECT_TEXT(u"1.599", Position(7, "UnitPrice"));  // hose 3, tier 2
}

TEST_F(SaleTest, AHoseOutsideTheMultiHoseLockDeliversNothing) {
    // M00000101: hoses 1 and 3.
    Put("Authorize", Nul(u"FuelingPosition=07\r\nHose=M00000101\r\nMOP=1\r\nLimit=000100\r\n"));
    ASSERT_EQ("", simulator().forecourt().Lift(7, 2));
    Seconds(5);
    EXPECT_TEXT(u"Authorized", Position(7, "State"));
    EXPECT_TEXT(u"0.000", Position(7, "Volume"));
    ASSERT_EQ(1u, Errors().size());
    EXPECT_TEXT(u"Forecourt: position 07: hose 2 is lifted, but the authorization is for Hose=M00000101", Errors()[0]);
    ASSERT_EQ("", simulator().forecourt().Hang(7));
    ASSERT_EQ("", simulator().forecourt().Lift(7, 3));
    EXPECT_TEXT(u"Fueling", Position(7, "State"));
}

TEST_F(SaleTest, DeauthorizingKeepsFuelThatHasPassedForPayment) {
    Put("Authorize", kFillup07);
    Put("Deauthorize", u"07");
    EXPECT_TEXT(u"Idle", Position(7, "State"));
    EXPECT_TEXT(u"", Position(7, "Limit"));

    Fueling07(1);
    Seconds(1);
    Put("Deauthorize", u"07");
    Seconds(5);
    EXPECT_TEXT(u"Finished", Position(7, "State"));
    EXPECT_TEXT(u"0.600", Position(7, "Volume"));
}

TEST_F(SaleTest, NewPricesApplyToTheNextSaleAndShowInTheDispenserInformation) {
    Fueling07(1);
    Put("Price", Nul(u"FuelingPosition=07\r\nSlowdownPoint=15\r\nHose=1\r\nTier1=1111\r\nTier2=1111\r\nBlend=100\r\n"
                     u"Hose=2\r\nTier1=2222\r\nTier2=2222\r\nBlend=050\r\n"));
    EXPECT_TEXT(u"1.459", Position(7, "UnitPrice"));  // the running sale keeps its price
    const Text dispenser = About("DispenserInformation", 7);
    EXPECT_TEXT(u"2", Value(dispenser, "Hoses"));
    EXPECT_NE(Text::npos, dispenser.find(u"Hose=2\r\nProduct=Super\r\nTier1=2222\r\nTier2=2222\r\nBlend=050\r\n"));
    Seconds(5);
    ASSERT_EQ("", simulator().forecourt().Hang(7));
    Put("PayOutSale", u"07");
    Fueling07(1);
    EXPECT_TEXT(u"1.111", Position(7, "UnitPrice"));
}

TEST_F(SaleTest, PricesMayBeTypedWithDecimals) {
    Put("Price", Nul(u"FuelingPosition=07\r\nSlowdownPoint=15\r\nHose=1\r\nTier1=1.459\r\nTier2=2.5\r\nHose=2\r\n"
                     u"Tier1=0.9\r\nTier2=12\r\n"));
    const Text dispenser = About("DispenserInformation", 7);
    EXPECT_NE(Text::npos, dispenser.find(u"Hose=1\r\nProduct=Unleaded\r\nTier1=1459\r\nTier2=2500\r\n"));
    EXPECT_NE(Text::npos, dispenser.find(u"Hose=2\r\nProduct=Super\r\nTier1=0900\r\nTier2=0012\r\n"));
    Put("Price", Nul(u"FuelingPosition=07\r\nSlowdownPoint=15\r\nHose=1\r\nTier1=1.4599\r\nTier2=1\r\n"));
    Put("Price", Nul(u"FuelingPosition=07\r\nSlowdownPoint=15\r\nHose=1\r\nTier1=1.\r\nTier2=1\r\n"));
    EXPECT_EQ(2u, Errors().size());
}

TEST_F(SaleTest, FuelDeliveredComesOutOfItsTankInTheNextReport) {
    Fueling07(2);  // hose 2 draws from tank 2, Super
    Seconds(200);
    simulator().Put("TankMonitorStartReport", Variant::OfInt16(1));
    Seconds(5);
    const Text report = Call("TankMonitorReport");
    EXPECT_NE(Text::npos, report.find(u"Tank=2\r\nProduct=Super\r\nVolume=12209.000\r\nUllage=17791.000\r\n"));
    EXPECT_NE(Text::npos, report.find(u"Tank=1\r\nProduct=Unleaded\r\nVolume=18500.000\r\n"));
}

TEST_F(SaleTest, ForecourtEventsThatCannotHappenAreRefused) {
    struct Case {
        std::string (*event)(Simulator&);
        const char* refusal;
    };
    for (const Case& c : {
             Case{[](Simulator& s) { return s.forecourt().Lift(33, 1); }, "there is no fueling position 33 (1 to 32)"},
             Case{[](Simulator& s) { return s.forecourt().Lift(7, 5); }, "position 07 has hoses 1 to 4"},
             Case{[](Simulator& s) { return s.forecourt().Hang(7); }, "no nozzle is lifted at position 07"},
             Case{[](Simulator& s) { return s.forecourt().InsertCash(7, u"twenty"); },
                  "\"twenty\" is no amount of cash (20.00, 5, 0.50)"},
             Case{[](Simulator& s) { return s.forecourt().SwipeCard(7, u""); }, "a card needs track data"},
             Case{[](Simulator& s) { return s.forecourt().EnterWashCode(u"99999"); },
                  "code 99999 is not valid at this wash"},
         }) {
        EXPECT_EQ(c.refusal, c.event(simulator()));
    }
    ASSERT_EQ("", simulator().forecourt().Lift(7, 1));
    EXPECT_EQ("hose 1 is already lifted at position 07; hang it up first", simulator().forecourt().Lift(7, 2));
}

}  // namespace
}  // namespace vantrel::testing
