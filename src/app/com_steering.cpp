#include "app/com_steering.h"

#include "com/com_dispatch.h"
#include "simulator_dll/com_simulator_control.h"

namespace vantrel {

std::unique_ptr<SimulatorSteering> ComSteering::Of(const com::ComObject& server, bool scripted) {
    // Only the simulator knows the name; the real server is asked for the
    // name only, and nothing is invoked on it.
    IDispatch* dispatch = server.dispatch();
    LPOLESTR name = const_cast<LPOLESTR>(com::kSteeringMember);
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(dispatch->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id))) {
        return nullptr;
    }
    DISPPARAMS none{};
    VARIANT result;
    VariantInit(&result);
    if (FAILED(dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &result, nullptr,
                                nullptr)) ||
        V_VT(&result) != VT_DISPATCH || !V_DISPATCH(&result)) {
        VariantClear(&result);
        return nullptr;
    }
    auto steering = std::make_unique<com::ComObject>(V_DISPATCH(&result));  // takes its own reference
    VariantClear(&result);
    if (scripted) {
        steering->Call("UseScriptClock");
    }
    return std::make_unique<ComSteering>(std::move(steering));
}

ComSteering::ComSteering(std::unique_ptr<com::ComObject> steering)
    : steering_(std::move(steering)) {}

ComSteering::~ComSteering() = default;

std::string ComSteering::Steer(const ScriptCommand&, const std::string& line) {
    try {
        return ToUtf8(ToText(steering_->Call("Steer", Variant::OfText(FromUtf8(line)))));
    } catch (const RuntimeError& error) {
        return "the simulator could not be steered: " + error.description();
    }
}

}  // namespace vantrel
