#include "system_commands.h"

#include "console/console.h"

namespace vantrel {

// FIXME: the system commands, the stress tick and the set-up dialogs come
// with their own change; until then the timer ticks without work.
void AddSystemControls(std::vector<Control>&) {}

void StressTick(Console&) {}

FormDescription GetDebugSelectForm() {
    FormDescription form;
    form.name = "GetDebugSelect";
    form.caption = u"Get Debug Select";
    form.clientWidth = 4275;
    form.clientHeight = 3840;
    form.backColor = 0x000000FF;
    return form;
}

FormDescription SerialPortParaForm() {
    FormDescription form;
    form.name = "SerialPortPara";
    form.caption = u"Serial Port Para";
    form.clientWidth = 5610;
    form.clientHeight = 2640;
    form.backColor = 0x00FF8080;
    return form;
}

}  // namespace vantrel
