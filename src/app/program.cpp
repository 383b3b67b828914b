#include "app/program.h"

#include "app/trace_output.h"
#include "script/simulator_steering.h"
#include "simulator/simulator.h"
#if defined(_WIN32)
#include "app/com_steering.h"
#include "com/com_dispatch.h"
#endif

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace vantrel {

namespace {

constexpr const char* kVersion = "1.0.0 (console Ver 1010.29)";

// Each program's help names only what it has: its own log folder, no Qt and
// no source tree on Windows.
#if defined(_WIN32)
#define VANTREL_HELP_SCRIPT_PLACE ""
#define VANTREL_HELP_LOGS "                  trace to %LOCALAPPDATA%\\vantrel-test\\logs, one file per\n"
#define VANTREL_HELP_SHOWN                                                        \
    "                  KiB\") on standard output and exit with 0 (for start-up\n" \
    "                  measurements)\n"
#define VANTREL_HELP_RELEASES "                  comma-separated\n"
#else
#define VANTREL_HELP_SCRIPT_PLACE " (on Linux on\n                  Qt's offscreen platform, no display needed)"
#define VANTREL_HELP_LOGS "                  trace to $XDG_STATE_HOME/vantrel-test/logs, one file per\n"
#define VANTREL_HELP_SHOWN                                                    \
    "                  KiB\") on standard output and exit with 0 (start-up\n" \
    "                  measurements, see bench/run)\n"
#define VANTREL_HELP_RELEASES "                  comma-separated (see docs/simulator.md)\n"
#endif

constexpr const char* kHelp =
    "Usage: vantrel-test [--simulator | --local-server] [--trace FILE] [--script FILE] [--no-log]\n"
    "                    [--keep-going] [--exit-when-shown] [--changed-release CHANGES]\n"
    "       vantrel-test --replay RECORD [--mask FILE | --learn-mask FILE] [--junit FILE]\n"
    "                    [--trace NEW] [--simulator | --local-server]\n"
    "\n"
    "The hand-driven test console for the forecourt controller server\n"
    "\"Vantrel.Application\": one button per command, with every call echoed.\n"
    "\n"
    "  --simulator     use the built-in simulator even where the real server exists\n"
    "  --local-server  (Windows) create the COM server in a process of its own: a\n"
    "                  server DLL then runs in the system's surrogate process, and\n"
    "                  a fault in it cannot end the console\n"
    "  --trace FILE    write every server call, box and error report to FILE,\n"
    "                  one JSON object per line, flushed as it happens\n"
    "  --script FILE   run FILE without a person at the windows" VANTREL_HELP_SCRIPT_PLACE
    " and exit:\n"
    "                  0 at its end, 1 through the error report, 2 when the\n"
    "                  script itself fails\n"
    "  --keep-going    after a run-time error, show its report and go on instead\n"
    "                  of ending the program (a script then ends with 1 when an\n"
    "                  error was reported); Tools > Keep going after run-time\n"
    "                  errors sets the same for normal runs, and is remembered\n"
    "  --no-log        write no session log (a run without --script writes its\n" VANTREL_HELP_LOGS
    "                  run, the newest 20 runs or 100 MB kept)\n"
    "  --exit-when-shown\n"
    "                  once the console window has been painted for the first\n"
    "                  time, write \"shown\" and the resident size (\"shown 41236\n" VANTREL_HELP_SHOWN
    "  --replay RECORD send the server events of RECORD (a trace or a session log)\n"
    "                  again, without any window, and report on standard output\n"
    "                  every answer that changed; exit 0 when nothing changed, 1\n"
    "                  when something did, 2 for bad input or no server. --trace\n"
    "                  NEW then writes the replay's own record, with each call's\n"
    "                  time\n"
    "  --mask FILE     with --replay: the differences FILE names are counted as\n"
    "                  masked, not shown (\"MEMBER KEY\", \"MEMBER\", \"* KEY\",\n"
    "                  pattern \"GLOB\" a line)\n"
    "  --learn-mask FILE\n"
    "                  with --replay: replay twice against the same server and\n"
    "                  write what differed between the runs to FILE as a mask\n"
    "  --junit FILE    with --replay: also write JUnit XML to FILE, one test case\n"
    "                  per server event\n"
    "  --changed-release CHANGES\n"
    "                  the built-in simulator plays a changed release: any of\n"
    "                  renamed-key, added-line, raised-error, version, slower,\n" VANTREL_HELP_RELEASES
    "  --help          show this text\n"
    "  --version       show the version\n"
    "\n"
    "On Windows the console drives the COM server registered as\n"
    "\"Vantrel.Application\"; elsewhere, and with --simulator, the built-in\n"
    "simulator stands in. VANTREL_NO_SIMULATOR=1 leaves the simulator out\n"
    "where no --simulator is given (the console then cannot start without a\n"
    "server).\n";

int Usage(const std::string& message) {
    std::fprintf(stderr, "vantrel-test: %s\n(see vantrel-test --help)\n", message.c_str());
    return 2;
}

}  // namespace

std::variant<ProgramOptions, int> ParseCommandLine(const std::vector<std::string>& arguments) {
    ProgramOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--help" || argument == "-h") {
            std::fputs(kHelp, stdout);
            std::fflush(stdout);
            return 0;
        }
        if (argument == "--version") {
            std::printf("vantrel-test %s\n", kVersion);
            std::fflush(stdout);
            return 0;
        }
        if (argument == "--simulator") {
            options.simulator = true;
        } else if (argument == "--local-server") {
#if defined(_WIN32)
            options.localServer = true;
#else
            return Usage("--local-server names a COM server's process: only on Windows");
#endif
        } else if (argument == "--keep-going") {
            options.keepGoing = true;
        } else if (argument == "--no-log") {
            options.noLog = true;
        } else if (argument == "--exit-when-shown") {
            options.exitWhenShown = true;
        } else if (argument == "--trace" || argument == "--script" || argument == "--replay" || argument == "--mask" ||
                   argument == "--learn-mask" || argument == "--junit") {
            if (i + 1 >= arguments.size()) {
                return Usage(std::string(argument) + " needs a file name");
            }
            std::optional<std::string>& file = argument == "--trace"    ? options.trace
                                               : argument == "--script" ? options.script
                                               : argument == "--replay" ? options.replay
                                               : argument == "--mask"   ? options.mask
                                               : argument == "--junit"  ? options.junit
                                                                        : options.learnMask;
            file = arguments[++i];
        } else if (argument == "--changed-release") {
            std::string unknown;
            const auto changes =
                i + 1 < arguments.size() ? simulation::ReleaseChanges::Parse(arguments[i + 1], unknown) : std::nullopt;
            if (!changes) {
                return Usage("--changed-release takes changes among " +
                             std::string(simulation::ReleaseChanges::kNames) +
                             (unknown.empty() ? std::string() : "; not \"" + unknown + "\""));
            }
            options.release = *changes;
            ++i;
        } else {
            return Usage("unknown option " + std::string(argument));
        }
    }
    if (!options.replay && (options.mask || options.learnMask || options.junit)) {
        return Usage("--mask, --learn-mask and --junit go with --replay");
    }
    if (options.replay && options.script) {
        return Usage("--replay and --script are two ways to run: choose one");
    }
    if (options.mask && options.learnMask) {
        return Usage("a learning run (--learn-mask) uses no mask");
    }
    return options;
}

