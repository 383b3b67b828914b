// Every server member the console uses, made to fail in each way that fits
// how the console invokes it, and driven through the program in script mode.
// Where the console ends, it ends through the error report with exit code 1;
// ReadErrorQue shows "Error" and goes on; everything else shows exactly the
// text that came back. No run may end by a signal or hang.
#include "e2e/reliability.h"
#include "simulator/simulator.h"

#include <gmock/gmock.h>

#include <set>
#include <string>
#include <vector>

namespace vantrel::testing {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

enum class Style {
    Assignment,
    Text,
    Numeric,
    WithPosition,
};

enum class Fault {
    Raised,      // the server raises an error
    Empty,       // an empty text comes back
    NoNumber,    // a text that is no number
    OutOfRange,  // a number outside 16 bits
    Huge,        // a 16 MB answer
};

constexpr const char* kFaultNames[] = {"Raised", "Empty", "NoNumber", "OutOfRange", "Huge"};

// How the technician reaches a member: lines that open its window, lines
// that make the call once, and the box its answer lands in.
struct Member {
    const char* name;
    Style style;
    const char* open;
    const char* call;
    const char* box = nullptr;           // InBox or DeviceData; none for assignments
    const char16_t* whenZero = nullptr;  // numeric members: the data box after an answer of 0
    const char* way = "";                // names a second command that calls the same member
};

constexpr char kDevices[] = "click OTHERDEVICESBUTTON\n";
constexpr char kTests[] = "click TEST_FUNCTION_BUTTON\n";
// What the data box shows before the faulty call, so that a box the call
// must not touch, or must empty, can be told apart from one never written.
constexpr char16_t kBefore[] = u"before";

const Member kMembers[] = {
    {"Authorize", Style::Assignment, "", "click Fillup\n"},
    {"Price", Style::Assignment, "", "click Price1\n"},
    {"DisplayData", Style::Assignment, "", "click Display\n"},
    {"DisplayData", Style::Assignment, "click InfoDisplay\n", "click Wayne2Line\n", nullptr, nullptr, "Graphics"},
    {"DisplayData", Style::Assignment, kTests, "click SecialTests\n", nullptr, nullptr, "SpecialTests"},
    {"PrintOutput", Style::Assignment, "", "click Print\n"},
    {"BeeperControl", Style::Assignment, "", "click Beeper\n"},
    {"KeyEntryType", Style::Assignment, "", "click KeyEntryNE\n"},
    {"KeyPadConfiguration", Style::Assignment, "", "answer no\nclick KeyPad\n"},
    {"KeyPadConfiguration", Style::Assignment, "click STRESS_BUTTON\n", "tick\n", nullptr, nullptr, "StressTick"},
    {"PacketQueOutput", Style::Assignment, "", "click PacketOut\n"},
    {"PacketQueOutput", Style::Assignment, "", "click KeyEntryD\n", nullptr, nullptr, "DesLeadIn"},
    {"PacketQueOutput", Style::Assignment, kDevices, "click PACKETPRN\n", nullptr, nullptr, "PacketPrint"},
    {"PacketQueOutput", Style::Assignment, kTests, "click iXCAT_DES_TEST\n", nullptr, nullptr, "SecurePrompt"},
    {"PreloadDisplayMessage", Style::Assignment, "", "click PreLoadMSGs\n"},
    {"WindowControl", Style::Assignment, "", "answer yes\nclick WindowControl\n"},
    {"SerialPortParameters", Style::Assignment, "menu \"Set-up\" \"Serial Port Para...\"\n", "answer ok\nclick SPOK\n"},
    {"CarWashInformationRequest", Style::Assignment, kDevices, "click CWGETCODEBUTTON\n"},
    {"PriceSignDataSend", Style::Assignment, kDevices, "click PRICE_SIGN_SEND_PRICES\n"},
    {"ReaderControl", Style::Assignment, kDevices, "click WAYNE_CHIP_READER_ENABLE\n"},
    {"Stop", Style::Assignment, "", "click Stop\n"},
    {"Stop", Style::Assignment, "", "click STOP_ALL\n", nullptr, nullptr, "All"},
    {"Deauthorize", Style::Assignment, "", "click Deauthorize\n"},
    {"Resume", Style::Assignment, "", "click Resume\n"},
    {"PayOutSale", Style::Assignment, "", "click PayOutSale\n"},
    {"TankMonitorStartReport", Style::Assignment, kDevices, "click TMStartReport\n"},

    {"CardQue", Style::Text, "", "click CardQue\n", "InBox"},
    {"CashInQue", Style::Text, "", "click CashIn\n", "InBox"},
    {"KeyQue", Style::Text, "", "click KeyQue\n", "InBox"},
    {"PacketQueInput", Style::Text, "", "click PacketQue\n", "InBox"},
    {"QueCountQuery", Style::Text, "", "click QueCounts\n", "InBox"},
    {"ReadErrorQue", Style::Text, "", "click ReadErrorQue\n", "InBox"},
    {"SystemVersions", Style::Text, "", "click SystemVersions\n", "InBox"},
    {"CarWashRequestStatus", Style::Text, kDevices, "click CAR_WASHSTATUSBUTTON\n", "DeviceData"},
    {"CarWashDataRead", Style::Text, kDevices, "click CARWASHREADDATABUTTON\n", "DeviceData"},
    {"CarWashOperationStatus", Style::Text, kDevices, "click COMMANDSTATUSBUTTON\n", "DeviceData"},
    {"PriceSignDataRead", Style::Text, kDevices, "click PRICE_SIGN_GET_STATUS\n", "DeviceData"},
    {"TankMonitorReport", Style::Text, kDevices, "click TMDATAREADBUTTON\n", "DeviceData"},
    {"TankMonitorReportStatus", Style::Text, kDevices, "click TMREPORTSTATUSBUTTON\n", "DeviceData"},

    {"ClearTopCardQue", Style::Numeric, "", "click ClearCardEntry\n", "InBox", u" "},
    {"ClearTopCashQue", Style::Numeric, "", "click ClearCashEntry\n", "InBox", u" "},
    {"ClearTopKeyQue", Style::Numeric, "", "click ClearKeyEntry\n", "InBox", u" "},
    {"ClearErrorQue", Style::Numeric, "", "click ClearErrorQue\n", "InBox", u" "},
    {"ClearPacketEntry", Style::Numeric, "", "click ClearPacketEntry\n", "InBox", u" "},
    {"InvokeHelpFile", Style::Numeric, "", "click HELP_BUTTON\n", "InBox", kBefore},
    {"SelfDiagnosticsReportStart", Style::Numeric, "", "click SelfTestStart\n", "InBox", kBefore},
    {"SelfDiagnosticsReportStatus", Style::Numeric, "", "click SelfTestStatus\n", "InBox",
     u"Self Diagnositcs\r\nreport Complete"},

    {"FuelingPositionInformation", Style::WithPosition, "", "click Button5\n", "InBox"},
    {"DispenserInformation", Style::WithPosition, "", "click DispenserInfo\n", "InBox"},
    {"ReaderInformation", Style::WithPosition, "", "click ReaderInfo\n", "InBox"},
};

constexpr std::size_t kHugeLength = std::size_t{16} << 20;
const Text kNoNumber(u"Status=Busy\r\n\0\x1b", 15);

Text PacketAnswer(TextView count, TextView data) {
    return u"ReaderPosition=01\r\nPacketCount=" + Text(count) + u"\r\nPacketData=" + Text(data);
}

// The packet view of ASCII data, as the technician reads it.
Text Visible(TextView data) {
    static constexpr char16_t kHex[] = u"0123456789ABCDEF";
    Text shown;
    for (const char16_t c : data) {
        shown.push_back(u' ');
        if (c >= 33 && c <= 126) {
            shown.push_back(c);
        } else {
            if (c >= 16) {
                shown.push_back(kHex[c >> 4]);
            }
            shown.push_back(kHex[c & 15]);
        }
    }
    return shown;
}

struct Case {
    const Member* member;
    Fault fault;
};

std::string CaseName(const ::testing::TestParamInfo<Case>& info) {
    const Member& member = *info.param.member;
    std::string name = member.name;
    if (*member.way) {
        name += std::string("_") + member.way;
    }
    return name + "_" + kFaultNames[static_cast<int>(info.param.fault)];
}

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.member->name << " " << c.member->way << " " << kFaultNames[static_cast<int>(c.fault)];
}

