#pragma once

#include "base/console.h"
#include "base/traced_prompter.h"
#include "ui/form_view.h"
#include "ui/qt_ports.h"

#include <QMainWindow>

#include <memory>
#include <vector>

class QMenu;

namespace vantrel {

// The console window: the VantrelTest form as the central widget, with a
// menu bar above it for the tools and the set-up dialogs, which have no button
// on the form. The menu bar adds height above the client area; no control moves.
class ConsoleWindow final : public QMainWindow {
    Q_OBJECT

public:
    ConsoleWindow(Console& console, EventDispatcher dispatch);
    Q_DISABLE_COPY_MOVE(ConsoleWindow)

    FormView& view() { return *view_; }
    QMenu& toolsMenu() { return *tools_; }
    QMenu& setupMenu() { return *setup_; }

private:
    FormView* view_ = nullptr;
    QMenu* tools_ = nullptr;
    QMenu* setup_ = nullptr;
};

struct ConsoleOptions {
    bool runTimers = true;  // script mode fires the timer by hand
};

// The whole console as one object: the state, the windows, the ports. The
// program, the UI tests and script mode all build it the same way.
class ConsoleApp {
public:
    ConsoleApp(std::vector<FormDescription> forms, const ServerRegistry& servers, CallListener& events,
               Prompter& prompter, ErrorReport& report, ConsoleOptions options = {});
    ~ConsoleApp();
    ConsoleApp(const ConsoleApp&) = delete;
    ConsoleApp& operator=(const ConsoleApp&) = delete;

    // The console's load; throws when the server cannot be created, before
    // any window is shown.
    void Load();
    // Shows the console window with the focus on no position button.
    void Show();

    Console& console() { return console_; }
    ConsoleWindow& window() { return *window_; }
    QtWindowHost& windows() { return windows_; }
    // The view of any window by form name, or nullptr if not made yet.
    FormView* View(std::string_view form);
    // The window that has the input: the secondary window shown modally, or
    // the console.
    FormView& ActiveView();
    void Dispatch(const Handler& handler);

private:
    TracedPrompter prompter_;
    ErrorReport& report_;
    QtWindowHost windows_;
    ServerRegistry servers_;  // the program's, with the busy cursor
    Console console_;
    std::unique_ptr<ConsoleWindow> window_;
    ConsoleOptions options_;
};

}  // namespace vantrel
