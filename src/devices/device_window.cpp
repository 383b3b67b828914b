#include "device_commands.h"

#include "base/console.h"

namespace vantrel {

void SetDeviceData(Console& console, Text text) {
    console.Form(kOtherDevicesForm).SetText("DeviceData", std::move(text));
}

void ReadIntoDeviceData(Console& console, std::string_view member) {
    SetDeviceData(console, ToText(console.KRM().Call(member)));
}

void AssignCarWashRequest(Console& console, const Text& block) {
    console.KRM().Put("CarWashInformationRequest", Variant::OfText(block));
}

void ShowOtherDevices(Console& console) { console.ShowModal(kOtherDevicesForm); }

// Only the first showing loads the window; reopening keeps the alternation.
void LoadOtherDevices(Console& console) { console.PriceSET = 0; }

// Hidden, not unloaded: the code box, CodeNumber and the device data stay.
void ExitOtherDevices(Console& console) { console.Hide(kOtherDevicesForm); }

void CodeBoxChange(Console& console) { console.CodeNumber = console.Form(kOtherDevicesForm).TextOf("CodeBox"); }

}  // namespace vantrel
