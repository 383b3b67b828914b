#include "devices/device_window.h"

#include "base/console.h"

namespace vantrel {

namespace {

void TankMonitorStartReport(Console& console) {
    // The echo says "(data)" although only the number 1 is sent.
    console.SetFunctionBox(u"<Object>.TankMonitorStartReport = (data)");
    console.KRM().Put("TankMonitorStartReport", Variant::OfInt16(1));
    // Cleared only once the start went through; a failed start leaves the
    // last report on show.
    SetDeviceData(console, Text());
}

void TankMonitorReportStatus(Console& console) {
    console.SetFunctionBox(u"(data)=<Object>.TankMonitorReportStatus");
    ReadIntoDeviceData(console, "TankMonitorReportStatus");
}

void TankMonitorReadReport(Console& console) {
    console.SetFunctionBox(u"(data)=<Object>.TankMonitorReport");
    ReadIntoDeviceData(console, "TankMonitorReport");
}

}  // namespace

void AddTankMonitorControls(std::vector<Control>& controls) {
    controls.push_back(Label("TM_LABEL", u"TANK MONITOR", 5040, 240, 2055, 255));
    controls.push_back(CommandButton("TMStartReport", u"START REPORT", 5280, 720, 1695, 375, TankMonitorStartReport));
    controls.push_back(
        CommandButton("TMREPORTSTATUSBUTTON", u"REPORT STATUS", 5280, 1320, 1695, 375, TankMonitorReportStatus));
    controls.push_back(CommandButton("TMDATAREADBUTTON", u"READ REPORT", 5280, 1920, 1695, 375, TankMonitorReadReport));
}

}  // namespace vantrel
