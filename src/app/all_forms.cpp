#include "all_forms.h"

#include "console/console_form.h"
#include "console/setup_dialogs.h"
#include "devices/devices.h"
#include "dispenser/dispenser.h"
#include "graphics/graphics.h"
#include "queues/queues.h"
#include "terminal/terminal.h"

namespace vantrel {

FormDescription ConsoleForm() {
    FormDescription form = ConsoleShellForm();
    AddDispenserControls(form.controls);
    AddTerminalControls(form.controls);
    AddQueueControls(form.controls);
    AddDevicesControls(form.controls);
    AddGraphicsControls(form.controls);
    return form;
}
std::vector<FormDescription> AllForms() {
    std::vector<FormDescription> forms;
    forms.push_back(ConsoleForm());
    forms.push_back(OtherDevicesForm());
    forms.push_back(GraphicsDisplayForm());
    forms.push_back(TestFunctionForm());
    forms.push_back(GetDebugSelectForm());
    forms.push_back(SerialPortParaForm());
    return forms;
}

}  // namespace vantrel
