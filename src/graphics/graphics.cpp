#include "graphics.h"

#include "console/console.h"

namespace vantrel {

// FIXME: both windows' controls and the console's buttons come with their
// own change.
void AddGraphicsControls(std::vector<Control>&) {}

FormDescription GraphicsDisplayForm() {
    FormDescription form;
    form.name = "GraphicsDisplay";
    form.caption = u"Graphics Display";
    form.clientWidth = 5520;
    form.clientHeight = 3810;
    return form;
}

FormDescription TestFunctionForm() {
    FormDescription form;
    form.name = "TestFunctionForm";
    form.caption = u"Test Functions";
    form.clientWidth = 4680;
    form.clientHeight = 3195;
    return form;
}

}  // namespace vantrel