// An assignment returns nothing: only a raised error applies to it.
std::vector<Case> AllCases() {
    std::vector<Case> cases;
    for (const Member& member : kMembers) {
        for (const Fault fault : {Fault::Raised, Fault::Empty, Fault::NoNumber, Fault::OutOfRange, Fault::Huge}) {
            if (member.style != Style::Assignment || fault == Fault::Raised) {
                cases.push_back({&member, fault});
            }
        }
    }
    return cases;
}

// What the console must do: end through the report, guard itself, or show
// a text.
struct Outcome {
    enum class Kind {
        Ends,
        Guarded,
        Shows,
    };
    Kind kind;
    int number = 0;
    std::string description;
    Text shown;
};

Outcome Ends(int number, std::string description) { return {Outcome::Kind::Ends, number, std::move(description), {}}; }
Outcome Shows(Text text) { return {Outcome::Kind::Shows, 0, {}, std::move(text)}; }

class FaultMatrix : public ::testing::TestWithParam<Case> {
protected:
    const Member& member() const { return *GetParam().member; }
    Fault fault() const { return GetParam().fault; }
    bool IsPacketInput() const { return std::string(member().name) == "PacketQueInput"; }

    // The server's side of the fault, as one script line.
    std::string Injection() const {
        const std::string answer = std::string("server answer ") + member().name + " ";
        switch (fault()) {
        case Fault::Raised: return std::string("server fail ") + member().name + " 440 \"Automation error\"\n";
        case Fault::Empty: return answer + "\"\"\n";
        case Fault::NoNumber:
            return answer + ScriptQuoted(IsPacketInput() ? PacketAnswer(u"abc", u"xyz\r\n\0") : kNoNumber) + "\n";
        case Fault::OutOfRange:
            return IsPacketInput() ? answer + ScriptQuoted(PacketAnswer(u"1E5", u"abc")) + "\n"
                                   : answer + "number 70000\n";
        case Fault::Huge: return answer + ScriptQuoted(HugeAnswer()) + "\n";
        }
        return {};
    }

