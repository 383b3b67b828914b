#include "devices.h"

#include "console/console.h"

namespace vantrel {

// FIXME: the window's controls and the console's button come with their own
// change.
void AddDevicesControls(std::vector<Control>&) {}

FormDescription OtherDevicesForm() {
    FormDescription form;
    form.name = "OtherDevicesForm";
    form.caption = u"OTHER DEVICES";
    form.clientWidth = 10920;
    form.clientHeight = 6480;
    return form;
}

}  // namespace vantrel
