#pragma once

#include "server/text.h"

#include <string_view>

namespace vantrel {

class Console;

inline constexpr char kOtherDevicesForm[] = "OtherDevicesForm";

// The echo of every assignment to CarWashInformationRequest.
inline constexpr char16_t kCarWashRequestEcho[] = u"<Object>.CarWashInformationRequest = <data>";

// The window's own data box. No command of the window writes the console's.
void SetDeviceData(Console& console, Text text);

// Calls a member without argument and shows its answer, as text, in the
// device data box.
void ReadIntoDeviceData(Console& console, std::string_view member);

// Assigns a car wash block as a value of its own; CommandData is left alone.
void AssignCarWashRequest(Console& console, const Text& block);

// The window itself.
void ShowOtherDevices(Console& console);  // OTHERDEVICESBUTTON on the console
void LoadOtherDevices(Console& console);  // first showing only
void ExitOtherDevices(Console& console);  // EXIT_CMD
void CodeBoxChange(Console& console);

// Car wash code and status.
void CarWashGetCode(Console& console);
void CarWashCancelCode(Console& console);
void CarWashCodeStatus(Console& console);
void CarWashWashStatus(Console& console);
void CarWashReadData(Console& console);
void CarWashCommandStatus(Console& console);

// Car wash data requests: one request word each, nothing read back.
void CarWashKeyRead(Console& console);
void CarWashPriceRead(Console& console);
void CarWashReportRead(Console& console);
void CarWashRfidRead(Console& console);
void CarWashTransRead(Console& console);
void CarWashCardRead(Console& console);

// Car wash price tables, alternating on every press.
void CarWashPriceSet(Console& console);

// Price sign: deliberately silent apart from GET STATUS's answer.
void PriceSignGetStatus(Console& console);
void PriceSignSendPrices(Console& console);
void PriceSignSendControl(Console& console);

// Tank monitor.
void TankMonitorStartReport(Console& console);
void TankMonitorReportStatus(Console& console);
void TankMonitorReadReport(Console& console);

// Reader terminal at the selected position: chip reader and a printed bar
// code. None of them writes a text box.
void ChipReaderEnable(Console& console);
void ChipReaderDisable(Console& console);
void PacketPrintBarCode(Console& console);

}  // namespace vantrel