    // Sixteen megabytes of digits for a number, of lines for a text, of
    // data behind a packet header for the packet input.
    Text HugeAnswer() const {
        if (member().style == Style::Numeric) {
            Text digits(kHugeLength, u'9');
            return digits;
        }
        if (IsPacketInput()) {
            return PacketAnswer(u"999", LargeAnswer(kHugeLength - 47));
        }
        return HugeText();
    }

    static const Text& HugeText() {
        static const Text text = LargeAnswer(kHugeLength);
        return text;
    }

    Outcome Expected() const {
        if (fault() == Fault::Raised) {
            if (std::string(member().name) == "ReadErrorQue") {
                return {Outcome::Kind::Guarded, 0, {}, kBefore};
            }
            return Ends(440, "Automation error");
        }
        if (member().style == Style::Numeric) {
            switch (fault()) {
            case Fault::Empty: return Shows(member().whenZero);
            case Fault::NoNumber: return Ends(13, "Type mismatch");
            default: return Ends(6, "Overflow");
            }
        }
        if (IsPacketInput()) {
            const Text header = PacketAnswer(u"999", u"");
            switch (fault()) {
            case Fault::NoNumber: return Shows(PacketAnswer(u"abc", u""));
            case Fault::OutOfRange: return Ends(6, "Overflow");
            case Fault::Huge: return Shows(header + Visible(LargeAnswer(999)));
            default: return Shows(u"");
            }
        }
        switch (fault()) {
        case Fault::NoNumber: return Shows(kNoNumber);
        case Fault::OutOfRange: return Shows(u"70000");
        case Fault::Huge: return Shows(HugeText());
        default: return Shows(u"");
        }
    }

