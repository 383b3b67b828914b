#pragma once

#include "server/text.h"

#include <functional>
#include <string>

namespace vantrel {

// What a script drives: the windows of one front-end, Qt or Win32. The script
// runner decides what a line means and what its failure says; the front-end
// only acts on its own widgets, the way a person at its windows would.
class ScriptFrontEnd {
public:
    virtual ~ScriptFrontEnd() = default;

    // The form name of the window that has the input: the secondary window
    // shown modally, or the console.
    virtual std::string ActiveForm() = 0;

    // A left click (and a second one for a double click) on a control of the
    // window that has the input, focus moving to it first where the control
    // takes focus. False when the control cannot be clicked now (hidden or
    // disabled).
    virtual bool Click(const std::string& control, bool twice) = 0;
    // Replaces the text of a single-line text box of the window that has the
    // input, as typing would: its change handler runs.
    virtual void Type(const std::string& control, const Text& text) = 0;
    // Picks an entry of the console's menu bar, named without the "&". False
    // when there is no such entry.
    virtual bool Menu(const std::string& menu, const Text& entry) = 0;
    // Fires the console's timer once.
    virtual void Tick() = 0;

    enum class Picture {
        Written,
        NoWindow,
        NotWritten,
    };
    // A PNG of the window with that form name, or of a tool window shown.
    virtual Picture Shot(const std::string& window, const std::string& file) = 0;

    // Runs the step on a later turn of the event loop: inside a modal
    // window's loop when one opens meanwhile.
    virtual void Later(std::function<void()> step) = 0;
    // Ends the event loop; the program exits with the code.
    virtual void Quit(int code) = 0;
};

}  // namespace vantrel
