#include "terminal.h"

#include "base/console.h"
#include "terminal/terminal_parts.h"

namespace vantrel {

void AssignThroughCommandData(Console& console, std::string_view member, const Text& block) {
    console.CommandData = Variant::OfText(block);
    console.KRM().Put(member, console.CommandData);
}

void AddTerminalControls(std::vector<Control>& controls) {
    AddReaderInfoControls(controls);
    AddPreloadedMessageControls(controls);
    AddDisplayBeeperControls(controls);
    AddKeyEntryControls(controls);
    AddPrinterControls(controls);
}

}  // namespace vantrel
