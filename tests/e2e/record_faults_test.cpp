// The record survives every fault: a trace or an output that cannot be
// written, a pipe whose reader left, a trace file that is not the run's own,
// a script that cannot be read whole, names with control characters in
// them, and the session log of an interactive run.
#include "e2e.h"

#include <gmock/gmock.h>

#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace vantrel::testing {
namespace {

using ::testing::HasSubstr;

// A shell command run in a fresh folder holding script.vts (two clicks and a
// print); $B is the program. Standard error is collected.
struct ShellRun {
    int exitCode = -1;
    std::string err;
    std::filesystem::path folder;
};

ShellRun Shell(const std::string& command, const std::string& script = "click Button7\nprint InBox\n") {
    std::string pattern = (std::filesystem::temp_directory_path() / "vantrel-faults-XXXXXX").string();
    ShellRun run;
    if (!::mkdtemp(pattern.data())) {
        return run;
    }
    run.folder = pattern;
    std::ofstream(run.folder / "script.vts", std::ios::binary) << script;
    // The command goes in a file of its own: no quoting of it can go wrong.
    std::ofstream(run.folder / "run.sh", std::ios::binary)
        << "cd '" << run.folder.string() << "' || exit 99\nB='" << VANTREL_TEST_BINARY
        << "'\nexport QT_QPA_PLATFORM=offscreen\n{ " << command << "\n} 2> err.txt < /dev/null\n";
    const int status =
        std::system(("timeout --kill-after=10 120 bash '" + (run.folder / "run.sh").string() + "'").c_str());
    run.exitCode = status != -1 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.err = Slurp(run.folder / "err.txt");
    return run;
}

struct Fault {
    const char* name;
    std::string command;  // ends with the program's exit code in $?
    int exitCode;
    const char* message;  // in standard error
};

class RecordFault : public ::testing::TestWithParam<Fault> {};

TEST_P(RecordFault, EndsWithItsCodeAndSaysWhy) {
    const Fault& fault = GetParam();
    const ShellRun run = Shell(fault.command);
    EXPECT_EQ(fault.exitCode, run.exitCode) << run.err;
    EXPECT_THAT(run.err, HasSubstr(fault.message));
}

const std::string kRun = "$B --script script.vts --simulator";

INSTANTIATE_TEST_SUITE_P(
    Faults, RecordFault,
    ::testing::Values(
        Fault{"TraceOnAFullDevice", kRun + " --trace /dev/full > /dev/null", 2,
              "cannot write the trace /dev/full: No space left on device"},
        Fault{"PrintsOnAFullDevice", kRun + " > /dev/full", 2,
              "script.vts:2: cannot write to standard output: No space left on device"},
        // The shell's own status is the last command's: take the program's.
        Fault{"PrintsIntoAPipeWhoseReaderLeft", kRun + " | true; exit ${PIPESTATUS[0]}", 2,
              "cannot write to standard output: Broken pipe"},
        Fault{"TraceThatNamesTheScript", kRun + " --trace script.vts", 2,
              "cannot write the trace script.vts: it is the script itself"},
        Fault{"TraceThatAnotherRunWrites",
              "printf 'tick 5\\nserver time +3\\n' > long.vts; mkfifo go; "
              "(flock -x shared.jsonl -c 'cat go > /dev/null') & sleep 0.5; " +
                  kRun + " --trace shared.jsonl; code=$?; echo > go; wait; exit $code",
              2, "cannot write the trace shared.jsonl: another run of vantrel-test is writing it"},
        Fault{"TraceIntoAFifoThatNobodyReads", "mkfifo f; " + kRun + " --trace f", 2,
              "cannot write the trace f: it is a FIFO that no program reads"},
        Fault{"ScriptThatIsAFolder", "mkdir d; $B --script d --simulator", 2,
              "cannot read the script d: it is a folder"},
        Fault{"ScriptThatIsMissing", "$B --script none.vts --simulator", 2, "cannot read the script none.vts"},
        Fault{"NulInAControlName", "printf 'click Butt\\0on7\\n' > nul.vts; $B --script nul.vts --simulator", 2,
              "nul.vts:1: no control Butt\\0on7 in the shown window VantrelTest"},
        Fault{"NulInAnErrorDescription",
              "printf 'server fail SystemVersions 5 \"a\\\\0b\\\\ec\"\\nclick SystemVersions\\n' > f.vts; "
              "$B --script f.vts --simulator",
              1, "Run-time error 5: a\\0b\\ec\n"},
        // A sparse file: no disk is filled.
        Fault{"ImageFileBeyondTheLargestSent",
              "mkdir -p 'c/Projects/Vantrel/VantrelTest Utility' && "
              "truncate -s 268435457 'c/Projects/Vantrel/VantrelTest Utility/FP_blk.hex' && "
              "printf 'click TEST_FUNCTION_BUTTON\\nclick SET_IMAGE_BUTTON\\n' > i.vts && "
              "VANTREL_DRIVE_C=$PWD/c $B --script i.vts --simulator --trace t.jsonl; code=$?; "
              "grep -q PacketQueOutput t.jsonl && exit 98; exit $code",
              1, "Run-time error 7: Out of memory"},
        // The 255 files SET IMAGE may hold open fit under a low soft limit.
        Fault{
            "ImageFilesUnderALowLimitOfOpenFiles",
            "mkdir -p 'c/Projects/Vantrel/VantrelTest Utility' && echo FF > 'c/Projects/Vantrel/VantrelTest "
            "Utility/FP_blk.hex' && { echo click TEST_FUNCTION_BUTTON; for n in $(seq 256); do echo click "
            "SET_IMAGE_BUTTON; done; } > i.vts && ulimit -Sn 64 && VANTREL_DRIVE_C=$PWD/c $B --script i.vts "
            "--simulator --trace t.jsonl; code=$?; [ $(grep -c PacketQueOutput t.jsonl) = 255 ] || exit 97; exit $code",
            1, "Run-time error 67: Too many files"},
        Fault{"TerminalPacketTooLongForItsCount",
              "printf 'forecourt packet 3 \"%01000d\"\\n' 0 > p.vts; $B --script p.vts --simulator", 2,
              "forecourt: a terminal packet holds at most 999 characters, not 1000"}),
    [](const ::testing::TestParamInfo<Fault>& info) { return info.param.name; });

// Each reason the system gives for a trace it will not let be written is
// told as that reason. The set-up needs root's powers (another user, a
// mount of its own, an immutable file): where it cannot be made, the case
// is skipped and says so (exit 77 from its set-up).
TEST(TraceRefused, EachReasonIsToldAsItIs) {
    const struct {
        const char* name;
        std::string command;
        const char* message;
    } cases[] = {
        {"no permission",
         "mkdir locked && chmod 555 locked && chmod 755 . && setpriv --reuid=65534 --regid=65534 "
         "--clear-groups true || exit 77; setpriv --reuid=65534 --regid=65534 --clear-groups " +
             kRun + " --trace locked/t.jsonl",
         "cannot write the trace locked/t.jsonl: no permission to write it"},
        {"a read-only file system",
         "mkdir ro && unshare -m true || exit 77; unshare -m sh -c 'mount -t tmpfs -o ro "
         "none ro && exec \"$0\" --script script.vts --simulator --trace ro/t.jsonl' \"$B\"",
         "cannot write the trace ro/t.jsonl: the file system is read-only"},
        {"an immutable file",
         "touch t.jsonl && chattr +i t.jsonl || exit 77; " + kRun +
             " --trace t.jsonl; code=$?; chattr -i t.jsonl; exit $code",
         "cannot write the trace t.jsonl: the file may not be changed"},
        {"a folder", "mkdir d; " + kRun + " --trace d", "cannot write the trace d: it is a folder"},
    };
    for (const auto& fault : cases) {
        SCOPED_TRACE(fault.name);
        const ShellRun run = Shell(fault.command);
        if (run.exitCode == 77) {
            std::printf("skipped here: %s (its set-up needs root's powers)\n", fault.name);
            continue;
        }
        EXPECT_EQ(2, run.exitCode) << run.err;
        EXPECT_THAT(run.err, HasSubstr(fault.message));
    }
}

TEST(ScriptFile, AByteOrderMarkIsNoCommandAndTheScriptRunsToItsEnd) {
    const ShellRun run = Shell(
        "printf '\\xEF\\xBB\\xBF# a comment\\nclick Button7\\n' > bom.vts; "
        "$B --script bom.vts --simulator --trace t.jsonl");
    EXPECT_EQ(0, run.exitCode) << run.err;
    EXPECT_THAT(Slurp(run.folder / "t.jsonl"), HasSubstr(R"("member":"FuelingPositionInformation")"));
}

// A code typed into the code box is sent whole, however long.
TEST(Typing, AMegabyteTypedIsAMegabyteSent) {
    const std::string code(1'000'000, '7');
    const ScriptRun run = RunConsole("click OTHERDEVICESBUTTON\ntype CodeBox \"" + code +
                                     "\"\nclick CODESTATUS_BUTTON\nclick EXIT_CMD\n");
    ASSERT_EQ(0, run.exitCode) << run.err;
    const std::vector<std::string> calls = Calls(run);
    ASSERT_EQ(1u, calls.size());
    EXPECT_EQ(TracedPut("CarWashInformationRequest", "CarWashCodeStatus\\r\\nCarWashCode=" + code + "\\r\\n\\u0000"),
              calls[0]);
}

// An interactive run keeps its trace in the state folder, one file a run;
// --no-log keeps none; the error report says where the log is.
TEST(SessionLog, EveryInteractiveRunKeepsOneUnlessToldNot) {
    const std::string state = "XDG_STATE_HOME=$PWD/state";
    const ShellRun run = Shell(state + " $B --simulator --exit-when-shown > /dev/null && " + state +
                               " $B --simulator --exit-when-shown > /dev/null && " + state +
                               " $B --simulator --exit-when-shown --no-log > /dev/null");
    ASSERT_EQ(0, run.exitCode) << run.err;
    int logs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(run.folder / "state/vantrel-test/logs")) {
        EXPECT_THAT(entry.path().filename().string(), ::testing::MatchesRegex(R"(session-[-0-9T]+\.jsonl)"));
        EXPECT_EQ("{\"op\":\"create\",\"progid\":\"Vantrel.Application\"}\n", Slurp(entry.path()));
        ++logs;
    }
    EXPECT_EQ(2, logs);
}

