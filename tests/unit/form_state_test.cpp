// A window's text box tells its view only when its exact text changes.

#include "base/form.h"
#include "base/form_state.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vantrel {
namespace {

FormDescription ManyControls(int count) {
    FormDescription form = MakeForm("Many", u"Many", 1000, 1000);
    for (int i = 0; i < count; ++i) {
        form.controls.push_back(TextBox("Box" + std::to_string(i), u"text " + FromUtf8(std::to_string(i)), 0, 0, 1, 1));
    }
    return form;
}

TEST(FormState, ATextBoxTellsItsViewOnlyWhenItsExactTextChanges) {
    FormState state(ManyControls(3));
    std::vector<std::string> told;
    state.SetListener([&told](const std::string& control, FormState::Property) { told.push_back(control); });
    const Text block = Text(u"A=1\r\n") + kNul;
    state.SetText("Box1", block);
    state.SetText("Box1", block);                       // the same again: nothing to tell
    state.SetText("Box1", Text(u"A=1\r\n") + u'\x01');  // one character differs, after a CR LF
    state.SetText("Box1", Text(u"A=1\r\n"));            // one character shorter
    state.SetText("Box2", u"text 2");                   // as it was
    EXPECT_EQ((std::vector<std::string>{"Box1", "Box1", "Box1"}), told);
    EXPECT_TEXT(u"A=1\r\n", state.TextOf("Box1"));
    // A text taken from the box itself is no change either.
    state.SetText("Box1", TextView(state.TextOf("Box1")).substr(0));
    EXPECT_EQ(3u, told.size());
}

}  // namespace
}  // namespace vantrel
