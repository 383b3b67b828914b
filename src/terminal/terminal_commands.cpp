#include "terminal_commands.h"

#include "base/console.h"

namespace vantrel {

void AssignThroughCommandData(Console& console, std::string_view member, const Text& block) {
    console.CommandData = Variant::OfText(block);
    console.KRM().Put(member, console.CommandData);
}

}  // namespace vantrel
