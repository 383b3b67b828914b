#include "device_window.h"

#include "base/console.h"
#include "devices/devices.h"

namespace vantrel {

void SetDeviceData(Console& console, Text text) {
    console.Form(kOtherDevicesForm).SetText(kDeviceData, std::move(text));
}

void ReadIntoDeviceData(Console& console, std::string_view member) {
    SetDeviceData(console, ToText(console.KRM().Call(member)));
}

void AssignCarWashRequest(Console& console, const Text& block) {
    console.KRM().Put("CarWashInformationRequest", Variant::OfText(block));
}

namespace {

void ShowOtherDevices(Console& console) { console.ShowModal(kOtherDevicesForm); }

// Only the first showing loads the window; reopening keeps the alternation.
void LoadOtherDevices(Console& console) { console.PriceSET = 0; }

// Hidden, not unloaded: the code box, CodeNumber and the device data stay.
void ExitOtherDevices(Console& console) { console.Hide(kOtherDevicesForm); }

}  // namespace

void AddDevicesControls(std::vector<Control>& controls) {
    controls.push_back(CommandButton("OTHERDEVICESBUTTON", u"OTHER DEVICES", 240, 480, 1335, 615, ShowOtherDevices)
                           .Graphical(0x0000FF00));
}

FormDescription OtherDevicesForm() {
    FormDescription form = MakeForm(kOtherDevicesForm, u"OTHER DEVICES", 10920, 6480);
    form.load = LoadOtherDevices;

    std::vector<Control>& c = form.controls;
    AddReaderControlControls(c);
    AddCarWashControls(c);
    AddCarWashPriceControls(c);
    AddTankMonitorControls(c);
    AddPriceSignControls(c);

    c.push_back(Label("DeviceDataLabel", u"DEVICE DATA", 8400, 120, 1935, 375));
    Control deviceData = TextBox(kDeviceData, {}, 7440, 600, 3255, 3255);
    deviceData.multiLine = true;
    deviceData.scrollBars = ScrollBars::Both;
    deviceData.readOnly = true;  // its exact text lives in the model, as the console's data box
    c.push_back(std::move(deviceData));

    c.push_back(CommandButton("EXIT_CMD", u"EXIT", 120, 6000, 1095, 375, ExitOtherDevices));
    return form;
}

}  // namespace vantrel
