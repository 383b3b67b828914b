#pragma once

#include "support/test_support.h"
#include "ui/console_window.h"

#include <gtest/gtest.h>

#include <QWidget>

#include <functional>
#include <memory>

namespace vantrel::testing {

// The console built as the program builds it, over a recording server, its
// window shown on the offscreen platform.
class QtConsoleTest : public ::testing::Test {
protected:
    // Boxes go to the scripted prompter unless another is given; the timers
    // run only on request. `beforeLoad` runs once the window exists.
    void Start(Prompter* prompter = nullptr, bool runTimers = false, const std::function<void()>& beforeLoad = {});

    FormView& view() { return app_->window().view(); }
    // The widget of a console control, failing the test when there is none.
    template <typename Widget>
    Widget* Find(const char* name) {
        auto* widget = qobject_cast<Widget*>(view().Widget(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }

    ServerRegistry servers_;
    CallEvents events_;
    ScriptedPrompter prompter_;
    RecordingReport report_;
    RecordingServer* server_ = nullptr;
    std::unique_ptr<ConsoleApp> app_;
};

}  // namespace vantrel::testing