int Refused(const std::string& message) {
    const std::string line = "vantrel-test: " + WithControlsEscaped(message, ControlEscapes::All) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
    return 2;
}

std::variant<RunRecords, int> OpenRunRecords(const ProgramOptions& options, CallEvents& events) {
    RunRecords records;
    if (options.trace) {
        const OpenedTrace opened = OpenTrace(*options.trace, options.script);
        if (!opened.problem.empty()) {
            return Refused(opened.problem);
        }
        records.traces.push_back(std::make_unique<TraceFile>(opened.file, *options.trace));
    }
    // An interactive run keeps its own record, so that a run that ends
    // through the error report loses nothing.
    if (!options.script && !options.noLog) {
        const SessionLog log = OpenSessionLog(SessionLogFolder());
        if (log.file) {
            records.sessionLog = log.path;
            records.traces.push_back(std::make_unique<TraceFile>(log.file, log.path));
        } else {
            std::fprintf(stderr, "vantrel-test: no session log: %s\n", log.problem.c_str());
        }
    }
    for (const auto& trace : records.traces) {
        events.Add(trace.get());
    }
    return records;
}

namespace {

// The simulator as the registry hands it out. The first creation owns it
// and, when it goes, forgets it in `reached`, so that a later creation (a
// replay's second run) makes a fresh one; a creation while it lives (a
// reconnect) reaches the same simulator.
class SimulatorObject final : public AutomationObject {
public:
    SimulatorObject(std::unique_ptr<Simulator> owned, ServerReached& reached)
        : owned_(std::move(owned))
        , simulator_(*owned_)
        , reached_(&reached) {}
    explicit SimulatorObject(Simulator& simulator)
        : simulator_(simulator) {}
    ~SimulatorObject() override {
        if (reached_ && reached_->simulator == &simulator_) {
            reached_->simulator = nullptr;
            reached_->steering.reset();
        }
    }
    SimulatorObject(const SimulatorObject&) = delete;
    SimulatorObject& operator=(const SimulatorObject&) = delete;

