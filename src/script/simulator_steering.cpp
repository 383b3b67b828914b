#include "script/simulator_steering.h"

#include "simulator/fault_queue.h"
#include "simulator/simulator.h"

#include <chrono>

namespace vantrel {
namespace {

std::string SteerServer(Simulator& simulator, const ScriptCommand& command) {
    using Verb = ScriptCommand::Verb;
    if (command.verb == Verb::ServerTime) {
        if (!simulator.AdvanceTime(std::chrono::milliseconds(command.number))) {
            return "the simulator runs on the wall clock; server time needs script mode's clock";
        }
        return "";
    }
    if (command.verb == Verb::ServerDie) {
        simulator.SetGone(true);
        return "";
    }
    if (command.verb == Verb::ServerAuto) {
        simulator.SetAutomatic(command.number != 0);
        return "";
    }
    const auto style = simulator.StyleOf(command.name);
    if (!style) {
        return "the simulator has no member " + command.name;
    }
    const bool answers = *style != Simulator::Style::Assignment;
    switch (command.verb) {
    case Verb::ServerAnswerText:
    case Verb::ServerAnswerNumber:
    case Verb::ServerAnswerHuge:
        if (!answers) {
            return command.name + " is assigned and answers nothing; use server fail or server delay";
        }
        if (command.verb == Verb::ServerAnswerText) {
            simulator.QueueAnswer(command.name, Variant::OfText(command.text));
        } else if (command.verb == Verb::ServerAnswerHuge) {
            simulator.QueueAnswer(command.name,
                                  Variant::OfText(simulation::HugeText(static_cast<std::size_t>(command.number))));
        } else {
            simulator.QueueAnswer(command.name, command.number >= -32768 && command.number <= 32767
                                                    ? Variant::OfInt16(static_cast<std::int16_t>(command.number))
                                                    : Variant::OfInt32(static_cast<std::int32_t>(command.number)));
        }
        break;
    case Verb::ServerFail:
        simulator.QueueFailure(command.name, RuntimeError(static_cast<int>(command.number), ToUtf8(command.text)));
        break;
    default: simulator.QueueDelay(command.name, std::chrono::milliseconds(command.number)); break;
    }
    return "";
}

std::string SteerForecourt(Simulator& simulator, const ScriptCommand& command) {
    using Verb = ScriptCommand::Verb;
    std::string refusal;
    switch (command.verb) {
    case Verb::ForecourtLift: refusal = simulator.forecourt().Lift(command.position, command.hose); break;
    case Verb::ForecourtHang: refusal = simulator.forecourt().Hang(command.position); break;
    case Verb::ForecourtCard: refusal = simulator.forecourt().SwipeCard(command.position, command.text); break;
    case Verb::ForecourtKeys: refusal = simulator.forecourt().PressKeys(command.position, command.text); break;
    case Verb::ForecourtCash: refusal = simulator.forecourt().InsertCash(command.position, command.text); break;
    case Verb::ForecourtPacket: refusal = simulator.forecourt().SendPacket(command.position, command.text); break;
    default: refusal = simulator.forecourt().EnterWashCode(command.text); break;
    }
    return refusal.empty() ? "" : "forecourt: " + refusal;
}

}  // namespace

std::string SteerSimulator(Simulator& simulator, const ScriptCommand& command) {
    using Verb = ScriptCommand::Verb;
    switch (command.verb) {
    case Verb::ServerAnswerText:
    case Verb::ServerAnswerNumber:
    case Verb::ServerAnswerHuge:
    case Verb::ServerFail:
    case Verb::ServerDelay:
    case Verb::ServerTime:
    case Verb::ServerAuto:
    case Verb::ServerDie: return SteerServer(simulator, command);
    case Verb::ForecourtLift:
    case Verb::ForecourtHang:
    case Verb::ForecourtCard:
    case Verb::ForecourtKeys:
    case Verb::ForecourtCash:
    case Verb::ForecourtPacket:
    case Verb::ForecourtWash: return SteerForecourt(simulator, command);
    default: return "not a server or forecourt line";
    }
}

}  // namespace vantrel
