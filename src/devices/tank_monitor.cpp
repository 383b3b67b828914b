#include "device_commands.h"

#include "base/console.h"

namespace vantrel {

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

}  // namespace vantrel
