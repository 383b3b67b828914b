#include "e2e/e2e.h"

#include <gmock/gmock.h>

namespace vantrel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(QueueScript, ReadsShowTheServersAnswersAndClearsShowABlank) {
    const ScriptRun run = RunConsole(R"vts(
server answer CardQue "Card=4000\r\nTrack2=\e;123?\0"
server answer KeyQue ""
server answer CashInQue "Bill=20\r\n"
server answer QueCountQuery number 4
server answer ClearTopCardQue number 1
server answer ClearPacketEntry "0"
click CardQue
expect TextBox "<data>=<Object>.CardQue"
expect InBox "Card=4000\r\nTrack2=\e;123?\0"
click ClearCardEntry
expect TextBox "<Object>.ClearTopCardQue"
expect InBox " "
click KeyQue
expect TextBox "<data>=<Object>.KeyQue"
expect InBox ""
click CashIn
expect TextBox "(data)=<Object>.CashInQue"
expect InBox "Bill=20\r\n"
click QueCounts
expect TextBox "<data>=<Object>.QueCountQuery"
expect InBox "4"
click ClearPacketEntry
expect TextBox "<Object>.ClearPacketEntry"
expect InBox " "
click CashOut
expect TextBox "<Object>.CashOutQue = (data)"
expect InBox " "
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    // Cash Output adds no call of its own.
    EXPECT_THAT(Calls(run), ElementsAre(HasSubstr(R"("member":"CardQue","result":{"text":"Card=4000\r\n)"),
                                        HasSubstr(R"("member":"ClearTopCardQue","result":{"i2":1})"),
                                        HasSubstr(R"("member":"KeyQue","result":{"text":""})"),
                                        HasSubstr(R"("member":"CashInQue")"),
                                        HasSubstr(R"("member":"QueCountQuery","result":{"i2":4})"),
                                        HasSubstr(R"("member":"ClearPacketEntry","result":{"text":"0"})")));
}

TEST(QueueScript, AFailingErrorQueueReadShowsErrorAndTheConsoleGoesOn) {
    const ScriptRun run = RunConsole(R"vts(
server answer CardQue "Card=1"
click CardQue
server fail ReadErrorQue 440 "Automation error"
answer ok
click ReadErrorQue
expect TextBox "(data)=<Object>.ReadErrorQue"
expect InBox "Card=1"
server answer ReadErrorQue "Error=Reader 3 timeout\r\n"
click ReadErrorQue
expect InBox "Error=Reader 3 timeout\r\n"
click ClearErrorQue
expect TextBox "<Object>.ClearErrorQue"
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_THAT(run.trace, ::testing::Contains(
                               R"({"op":"msgbox","text":"Error","title":"VantrelTest","buttons":"ok","answer":"ok"})"));
    EXPECT_EQ(4u, Calls(run).size());
}

TEST(QueueScript, OtherQueueFailuresEndTheConsoleThroughTheReport) {
    struct Case {
        const char* script;
        const char* report;
        const char* lastCall;
    };
    for (const Case& c : {
             Case{"server fail CardQue 440 \"Automation error\"\nclick CardQue\n",
                  "Run-time error 440: Automation error", R"("member":"CardQue","error":{"number":440)"},
             // The clear has gone to the server before its answer fails.
             Case{"server answer ClearTopKeyQue \"abc\"\nclick ClearKeyEntry\n", "Run-time error 13: Type mismatch",
                  R"("member":"ClearTopKeyQue","result":{"text":"abc"})"},
             Case{"server answer ClearTopCashQue number 70000\nclick ClearCashEntry\n", "Run-time error 6: Overflow",
                  R"("member":"ClearTopCashQue","result":{"i4":70000})"},
         }) {
        const ScriptRun run = RunConsole(std::string(c.script) + "expect TextBox \"never reached\"\n");
        EXPECT_EQ(1, run.exitCode) << c.script << run.err;
        EXPECT_THAT(run.err, HasSubstr(c.report));
        ASSERT_FALSE(Calls(run).empty());
        EXPECT_THAT(Calls(run).back(), HasSubstr(c.lastCall));
        EXPECT_THAT(run.trace.back(), HasSubstr(R"({"op":"report")"));
    }
}

TEST(QueueScript, APacketSentAndOneReceived) {
    const ScriptRun run = RunConsole(R"vts(
click Button5
click PacketOut
expect TextBox "<Object>.PacketQueOutput = (data)"
expect InBox "ReaderPosition=05\r\nPacketCount=003\r\nPacketData=C\x10\x07\r\n\0"
server answer PacketQueInput "ReaderPosition=05\r\nPacketCount=006\r\nPacketData= \x7f\u20ac\u00ffZ\0\r\n\0"
click PacketQue
expect TextBox "(data)=<Object>.PacketQueInput"
expect InBox "ReaderPosition=05\r\nPacketCount=006\r\nPacketData= 20 7F 80 FF Z 0"
click PacketQue
expect InBox ""
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    const auto calls = Calls(run);
    ASSERT_EQ(4u, calls.size());
    EXPECT_THAT(calls[1],
                HasSubstr(R"({"op":"put","member":"PacketQueOutput","value":{"text":)"
                          R"("ReaderPosition=05\r\nPacketCount=003\r\nPacketData=C\u0010\u0007\r\n\u0000"}})"));
    EXPECT_THAT(calls[2], HasSubstr(R"("member":"PacketQueInput")"));
}

TEST(QueueScript, APacketThatCannotBeShownEndsTheConsole) {
    struct Case {
        const char* answer;
        const char* report;
    };
    for (const Case& c : {
             Case{R"(ReaderPosition=05\r\nPacketCount=009\r\nPacketData=short)",
                  "Run-time error 5: Invalid procedure call or argument"},
             Case{R"(ReaderPosition=05\r\nPacketCount=1E5\r\nPacketData=x\r\n\0)", "Run-time error 6: Overflow"},
         }) {
        const ScriptRun run = RunConsole(std::string("server answer PacketQueInput \"") + c.answer +
                                         "\"\nclick PacketQue\nexpect TextBox \"never reached\"\n");
        EXPECT_EQ(1, run.exitCode) << c.answer << run.err;
        EXPECT_THAT(run.err, HasSubstr(c.report));
    }
}

}  // namespace
}  // namespace vantrel::testing