    void Put(std::string_view member, const Variant& value) override { simulator_.Put(member, value); }
    Variant Call(std::string_view member) override { return simulator_.Call(member); }
    Variant Call(std::string_view member, const Variant& argument) override {
        return simulator_.Call(member, argument);
    }
    Variant CallByRef(std::string_view member, Variant& argument) override {
        return simulator_.CallByRef(member, argument);
    }

private:
    std::unique_ptr<Simulator> owned_;
    Simulator& simulator_;
    ServerReached* reached_ = nullptr;
};

class NewestSteering final : public SimulatorSteering {
public:
    explicit NewestSteering(ServerReached& reached)
        : reached_(reached) {}
    std::string Steer(const ScriptCommand& command, const std::string& line) override {
        return reached_.steering ? reached_.steering->Steer(command, line) : "the server has no steering";
    }

private:
    ServerReached& reached_;
};

}  // namespace

SimulatorSteering* ServerReached::ForScript() {
    if (!steering) {
        return nullptr;
    }
    if (!forwarder_) {
        forwarder_ = std::make_unique<NewestSteering>(*this);
    }
    return forwarder_.get();
}

void RegisterServers(ServerRegistry& servers, const ProgramOptions& options, ServerReached& reached) {
#if defined(_WIN32)
    if (!options.simulator) {
        const bool scripted = options.script.has_value();
        servers.Register(
            std::string(kServerProgId),
            [&reached, scripted, localServer = options.localServer]() -> std::unique_ptr<AutomationObject> {
                auto created = com::ComObject::Create(
                    kServerProgId, localServer ? com::ComObject::Host::OwnProcess : com::ComObject::Host::Registered);
                reached.steering = ComSteering::Of(*created, scripted);
                return created;
            });
    }
#endif
    const char* leaveOut = std::getenv("VANTREL_NO_SIMULATOR");
    const bool noSimulator = leaveOut && std::string_view(leaveOut) == "1";
    if (servers.Has(kServerProgId) || (noSimulator && !options.simulator)) {
        return;
    }
    // Script mode runs it on a clock that only "server time" lines move.
    const bool manualClock = options.script.has_value();
    servers.Register(std::string(kServerProgId),
                     [&reached, manualClock, release = options.release]() -> std::unique_ptr<AutomationObject> {
                         // Made again (a reconnect), the simulator comes back as it was, its
                         // forecourt and its window included: a server restarted in place.
                         if (reached.simulator) {
                             reached.simulator->SetGone(false);
                             return std::make_unique<SimulatorObject>(*reached.simulator);
                         }
                         auto created = manualClock
                                            ? std::make_unique<Simulator>(std::make_unique<simulation::ManualClock>(
                                                  simulation::ManualClock::Waits::Slept))
                                            : std::make_unique<Simulator>();
                         created->PlayRelease(release);
                         reached.simulator = created.get();
                         reached.steering = std::make_unique<InProcessSteering>(*created);
                         return std::make_unique<SimulatorObject>(std::move(created), reached);
                     });
}

}  // namespace vantrel
