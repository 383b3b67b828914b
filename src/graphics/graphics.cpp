#include "graphics.h"

#include "base/console.h"

namespace vantrel {

void AddGraphicsControls(std::vector<Control>& controls) {
    // Each window is one instance for the run: the console loads it on the
    // first showing and shows the same one again later.
    controls.push_back(CommandButton("InfoDisplay", u"Info Disp", 2160, 4800, 1575, 375, [](Console& console) {
                           console.ShowModal(kGraphicsDisplayForm);
                       }).Graphical(0x00FFFF00));
    controls.push_back(
        CommandButton("TEST_FUNCTION_BUTTON", u"Test Functions", 360, 3000, 1335, 375, [](Console& console) {
            console.ShowModal(kTestFunctionForm);
        }).Graphical(0x0000FFFF));
}

}  // namespace vantrel
