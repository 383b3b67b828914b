// vantrel-test --replay, the program itself: a record made by a script run
// replayed against the release it was made with, against each of the
// simulator's changed releases, with masks, JUnit and bad input.
#include "e2e/e2e.h"

#include <gmock/gmock.h>

#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace vantrel::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

struct ProgramRun {
    int exitCode = -1;
    std::string out;
    std::string err;
};

std::string Quoted(const std::string& word) {
    std::string out = "'";
    for (const char c : word) {
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return out + "'";
}

// The program built here, rather than the Windows program under Wine.
bool LinuxProgram() {
    const char* named = std::getenv("VANTREL_TEST_PROGRAM");
    return !named || !*named;
}

// The server is the built-in simulator, where --changed-release plays its
// releases, rather than the simulator DLL through COM.
bool BuiltInSimulator() {
    const char* choice = std::getenv("VANTREL_SERVER_CHOICE");
    return LinuxProgram() || (choice && std::string(choice) == "--simulator");
}

#define NEEDS_BUILT_IN_SIMULATOR()                                                                        \
    if (!BuiltInSimulator()) {                                                                            \
        GTEST_SKIP() << "the changed releases are the built-in simulator's; this run reaches its server " \
                        "through COM";                                                                    \
    }

// The program with these arguments. The Linux program runs without any
// display: a replay opens no window.
ProgramRun Program(const std::vector<std::string>& arguments, const std::string& environment = "") {
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    const std::string out = (folder / ("vantrel-replay-out-" + std::to_string(::getpid()))).string();
    std::string command = environment +
                          (LinuxProgram() ? " env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM" : "") +
                          " timeout 120 " + Quoted(ProgramUnderTest());
    for (const std::string& argument : arguments) {
        command += " " + Quoted(argument);
    }
    command += " > " + Quoted(out + ".out") + " 2> " + Quoted(out + ".err") + " < /dev/null";
    const int status = std::system(command.c_str());
    ProgramRun run;
    if (status != -1 && WIFEXITED(status) && WEXITSTATUS(status) < 124) {
        run.exitCode = WEXITSTATUS(status);
    }
    run.out = Slurp(out + ".out");
    run.err = Slurp(out + ".err");
    return run;
}

// A session made by the console itself: a position asked (by value), a
// fill-up sent, the dispenser and the reader asked (by reference), the
// versions and the card queue read.
constexpr char kSession[] =
    "click Button7\n"
    "click Fillup\n"
    "click DispenserInfo\n"
    "click ReaderInfo\n"
    "click SystemVersions\n"
    "click CardQue\n";

class ReplayE2E : public ::testing::Test {
protected:
    void SetUp() override {
        const ScriptRun made = RunConsole(kSession);
        ASSERT_EQ(made.exitCode, 0) << made.err;
        folder_ = made.directory;
        record_ = folder_ + "/trace.jsonl";
    }
    std::string File(const std::string& name) const { return folder_ + "/" + name; }

    std::string folder_;
    std::string record_;
};

TEST_F(ReplayE2E, TheSameReleaseGivesNoChange) {
    const ProgramRun run = Program({"--replay", record_, "--trace", File("own.jsonl")});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "replayed 7 events: 7 same, 0 masked, 0 changed, 0 new errors, 0 errors gone\n");
    // The replay's own record is a record too, and replays the same.
    const ProgramRun again = Program({"--replay", File("own.jsonl")});
    EXPECT_EQ(again.exitCode, 0) << again.err;
    EXPECT_EQ(again.out, run.out);
}

TEST_F(ReplayE2E, EachChangedReleaseShowsItsChangeAndNothingElse) {
    NEEDS_BUILT_IN_SIMULATOR();
    struct Case {
        std::string change;
        std::string report;
    };
    const std::vector<Case> cases = {
        {"renamed-key",
         "replayed 7 events: 6 same, 0 masked, 1 changed, 0 new errors, 0 errors gone\n"
         "#2 call FuelingPositionInformation, sent i2 7\n"
         "    key UnitPrice removed: old \"0.000\"\n"
         "    key Price added: new \"0.000\"\n"},
        {"added-line",
         "replayed 7 events: 6 same, 0 masked, 1 changed, 0 new errors, 0 errors gone\n"
         "#4 call byref DispenserInformation, sent i2 7\n"
         "    key Firmware added: new \"4.03\"\n"},
        {"raised-error",
         "replayed 7 events: 6 same, 0 masked, 0 changed, 1 new errors, 0 errors gone\n"
         "#7 call CardQue, sent nothing\n"
         "    new error: old \"\"  |  new error 57 Device I/O error\n"},
        {"version",
         "replayed 7 events: 6 same, 0 masked, 1 changed, 0 new errors, 0 errors gone\n"
         "#6 call SystemVersions, sent nothing\n"
         "    key Application changed: old \"Vantrel.Application 10.29 (built-in simulator)\"  |  "
         "new \"Vantrel.Application 10.30 (built-in simulator)\"\n"},
    };
    for (const Case& c : cases) {
        const ProgramRun run = Program({"--replay", record_, "--changed-release", c.change});
        EXPECT_EQ(run.exitCode, 1) << c.change << run.err;
        EXPECT_EQ(run.out, c.report) << c.change;
    }
}