    std::string Script(const Outcome& outcome) const {
        std::string script;
        const std::string box = member().box ? member().box : "";
        // The data box of the console holds a text of its own first, as does
        // the other-devices window's box once it is open.
        if (box == "InBox") {
            script += "server answer CardQue \"before\"\nclick CardQue\n";
        }
        script += member().open;
        if (box == "DeviceData") {
            script += "server answer CarWashDataRead \"before\"\nclick CARWASHREADDATABUTTON\n";
        }
        script += Injection();
        if (outcome.kind == Outcome::Kind::Guarded) {
            script += "answer ok\n";  // the "Error" box
        }
        script += member().call;
        if (outcome.kind == Outcome::Kind::Ends) {
            script += "expect VantrelTest.TextBox \"never reached\"\n";
        } else {
            script += "print " + box + "\n";
        }
        return script;
    }
};

TEST_P(FaultMatrix, EndsThroughTheReportGuardsOrShowsTheExactText) {
    const Outcome outcome = Expected();
    const ScriptRun run = RunConsole(Script(outcome));
    ASSERT_TRUE(EndedByItself(run));
    const std::vector<std::string> calls = Calls(run);
    ASSERT_FALSE(calls.empty());
    const std::string called = std::string(R"("member":")") + member().name + "\"";

    const std::string& last = calls.back();
    EXPECT_THAT(last.substr(0, 100), HasSubstr(called));
    switch (outcome.kind) {
    case Outcome::Kind::Ends:
        EXPECT_TRUE(EndedThroughTheReport(run, outcome.number, outcome.description));
        // The failing call is the last one; an answer that cannot be converted
        // came back from a call that was made.
        EXPECT_NE(std::string::npos,
                  last.find(fault() == Fault::Raised ? R"(,"error":{"number":440,)" : R"(,"result":{)"))
            << last.substr(0, 300);
        break;
    case Outcome::Kind::Guarded:
        EXPECT_EQ(0, run.exitCode) << run.err;
        EXPECT_THAT(run.trace,
                    Contains(R"({"op":"msgbox","text":"Error","title":"VantrelTest","buttons":"ok","answer":"ok"})"));
        EXPECT_EQ(Printed("InBox", outcome.shown), run.out);
        break;
    case Outcome::Kind::Shows:
        EXPECT_EQ(0, run.exitCode) << run.err.substr(0, 2000);
        // Compared whole, however large: a single character lost or added
        // would fail.
        EXPECT_TRUE(run.out == Printed(member().box, outcome.shown))
            << "printed " << run.out.size() << " characters: " << run.out.substr(0, 300);
        break;
    }
    RemoveRunFolder(run);
}

INSTANTIATE_TEST_SUITE_P(EveryMember, FaultMatrix, ::testing::ValuesIn(AllCases()), CaseName);

TEST(FaultMatrixTable, NamesTheFortyThreeMembersTheSimulatorServes) {
    Simulator simulator;
    std::set<std::string> members;
    for (const Member& member : kMembers) {
        EXPECT_TRUE(simulator.Knows(member.name)) << member.name;
        members.insert(member.name);
    }
    // The 43 members the console's commands assign or call.
    EXPECT_EQ(43u, members.size());
}

}  // namespace
}  // namespace vantrel::testing
