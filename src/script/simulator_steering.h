#pragma once

#include "script/script_line.h"

#include <string>

namespace vantrel {

class Simulator;

// Where script mode's server and forecourt lines go: to the simulator in
// this process, or to one behind the server's COM connection. Either way
// the lines steer the simulator around the console's own calls, so none of
// them shows in the trace.
class SimulatorSteering {
public:
    virtual ~SimulatorSteering() = default;
    // Carries out one server or forecourt line (`line` is its text as the
    // script has it); returns what stood in its way, or "" when done.
    virtual std::string Steer(const ScriptCommand& command, const std::string& line) = 0;
};

// A server or forecourt line carried out on the simulator: what stood in its
// way, or "" when done. The simulator DLL answers its steering calls with it.
std::string SteerSimulator(Simulator& simulator, const ScriptCommand& command);

// The simulator created in this process with the console's server.
class InProcessSteering final : public SimulatorSteering {
public:
    explicit InProcessSteering(Simulator& simulator)
        : simulator_(simulator) {}
    std::string Steer(const ScriptCommand& command, const std::string&) override {
        return SteerSimulator(simulator_, command);
    }

private:
    Simulator& simulator_;
};

}  // namespace vantrel
