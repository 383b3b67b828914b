#pragma once

#include "script/simulator_steering.h"

#include <memory>

namespace vantrel {

namespace com {
class ComObject;
}

// Script mode's server and forecourt lines sent to the simulator DLL through
// its steering interface, beside the console's own connection and never
// through it: the trace records the console's calls only. In another process
// the lines go through the system's dispatch marshaller.
class ComSteering final : public SimulatorSteering {
public:
    // The steering of the object the console created, or nullptr when the
    // object is not the simulator (the real server has no such interface).
    // A scripted run sets the simulator on script mode's clock at once,
    // before the console's first call.
    static std::unique_ptr<SimulatorSteering> Of(const com::ComObject& server, bool scripted);

    explicit ComSteering(std::unique_ptr<com::ComObject> steering);
    ~ComSteering() override;
    std::string Steer(const ScriptCommand& command, const std::string& line) override;

private:
    std::unique_ptr<com::ComObject> steering_;
};

}  // namespace vantrel
