// The one query among the terminal commands.

#include "base/console.h"
#include "terminal/terminal_parts.h"

namespace vantrel {

namespace {

void ReaderInfoClick(Console& console) {
    console.SetFunctionBox(u"(return data)=<Object>.ReaderInformation (passed data)");
    // The selected number by reference, never the two-digit text, which the
    // bar-code print may have forced to "01".
    console.SetDataBox(ToText(console.KRM().CallByRef("ReaderInformation", console.SelectedPosition)));
}

}  // namespace

void AddReaderInfoControls(std::vector<Control>& controls) {
    controls.push_back(CommandButton("ReaderInfo", u"Reader Info", 240, 2040, 1335, 255, ReaderInfoClick));
}

}  // namespace vantrel
