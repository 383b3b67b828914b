#pragma once

#include "base/console.h"
#include "base/traced_prompter.h"
#include "win32/win32_form_window.h"
#include "win32/win32_ports.h"

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace vantrel::win32 {

// The console on Windows: the console window with its menu bar, the
// secondary windows on demand, and every user-interface event dispatched
// through the error report.
class ConsoleApp {
public:
    ConsoleApp(std::vector<FormDescription> forms, const ServerRegistry& servers, CallListener& events,
               vantrel::Prompter& prompter, ProcessErrorReport& report, bool interactive);
    ConsoleApp(const ConsoleApp&) = delete;
    ConsoleApp& operator=(const ConsoleApp&) = delete;

    // The console window's load: creates the server. Throws its RuntimeError.
    void Load();
    void Show();

    Console& console() { return console_; }
    FormWindow& window() { return *window_; }
    // The window of that form if it was ever shown, or nullptr.
    FormWindow* Window(std::string_view form);
    // The secondary window shown modally, else the console window.
    FormWindow& Active();

    // What Tools > Reconnect to the server does; the program sets it.
    std::function<void()> onReconnect;

private:
    void Dispatch(const Handler& handler);
    MenuBar Menus();

    ServerRegistry servers_;  // the program's, with the busy cursor
    TracedPrompter prompter_;
    ProcessErrorReport& report_;
    WindowHost windows_;
    Console console_;
    std::unique_ptr<FormWindow> window_;
    bool interactive_;  // a person at the windows, not a script: the timers run
};

}  // namespace vantrel::win32
