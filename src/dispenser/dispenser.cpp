#include "dispenser.h"

#include "base/console.h"
#include "dispenser/authorization.h"
#include "dispenser/prices.h"
#include "dispenser/sale_control.h"

namespace vantrel {

namespace {

// The position goes as the number itself, by reference, not as its text: it
// asks for the selected position even when a bar-code print has overwritten
// the two-digit text.
void DispenserInfo(Console& console) {
    console.SetFunctionBox(u"(return data)=<Object>.DispenserInformation (passed data)");
    console.SetDataBox(ToText(console.KRM().CallByRef("DispenserInformation", console.SelectedPosition)));
}

}  // namespace

void AddDispenserControls(std::vector<Control>& controls) {
    controls.push_back(CommandButton("DispenserInfo", u"Dispenser Info", 240, 1680, 1335, 255, DispenserInfo));
    AddAuthorizationButtons(controls);
    AddPriceButtons(controls);
    AddSaleControlButtons(controls);
}

}  // namespace vantrel
