#pragma once

// What both programs share, the Qt one and the Win32 one: the command line,
// the run's records (the trace and the session log) and the choice of the
// server. No toolkit here.

#include "app/session_log.h"
#include "server/server_calls.h"
#include "server/trace_json.h"
#include "simulator/release_changes.h"

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantrel {

class Simulator;
class SimulatorSteering;

struct ProgramOptions {
    bool simulator = false;
    bool localServer = false;  // Windows: the COM server in a process of its own
    bool exitWhenShown = false;
    bool noLog = false;
    bool keepGoing = false;
    std::optional<std::string> trace;
    std::optional<std::string> script;
    // --replay RECORD and what goes with it (app/replay_run.h).
    std::optional<std::string> replay;
    std::optional<std::string> mask;
    std::optional<std::string> learnMask;
    std::optional<std::string> junit;
    // The built-in simulator plays a changed release (docs/simulator.md).
    simulation::ReleaseChanges release;
};

// The options to run with, or the exit code of a command line already
// answered (--help, --version: 0) or refused (2, the reason on standard
// error). `arguments` are UTF-8, without the program's name.
std::variant<ProgramOptions, int> ParseCommandLine(const std::vector<std::string>& arguments);

// A file of the command line that cannot be used: the message on standard
// error, control characters escaped; gives exit code 2, as a script that
// fails.
int Refused(const std::string& message);

// The run's records: the --trace file and, in an interactive run, the
// session log, each listening to `events` from now on. A trace file that
// cannot be the run's own is refused (exit code 2); a session log that
// cannot be made is said on standard error, and the run goes on without.
struct RunRecords {
    std::vector<std::unique_ptr<TraceFile>> traces;
    std::string sessionLog;  // its path; empty without one
};
std::variant<RunRecords, int> OpenRunRecords(const ProgramOptions& options, CallEvents& events);

// "Vantrel.Application" resolves to the platform's COM automation where
// there is one, unless --simulator; everywhere else, and on request, to the
// built-in simulator. VANTREL_NO_SIMULATOR=1 leaves the built-in one out, to
// see what the console does on a machine where the server is not installed.
//
// Once the console has created its server, `reached` holds the built-in
// simulator (when it is the one) and the way to steer a simulator for
// script mode's server and forecourt lines: in this process, or through
// COM to the simulator DLL, which then runs on script mode's clock too.
struct ServerReached {
    Simulator* simulator = nullptr;
    std::unique_ptr<SimulatorSteering> steering;  // the newest server's
    // Where a script's server and forecourt lines go: always to the newest
    // server's steering, so that after a reconnect no line reaches the one
    // that has gone. Null when the server has none.
    SimulatorSteering* ForScript();

private:
    std::unique_ptr<SimulatorSteering> forwarder_;
};
void RegisterServers(ServerRegistry& servers, const ProgramOptions& options, ServerReached& reached);

}  // namespace vantrel
