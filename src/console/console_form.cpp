#include "console_form.h"

#include "base/console.h"
#include "console/position_selector.h"
#include "console/system_commands.h"

namespace vantrel {

namespace {

void AddShellControls(std::vector<Control>& controls) {
    Control headline = TextBox("Headline", u"VantrelTest Utility Ver 1010.29", 0, 0, 8535, 360).Back(0x0000C000);
    headline.centred = true;
    headline.readOnly = true;
    headline.font = Font{"Tahoma", 9.75, true};
    controls.push_back(std::move(headline));

    Control functionBox = TextBox(kFunctionBox, u"Function Box", 1800, 480, 4935, 375);
    functionBox.centred = true;
    functionBox.readOnly = true;
    controls.push_back(std::move(functionBox));

    Control dataBox = TextBox(kDataBox, {}, 3960, 1320, 2655, 3375);
    dataBox.multiLine = true;
    dataBox.scrollBars = ScrollBars::Both;
    dataBox.readOnly = true;
    controls.push_back(std::move(dataBox));

    controls.push_back(Label("FPLabel", u"Fueling Position Select", 6720, 600, 1695, 255).Back(0x00008000));
    Control pumpNumber = TextBox(kPumpNumberBox, {}, 6720, 960, 1695, 285);
    pumpNumber.readOnly = true;
    controls.push_back(std::move(pumpNumber));

    AddPositionSelector(controls);

    controls.push_back(Label("Label1", u"Key Entry Type", 120, 3480, 1695, 255).Fore(0x00FF0000));
    controls.push_back(Timer("Timer1", 1000, StressTick));
}

}  // namespace

FormDescription ConsoleShellForm() {
    FormDescription form = MakeForm(kConsoleForm, u"Vantrel Test Utility    (Test 10/29/10)", 8655, 7860, 0x00A67231);
    AddShellControls(form.controls);
    AddSystemControls(form.controls);
    return form;
}

}  // namespace vantrel
