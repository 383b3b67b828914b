#pragma once

#include "base/form.h"
#include "server/text.h"

#include <string_view>
#include <vector>

namespace vantrel {

class Console;

// Controls of the window that commands read or write.
inline constexpr char kDeviceData[] = "DeviceData";
inline constexpr char kCodeBox[] = "CodeBox";

// The echo of every assignment to CarWashInformationRequest.
inline constexpr char16_t kCarWashRequestEcho[] = u"<Object>.CarWashInformationRequest = <data>";

// The window's own data box. No command of the window writes the console's.
void SetDeviceData(Console& console, Text text);

// Calls a member without argument and shows its answer, as text, in the
// device data box.
void ReadIntoDeviceData(Console& console, std::string_view member);

// Assigns a car wash block as a value of its own; CommandData is left alone.
void AssignCarWashRequest(Console& console, const Text& block);

// Each file of the folder adds the window's rows of its own buttons.
void AddReaderControlControls(std::vector<Control>& controls);
void AddCarWashControls(std::vector<Control>& controls);
void AddCarWashPriceControls(std::vector<Control>& controls);
void AddTankMonitorControls(std::vector<Control>& controls);
void AddPriceSignControls(std::vector<Control>& controls);

}  // namespace vantrel
