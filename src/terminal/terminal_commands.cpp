#include "terminal_commands.h"

#include "console/console.h"

namespace vantrel {

Text ReaderPositionLine(const Console& console) { return u"ReaderPosition=" + console.SelectedPositionText; }

void AssignThroughCommandData(Console& console, std::string_view member, const Text& block) {
    console.CommandData = Variant::OfText(block);
    console.KRM().Put(member, console.CommandData);
}

}  // namespace vantrel
