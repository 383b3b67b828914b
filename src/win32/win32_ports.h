#pragma once

#include "base/ports.h"
#include "base/process_error_report.h"
#include "win32/win32_form_window.h"

#include <windows.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {
class Console;
}

namespace vantrel::win32 {

// The window that owns a box now: the secondary window shown modally, else
// the console. Set by the window host.
HWND BoxOwner();

// The system's message boxes, and an input box with a prompt, a title, an
// empty entry, OK and Cancel. Texts show control characters by name.
class Prompter final : public vantrel::Prompter {
public:
    void Message(const Text& text, const Text& title) override;
    Answer Ask(const Text& text, const Text& title) override;
    Text Input(const Text& prompt, const Text& title) override;
};

// The error report in the system's message box.
class ErrorReport final : public ProcessErrorReport {
public:
    using ProcessErrorReport::ProcessErrorReport;

protected:
    void ShowBox(const std::string& message, const std::string& details) override;
};

// The secondary windows, each made on its first showing and kept, hidden,
// for the rest of the run. A window shown is modal to the console: the
// console and the other windows take no input until it is hidden again.
class WindowHost final : public vantrel::WindowHost {
public:
    void Attach(Console& console, HWND owner, EventDispatcher dispatch);

    void ShowModal(std::string_view form) override;
    void Hide(std::string_view form) override;

    FormWindow* Window(std::string_view form) const;
    // The secondary window on top while it is shown, or nullptr.
    FormWindow* Shown() const;

private:
    struct Entry {
        std::unique_ptr<FormWindow> window;
        bool up = false;
    };
    Console* console_ = nullptr;
    HWND owner_ = nullptr;
    EventDispatcher dispatch_;
    std::map<std::string, Entry, std::less<>> windows_;
    std::vector<std::string> stack_;  // the windows shown, innermost last
};

// Runs the message loop until `done` or the end of the program, with the
// keyboard of dialogs (Tab, Enter on the focused button). Gives the exit
// code when the program is ending (posted again for any outer loop), and
// nothing when `done`.
std::optional<int> RunMessageLoop(const std::function<bool()>& done);

}  // namespace vantrel::win32