TEST_F(ReplayE2E, ASlowerMemberIsListedWhenBothSidesHaveTimes) {
    NEEDS_BUILT_IN_SIMULATOR();
    // A plain trace has no times: the slower release changes no answer.
    const ProgramRun plain = Program({"--replay", record_, "--changed-release", "slower"});
    EXPECT_EQ(plain.exitCode, 0) << plain.err;
    EXPECT_THAT(plain.out, Not(HasSubstr("slower")));
    // Against a record with times, the one slower member is listed.
    ASSERT_EQ(Program({"--replay", record_, "--trace", File("timed.jsonl")}).exitCode, 0);
    const ProgramRun timed = Program({"--replay", File("timed.jsonl"), "--changed-release", "slower"});
    EXPECT_EQ(timed.exitCode, 1) << timed.err;
    EXPECT_THAT(timed.out, HasSubstr("replayed 7 events: 7 same, 0 masked, 0 changed, 0 new errors, 0 errors gone\n"
                                     "markedly slower (at least twice the time and 10 ms more):\n"
                                     "#5 call byref ReaderInformation: "));
    EXPECT_EQ(std::count(timed.out.begin(), timed.out.end(), '\n'), 3) << timed.out;
}

TEST_F(ReplayE2E, MaskedDifferencesAreCountedAndAnUnusedLineIsWarned) {
    NEEDS_BUILT_IN_SIMULATOR();
    std::ofstream(File("mask.txt")) << "# the new release's version is known\n"
                                       "SystemVersions Application\n"
                                       "FuelingPositionInformation Volume\n";
    const ProgramRun run = Program({"--replay", record_, "--changed-release", "version", "--mask", File("mask.txt")});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "replayed 7 events: 6 same, 1 masked, 0 changed, 0 new errors, 0 errors gone\n");
    EXPECT_THAT(run.err, HasSubstr("warning: the mask " + File("mask.txt") + " line 3 matches nothing"));

    // The example mask reads, and hides nothing of this session.
    const std::string example = std::string(VANTREL_SOURCE_DIR) + "/examples/release-check.mask";
    const ProgramRun plain = Program({"--replay", record_, "--mask", example});
    EXPECT_EQ(plain.exitCode, 0) << plain.err;
    EXPECT_THAT(plain.err, HasSubstr("line 12 matches nothing"));
}

TEST_F(ReplayE2E, ALearningRunWritesAMaskThatTheNextReplayUses) {
    // Two replays against the same release: what differs between them is
    // the mask. The session's answers do not flow with the clock, so it
    // learns no rule, and says so in the file's head.
    const ProgramRun learn = Program({"--replay", record_, "--learn-mask", File("learned.txt")});
    EXPECT_EQ(learn.exitCode, 0) << learn.err;
    EXPECT_EQ(learn.out, "learned 0 mask lines, written to " + File("learned.txt") + "\n");
    EXPECT_EQ(Slurp(File("learned.txt")), "# Learned from two replays of " + record_ +
                                              " against the same server:\n"
                                              "# what differed between them. Read it before keeping it "
                                              "(vantrel-test --mask).\n");
    const ProgramRun masked = Program({"--replay", record_, "--mask", File("learned.txt")});
    EXPECT_EQ(masked.exitCode, 0) << masked.err;
    EXPECT_FALSE(std::filesystem::exists(File("learned.txt.first-run.jsonl")));
}

TEST_F(ReplayE2E, JUnitHasOneCaseAServerEventAndTheDifferenceInItsFailure) {
    NEEDS_BUILT_IN_SIMULATOR();
    const ProgramRun run =
        Program({"--replay", record_, "--changed-release", "version,raised-error", "--junit", File("junit.xml")});
    EXPECT_EQ(run.exitCode, 1) << run.err;
    // Read by Python's own XML parser, not by anything of the program's.
    const std::string check =
        "python3 -c \"import sys, xml.etree.ElementTree as E; s = E.parse(sys.argv[1]).getroot().find('testsuite');"
        " cases = s.findall('testcase'); fails = [c for c in cases if c.find('failure') is not None];"
        " print(s.get('tests'), s.get('failures'), len(cases), len(fails));"
        " [print(c.get('name'), '|', c.find('failure').get('message'), '|', c.find('failure').text.strip())"
        " for c in fails]\" " +
        Quoted(File("junit.xml")) + " > " + Quoted(File("junit.txt"));
    ASSERT_EQ(std::system(check.c_str()), 0);
    EXPECT_EQ(Slurp(File("junit.txt")),
              "7 2 7 2\n"
              "#6 call SystemVersions, sent nothing | changed | key Application changed: old \"Vantrel.Application "
              "10.29 (built-in simulator)\"  |  new \"Vantrel.Application 10.30 (built-in simulator)\"\n"
              "#7 call CardQue, sent nothing | new error | new error: old \"\"  |  new error 57 Device I/O error\n");
}

