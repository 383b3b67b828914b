#pragma once

#include "base/form.h"
#include "server/text.h"

#include <string_view>
#include <vector>

namespace vantrel {

class Console;

// What the reader-terminal commands share: the hand-over through the shared
// argument value.

// Copies the block into CommandData and assigns that value to the member.
void AssignThroughCommandData(Console& console, std::string_view member, const Text& block);

// Each file of the folder adds the console rows of its own buttons.
void AddReaderInfoControls(std::vector<Control>& controls);
void AddPreloadedMessageControls(std::vector<Control>& controls);
void AddDisplayBeeperControls(std::vector<Control>& controls);
void AddKeyEntryControls(std::vector<Control>& controls);
void AddPrinterControls(std::vector<Control>& controls);

}  // namespace vantrel
