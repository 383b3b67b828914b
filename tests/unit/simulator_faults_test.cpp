// Faults on demand and the automatic traffic: what a technician queues is
// what the next call gets, in order, and random traffic is the same every run.
#include "simulator_fixture.h"

namespace vantrel::testing {
namespace {

using namespace std::chrono_literals;

const Text kFillup05 = Nul(u"FuelingPosition=05\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n");

using FaultTest = SimulatorTest;

TEST_F(FaultTest, QueuedAnswersComeFirstInOrderThenTheModelAgain) {
    simulator().QueueAnswer("QueCountQuery", Variant::OfText(u""));
    simulator().QueueAnswer("quecountquery", Variant::OfText(u"not a number"));
    simulator().QueueAnswer("QueCountQuery", Variant::OfInt32(70000));
    EXPECT_EQ(Variant::OfText(u""), simulator().Call("QueCountQuery"));
    EXPECT_EQ(Variant::OfText(u"not a number"), simulator().Call("QueCountQuery"));
    EXPECT_EQ(Variant::OfInt32(70000), simulator().Call("QueCountQuery"));
    EXPECT_TEXT(u"0", Value(Call("QueCountQuery"), "CardQue"));
    EXPECT_TRUE(simulator().PendingFaults().empty());
}

TEST_F(FaultTest, AFailureIsRaisedOnceAndTheFailedAssignmentChangesNothing) {
    simulator().QueueFailure("Authorize", RuntimeError(5, "Invalid procedure call or argument"));
    try {
        Put("Authorize", kFillup05);
        FAIL() << "the assignment should have failed";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(5, error.number());
        EXPECT_EQ("Invalid procedure call or argument", error.description());
    }
    EXPECT_TEXT(u"Idle", Position(5, "State"));
    Put("Authorize", kFillup05);
    EXPECT_TEXT(u"Authorized", Position(5, "State"));
}

TEST_F(FaultTest, ALateAnswerWaitsWithoutMovingTheModelsTime) {
    ASSERT_TRUE(simulator().QueueDelay("ReaderInformation", 1500ms));
    simulator().QueueAnswer("ReaderInformation", Variant::OfText(u"late"));
    ASSERT_TRUE(simulator().QueueDelay("CardQue", 250ms));
    EXPECT_TEXT(u"late", About("ReaderInformation", 1));
    EXPECT_EQ(1500ms, clock().waited());
    EXPECT_TEXT(u"", Call("CardQue"));
    EXPECT_EQ(1750ms, clock().waited());
    EXPECT_EQ(0ms, simulator().now());
    EXPECT_FALSE(simulator().QueueDelay("NoSuchMember", 10ms));
}

TEST_F(FaultTest, AnAnswerQueuedForAnAssignedMemberIsUsedUpWithoutEffect) {
    simulator().QueueAnswer("Authorize", Variant::OfText(u"ignored"));
    Put("Authorize", kFillup05);
    EXPECT_TEXT(u"Authorized", Position(5, "State"));
    EXPECT_TRUE(simulator().PendingFaults().empty());
}

TEST_F(FaultTest, PendingFaultsAreDescribedForTheWindow) {
    simulator().QueueFailure("CardQue", RuntimeError(438, "Object doesn't support this property or method"));
    simulator().QueueAnswer("TankMonitorReport", Variant::OfText(simulation::HugeText(1 << 20)));
    simulator().QueueAnswer("ClearErrorQue", Variant::OfInt32(-40000));
    ASSERT_TRUE(simulator().QueueDelay("Stop", 3000ms));
    EXPECT_EQ(
        (std::vector<std::string>{
            "Stop: late by 3000 ms", "CardQue: fails with 438 \"Object doesn't support this property or method\"",
            "TankMonitorReport: answers a text of 1048576 characters", "ClearErrorQue: answers the number -40000"}),
        simulator().PendingFaults());
}

TEST(HugeText, HasExactlyTheLengthAskedForInLinesOfEighty) {
    for (const std::size_t length : {std::size_t{0}, std::size_t{5}, std::size_t{80}, std::size_t{16} << 20}) {
        const Text text = simulation::HugeText(length);
        ASSERT_EQ(length, text.size());
        if (length >= 80) {
            EXPECT_TEXT(u"Filler=XXXX", text.substr(0, 11));
            EXPECT_TEXT(u"\r\n", text.substr(78, 2));
        }
    }
    EXPECT_TEXT(u"Fille", simulation::HugeText(5));
}

// Everything a view of the forecourt can see, in one text.
Text Snapshot(SimulatorHarness& test) {
    Text all;
    for (int position = 1; position <= simulation::kPositions; ++position) {
        all += test.Position(position);
    }
    return all + test.Call("QueCountQuery") + test.Call("CardQue") + test.Call("KeyQue");
}

using TrafficTest = SimulatorTest;

TEST_F(TrafficTest, AutomaticTrafficIsPlausibleAndTheSameEveryRun) {
    Put("Authorize", kFillup05);
    simulator().SetAutomatic(true);
    Seconds(600);
    // The authorized pump was used and its finished sale hung up.
    EXPECT_TEXT(u"Finished", Position(5, "State"));
    EXPECT_TEXT(u"Down", Position(5, "Nozzle"));
    const Text counts = Call("QueCountQuery");
    EXPECT_NE(u"0", Value(counts, "CardQue"));
    EXPECT_NE(u"0", Value(counts, "CashInQue"));

    SimulatorHarness again;
    again.Put("Authorize", kFillup05);
    again.simulator().SetAutomatic(true);
    again.Seconds(600);
    EXPECT_TEXT(Snapshot(*this), Snapshot(again));

    // Off means off: nothing more happens.
    simulator().SetAutomatic(false);
    const Text before = Snapshot(*this);
    Seconds(600);
    EXPECT_TEXT(before, Snapshot(*this));
}

}  // namespace
}  // namespace vantrel::testing