TEST_F(ReplayE2E, BadInputIsNamedAndWhatWasReplayedIsKept) {
    const std::string whole = Slurp(record_);
    // Cut inside the fourth line, as a killed session leaves it.
    const std::size_t fourth = [&] {
        std::size_t at = 0;
        for (int line = 0; line < 3; ++line) {
            at = whole.find('\n', at) + 1;
        }
        return at;
    }();
    std::ofstream(File("cut.jsonl"), std::ios::binary) << whole.substr(0, fourth + 30);
    const ProgramRun cut = Program({"--replay", File("cut.jsonl")});
    EXPECT_EQ(cut.exitCode, 2);
    EXPECT_EQ(cut.out, "replayed 3 events: 3 same, 0 masked, 0 changed, 0 new errors, 0 errors gone\n");
    EXPECT_THAT(cut.err, HasSubstr("line 4 is cut short, as a killed session leaves it: replayed up to line 3"));

    std::ofstream(File("unknown.jsonl"), std::ios::binary)
        << whole.substr(0, fourth) << "{\"op\":\"teleport\",\"member\":\"Stop\"}\n"
        << whole.substr(fourth);
    const ProgramRun unknown = Program({"--replay", File("unknown.jsonl")});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_THAT(unknown.out, HasSubstr("replayed 3 events"));
    EXPECT_THAT(unknown.err, HasSubstr("line 4: an event of a kind this program does not know: \"teleport\""));

    std::ofstream(File("script.jsonl"), std::ios::binary) << kSession;
    const ProgramRun notRecord = Program({"--replay", File("script.jsonl")});
    EXPECT_EQ(notRecord.exitCode, 2);
    EXPECT_THAT(notRecord.err, HasSubstr("line 1 is not a record: not JSON"));

    const ProgramRun overwrite = Program({"--replay", record_, "--trace", record_});
    EXPECT_EQ(overwrite.exitCode, 2);
    EXPECT_EQ(Slurp(record_), whole);

    const ProgramRun badRelease = Program({"--replay", record_, "--changed-release", "faster"});
    EXPECT_EQ(badRelease.exitCode, 2);
    EXPECT_THAT(badRelease.err, HasSubstr("not \"faster\""));
}

// Named as the start-up's own case, so that the Windows stage runs it where
// no server is registered.
TEST(StartUp, AServerThatCannotBeCreatedStopsAReplayWithTwo) {
    const std::string record =
        (std::filesystem::temp_directory_path() / ("vantrel-replay-no-server-" + std::to_string(::getpid()) + ".jsonl"))
            .string();
    std::ofstream(record, std::ios::binary) << "{\"op\":\"create\",\"progid\":\"Vantrel.Application\"}\n"
                                               "{\"op\":\"call\",\"member\":\"CardQue\",\"result\":{\"text\":\"\"}}\n";
    const ProgramRun run = Program({"--replay", record}, "VANTREL_NO_SIMULATOR=1");
    std::filesystem::remove(record);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out, "replayed 0 events: 0 same, 0 masked, 0 changed, 0 new errors, 0 errors gone\n");
    EXPECT_THAT(run.err, HasSubstr("the server cannot be created: error 429"));
}

TEST_F(ReplayE2E, ControlCharactersAndAHugeAnswerAreShownByName) {
    // A record whose answers the simulator will not give again: NUL and
    // every control character in one, 16 MiB in another.
    std::string control = "{\"op\":\"call\",\"member\":\"CardQue\",\"result\":{\"text\":\"";
    for (int c = 0; c < 32; ++c) {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\u%04x", c);
        control += escape;
    }
    control += "\"}}\n";
    std::string huge = "{\"op\":\"call\",\"member\":\"KeyQue\",\"result\":{\"text\":\"";
    huge.append(16u * 1024 * 1024, 'k');
    huge += "\"}}\n";
    std::ofstream(File("odd.jsonl"), std::ios::binary) << control << huge;
    const ProgramRun run = Program({"--replay", File("odd.jsonl")});
    EXPECT_EQ(run.exitCode, 1) << run.err;
    EXPECT_THAT(run.out, HasSubstr("replayed 2 events: 0 same, 0 masked, 2 changed, 0 new errors, 0 errors gone\n"));
    EXPECT_THAT(run.out, HasSubstr("old \"\u00abNUL\u00bb\u00abSOH\u00bb\u00abSTX\u00bb\u00abETX\u00bb"));
    EXPECT_THAT(run.out, HasSubstr("text differs at offset 0 (lengths 16777216, 0)"));
    EXPECT_LT(run.out.size(), 2000u);
}

}  // namespace
}  // namespace vantrel::testing