// Two consoles started together must not share a log: ten pairs leave
// twenty, each with only its own run's one creation.
TEST(SessionLog, TenPairsStartedTogetherLeaveTwentyLogs) {
    const ShellRun run = Shell(
        "export XDG_STATE_HOME=$PWD/state; for pair in $(seq 10); do "
        "$B --simulator --exit-when-shown > /dev/null & $B --simulator --exit-when-shown > /dev/null & wait; done");
    ASSERT_EQ(0, run.exitCode) << run.err;
    int logs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(run.folder / "state/vantrel-test/logs")) {
        EXPECT_EQ("{\"op\":\"create\",\"progid\":\"Vantrel.Application\"}\n", Slurp(entry.path())) << entry.path();
        ++logs;
    }
    EXPECT_EQ(20, logs);
}

TEST(SessionLog, TheNewestTwentyAreKept) {
    std::string make =
        "mkdir -p state/vantrel-test/logs && for n in $(seq 10 34); do "
        "echo old > state/vantrel-test/logs/session-2020-01-01T00-00-$n.jsonl; done && "
        "XDG_STATE_HOME=$PWD/state $B --simulator --exit-when-shown > /dev/null";
    const ShellRun run = Shell(make);
    ASSERT_EQ(0, run.exitCode) << run.err;
    const auto folder = run.folder / "state/vantrel-test/logs";
    int logs = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder)) {
        ++logs;
    }
    EXPECT_EQ(20, logs);
    EXPECT_FALSE(std::filesystem::exists(folder / "session-2020-01-01T00-00-15.jsonl"));  // among the oldest
    EXPECT_TRUE(std::filesystem::exists(folder / "session-2020-01-01T00-00-34.jsonl"));
}

}  // namespace
}  // namespace vantrel::testing
