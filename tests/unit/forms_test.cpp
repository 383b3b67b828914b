// The windows as a whole. What every window must hold, whatever its rows:
// each control inside the client area of its window or frame, names unique,
// every command button wired to a click, and a button that lies on a larger
// one made after it, so that it is drawn on top and takes the click there.
#include "app/all_forms.h"
#include "devices/devices.h"
#include "graphics/graphics.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>
#include <string>

namespace vantrel {
namespace {

// Whether a lies wholly on b.
bool Within(const Control& a, const Control& b) {
    return a.container == b.container && a.left >= b.left && a.top >= b.top && a.left + a.width <= b.left + b.width &&
           a.top + a.height <= b.top + b.height;
}

TEST(Forms, EveryWindowIsWellFormed) {
    std::set<std::string> overlays;
    for (const FormDescription& form : AllForms()) {
        SCOPED_TRACE(form.name);
        std::set<std::string> names;
        for (std::size_t i = 0; i < form.controls.size(); ++i) {
            const Control& control = form.controls[i];
            EXPECT_TRUE(names.insert(control.name).second) << "repeats " << control.name;
            int width = form.clientWidth;
            int height = form.clientHeight;
            if (!control.container.empty()) {
                const Control* frame = form.Find(control.container);
                ASSERT_NE(nullptr, frame) << control.name;
                width = frame->width;
                height = frame->height;
            }
            EXPECT_TRUE(control.left >= 0 && control.top >= 0 && control.left + control.width <= width &&
                        control.top + control.height <= height)
                << control.name << " lies outside";
            if (control.kind != ControlKind::CommandButton) {
                continue;
            }
            EXPECT_TRUE(static_cast<bool>(control.click)) << control.name << " has no click";
            for (std::size_t j = 0; j < i; ++j) {
                const Control& earlier = form.controls[j];
                if (earlier.kind != ControlKind::CommandButton) {
                    continue;
                }
                EXPECT_FALSE(Within(earlier, control)) << control.name << " is made after " << earlier.name;
                if (Within(control, earlier)) {
                    overlays.insert(control.name);
                }
            }
        }
    }
    // The two small buttons that the console's layout places on larger ones.
    EXPECT_EQ((std::set<std::string>{"Price3Blend", "STOP_ALL"}), overlays);
}

// Each secondary window opens modally from its console button, one instance
// for the run; opening and EXIT ask the server nothing and write no box.
TEST(SecondaryWindows, OpenFromTheConsoleAndExitOnlyHides) {
    struct Case {
        const char* button;
        const char* form;
        const char* exit;
    };
    for (const Case& c : {Case{"OTHERDEVICESBUTTON", kOtherDevicesForm, "EXIT_CMD"},
                          Case{"InfoDisplay", kGraphicsDisplayForm, "EXIT_BUTTON"},
                          Case{"TEST_FUNCTION_BUTTON", kTestFunctionForm, "EXIT_BUTTON"}}) {
        testing::TestConsole test;
        EXPECT_FALSE(test.console().IsLoaded(c.form));
        test.Click(c.button);
        EXPECT_TRUE(test.console().IsLoaded(c.form));
        test.Click(c.exit, c.form);
        test.Click(c.button);
        EXPECT_EQ((std::vector<std::string>{c.form, c.form}), test.windows().shown);
        EXPECT_EQ(std::vector<std::string>{c.form}, test.windows().hidden);
        EXPECT_TRUE(test.calls().empty());
        EXPECT_TEXT(u"Function Box", test.console().FunctionBox());
        EXPECT_TEXT(u"", test.console().DataBox());
        EXPECT_TRUE(test.console().CommandData.is(Variant::Kind::Empty));
    }
}

}  // namespace
}  // namespace vantrel
