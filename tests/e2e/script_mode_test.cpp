// Script mode itself: the focus rule of clicks, answers and failures set in
// the simulator, exit codes, pictures, the command line, and the tour.
#include "e2e/e2e.h"

#include <gmock/gmock.h>

#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

namespace vantrel::testing {
namespace {

using ::testing::HasSubstr;

// A click on an unfocused position moves the focus first, so the server is
// asked before the selection; a double click asks twice.
TEST(ScriptMode, ClicksOnPositionsAskFirstThenSelect) {
    const ScriptRun run = RunConsole(R"vts(
# a person's click on position 7
click Button7
expect TextBoxPumpNumber "Fueling Position -> 7"
expect TextBox "<returned data>=<Object>.FuelingPositionInformation(passed data)"
print InBox
click Button1
expect TextBox "(returned data)=<Object>.FuelingPositionInformation(passed data)"
dblclick Button12
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_EQ(R"({"op":"create","progid":"Vantrel.Application"})", run.trace.front());
    EXPECT_THAT(run.out, HasSubstr("InBox \"FuelingPosition=07\\r\\n"));
    const auto calls = Calls(run);
    ASSERT_EQ(4u, calls.size());
    EXPECT_THAT(calls[0], HasSubstr(R"("member":"FuelingPositionInformation","arg":{"i2":7},"result")"));
    EXPECT_THAT(calls[1], HasSubstr(R"("arg":{"i2":1})"));
    EXPECT_THAT(calls[2], HasSubstr(R"("arg":{"i2":12})"));
    EXPECT_EQ(calls[2], calls[3]);
}

TEST(ScriptMode, ServerAnswersAreQueuedAndShownExactly) {
    const ScriptRun run = RunConsole(R"vts(
server answer FuelingPositionInformation "A\r\nB\0\e"
server answer FuelingPositionInformation number 70000
dblclick Button3
expect InBox "70000"
)vts");
    ASSERT_EQ(0, run.exitCode) << run.err;
    const auto calls = Calls(run);
    ASSERT_EQ(2u, calls.size());
    EXPECT_THAT(calls[0], HasSubstr(R"("result":{"text":"A\r\nB\u0000\u001b"})"));
    EXPECT_THAT(calls[1], HasSubstr(R"("result":{"i4":70000})"));
}

// Mistakes in a script, in its simulator lines and its menu lines, and an
// expect that fails: exit code 2 and the line named on standard error.
TEST(ScriptMode, MistakesExitWithTwoNamingTheLine) {
    struct Case {
        const char* script;
        const char* message;
    };
    for (const Case& c : {
             Case{"\n\nexpect TextBox \"Function\\r\\nBox\"\n",
                  "script.vts:3: expect TextBox\n  expected \"Function\\r\\nBox\"\n  actual   \"Function Box\"\n"},
             Case{"click NoSuchButton\n", "script.vts:1: no control NoSuchButton in the shown window VantrelTest"},
             Case{"jump Button1\n", "script.vts:1: unknown command 'jump'"},
             Case{"expect TextBox \"open\n", "script.vts:1: a text has no closing quote"},
             Case{"tick\nexpect Button1 \"x\"\n", "script.vts:2: no text box or label Button1"},
             Case{"answer ok\n", "1 queued replies were never used"},
             Case{"server fail NoSuchMember 5 \"x\"\n", "the simulator has no member NoSuchMember"},
             Case{"server delay NoSuchMember 5\n", "the simulator has no member NoSuchMember"},
             Case{"server answer Authorize \"x\"\n", "Authorize is assigned and answers nothing"},
             Case{"forecourt hang 7\n", "script.vts:1: forecourt: no nozzle is lifted at position 07"},
             Case{"forecourt lift 7 hose 5\n", "script.vts:1: forecourt: position 07 has hoses 1 to 4"},
             Case{"forecourt cash 7 \"lots\"\n", "forecourt: \"lots\" is no amount of cash (20.00, 5, 0.50)"},
             Case{"\nforecourt lift 40 hose 1\n", "script.vts:2: usage: forecourt lift P hose H"},
             Case{"menu \"Tools\" \"Nothing\"\n", "no menu entry \"Tools\" \"Nothing\" on the console"},
             Case{"menu \"Set-up\" \"Nothing...\"\n", R"(no menu entry "Set-up" "Nothing..." on the console)"},
             Case{"menu Set-up \"Serial Port Para...\"\n", R"(usage: menu "MENU" "ENTRY")"},
             Case{"menu \"Set-up\" \"Get Debug Select...\"\nmenu \"Set-up\" \"Get Debug Select...\"\n",
                  "the console's menu cannot be used while GetDebugSelect is shown"},
         }) {
        const ScriptRun run = RunConsole(c.script);
        EXPECT_EQ(2, run.exitCode) << c.script;
        EXPECT_THAT(run.err, HasSubstr(c.message)) << c.script;
    }
}

TEST(ScriptMode, PicturesAreWritten) {
    // A relative name is relative to the program's working folder: the
    // run's own folder here, so that nothing lands where the tests started.
    const ScriptRun probe = RunConsole("");
    const std::filesystem::path here = std::filesystem::current_path();
    std::filesystem::current_path(probe.directory);
    const ScriptRun run = RunConsole("shot VantrelTest console.png\n");
    std::filesystem::current_path(here);
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_GT(std::filesystem::file_size(probe.directory + "/console.png"), 1000u);
    const ScriptRun absolute = RunConsole("shot VantrelTest \"" + run.directory + "/absolute.png\"\n");
    ASSERT_EQ(0, absolute.exitCode) << absolute.err;
    EXPECT_GT(std::filesystem::file_size(run.directory + "/absolute.png"), 1000u);
}

// The program on a command line of its own, standard output collected.
struct ProgramRun {
    int exitCode = -1;
    std::string out;
};

ProgramRun RunProgram(const std::string& arguments) {
    const std::string command =
        "QT_QPA_PLATFORM=offscreen '" + std::string(VANTREL_TEST_BINARY) + "' " + arguments + " 2>/dev/null </dev/null";
    ProgramRun run;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (!pipe) {
        return run;
    }
    char buffer[256];
    for (std::size_t got; (got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
        run.out.append(buffer, got);
    }
    const int status = ::pclose(pipe);
    run.exitCode = status != -1 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

TEST(CommandLine, HelpAndVersionAnswerWithoutAWindow) {
    const ProgramRun help = RunProgram("--help");
    EXPECT_EQ(0, help.exitCode);
    EXPECT_THAT(help.out, HasSubstr("--exit-when-shown"));
    EXPECT_EQ(0, RunProgram("--version").exitCode);
    EXPECT_NE(0, RunProgram("--bogus").exitCode);
}

// The manual page and --help name the same options: each option of the one
// is in the other.
TEST(CommandLine, TheManualPageAndHelpNameTheSameOptions) {
    const std::string help = RunProgram("--help").out;
    std::ifstream file(std::string(VANTREL_SOURCE_DIR) + "/packaging/vantrel-test.1");
    std::ostringstream page;
    page << file.rdbuf();
    const auto options = [](const std::string& text, const std::string& dash) {
        std::set<std::string> found;
        const std::regex option(dash + dash + "([a-z][a-z]*(" + dash + "[a-z]+)*)");
        for (auto match = std::sregex_iterator(text.begin(), text.end(), option); match != std::sregex_iterator();
             ++match) {
            std::string name = (*match)[1];
            for (std::size_t at; (at = name.find("\\-")) != std::string::npos;) {
                name.replace(at, 2, "-");
            }
            found.insert(name);
        }
        return found;
    };
    const std::set<std::string> inHelp = options(help, "-");
    EXPECT_GE(inHelp.size(), 7u);  // --simulator ... --version
    EXPECT_EQ(inHelp, options(page.str(), "\\\\-"));
}

// The start-up measurement hook: the moment the window is first shown, with
// the resident size, then the end at once with 0.
TEST(CommandLine, ExitWhenShownReportsTheFirstShowingWithTheResidentSize) {
    const ProgramRun run = RunProgram("--exit-when-shown");
    EXPECT_EQ(0, run.exitCode);
    EXPECT_THAT(run.out, ::testing::MatchesRegex("shown [1-9][0-9]* KiB\n"));
}

TEST(StartUp, AServerThatCannotBeCreatedEndsThroughTheReportBeforeAnyWindow) {
    ::setenv("VANTREL_NO_SIMULATOR", "1", 1);
    const ScriptRun run = RunConsole("shot VantrelTest never.png\n");
    ::unsetenv("VANTREL_NO_SIMULATOR");
    EXPECT_EQ(1, run.exitCode);
    EXPECT_THAT(run.err, ::testing::HasSubstr("Run-time error 429: ActiveX component can't create object"));
    ASSERT_EQ(2u, run.trace.size());
    EXPECT_EQ(
        R"({"op":"create","progid":"Vantrel.Application","error":{"number":429,"description":"ActiveX component can't create object"}})",
        run.trace[0]);
    EXPECT_EQ(R"({"op":"report","number":429,"description":"ActiveX component can't create object"})", run.trace[1]);
    EXPECT_FALSE(std::filesystem::exists(run.directory + "/never.png"));
}

// The headless tour that the run command shows must keep working as the
// console grows: its parts run as one script, pictures included.
TEST(Tour, RunsToItsEndAndLeavesItsPictures) {
    std::vector<std::filesystem::path> parts;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(VANTREL_SOURCE_DIR) + "/examples/tour")) {
        if (entry.path().extension() == ".vts") {
            parts.push_back(entry.path());
        }
    }
    std::sort(parts.begin(), parts.end());
    ASSERT_FALSE(parts.empty());
    std::ostringstream script;
    for (const auto& part : parts) {
        script << std::ifstream(part).rdbuf() << "\n";
    }
    // Pictures are written relative to the working folder; put them in the
    // run's own folder by running from there.
    const std::string here = std::filesystem::current_path().string();
    const ScriptRun probe = RunConsole("");
    // SET IMAGE reads its file under the C: drive folder: give the tour the
    // sample image there, as the run command does.
    const std::filesystem::path drive = std::filesystem::path(probe.directory) / "drive-c";
    const std::filesystem::path images = drive / "Projects" / "Vantrel" / "VantrelTest Utility";
    std::filesystem::create_directories(images);
    std::filesystem::copy_file(std::string(VANTREL_SOURCE_DIR) + "/examples/FP_blk.hex", images / "FP_blk.hex");
    ::setenv("VANTREL_DRIVE_C", drive.c_str(), 1);
    std::filesystem::current_path(probe.directory);
    const ScriptRun run = RunConsole(script.str());
    ::unsetenv("VANTREL_DRIVE_C");
    std::filesystem::current_path(here);
    ASSERT_EQ(0, run.exitCode) << run.err;
    EXPECT_TRUE(std::filesystem::exists(probe.directory + "/vantrel-console.png"));
    EXPECT_TRUE(std::filesystem::exists(probe.directory + "/graphics-display.png"));
    EXPECT_TRUE(std::filesystem::exists(probe.directory + "/test-functions.png"));
}

}  // namespace
}  // namespace vantrel::testing

namespace vantrel::testing {
namespace {

// Keep going, on request: the report is shown and traced, the command that
// raised the error stops there, the session goes on; a script then ends with
// 1. Off by default, when the report ends the program.
TEST(KeepGoing, OnRequestTheSessionGoesOnPastARunTimeError) {
    const std::string failing =
        "server fail SystemVersions 5 \"Invalid procedure call or argument\"\n"
        "click SystemVersions\nclick Button3\n";
    struct Case {
        const char* how;
        std::string script;
        std::vector<std::string> arguments;
        bool goesOn;
    };
    for (const Case& c :
         {Case{"by default", failing, {}, false}, Case{"--keep-going", failing, {"--keep-going"}, true},
          Case{"the Tools entry", "menu \"Tools\" \"Keep going after run-time errors\"\n" + failing, {}, true}}) {
        const ScriptRun run = RunConsole(c.script, c.arguments);
        EXPECT_EQ(1, run.exitCode) << c.how;
        EXPECT_THAT(run.err, HasSubstr("Run-time error 5: Invalid procedure call or argument\n"
                                       "The last call to the server: SystemVersions, call\n"))
            << c.how;
        const auto report = std::find_if(run.trace.begin(), run.trace.end(), [](const std::string& line) {
            return line.rfind(R"({"op":"report","number":5,)", 0) == 0;
        });
        ASSERT_NE(run.trace.end(), report) << c.how;
        const bool after = std::any_of(report, run.trace.end(), [](const std::string& line) {
            return line.find(R"("member":"FuelingPositionInformation","arg":{"i2":3})") != std::string::npos;
        });
        EXPECT_EQ(c.goesOn, after) << c.how;
    }
}

// The report names what the last call sent, escaped and cut at 120
// characters, with the whole length beside it.
TEST(KeepGoing, TheReportShowsTheStartOfWhatWasSent) {
    const ScriptRun run = RunConsole(
        "server fail CarWashInformationRequest 5 \"Invalid procedure call or argument\"\n"
        "click OTHERDEVICESBUTTON\ntype CodeBox \"" +
        std::string(200, '7') + "\"\nclick CODESTATUS_BUTTON\n");
    EXPECT_EQ(1, run.exitCode);
    EXPECT_THAT(run.err, HasSubstr("The last call to the server: CarWashInformationRequest, put "
                                   "\"CarWashCodeStatus\\r\\nCarWashCode=" +
                                   std::string(89, '7') + "\" (234 characters in all)\n"));
}

}  // namespace
}  // namespace vantrel::testing
