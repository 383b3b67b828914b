#include "console_window.h"

#include "console/setup_dialogs.h"
#include "base/traced_prompter.h"
#include "ui/busy_cursor.h"
#include "ui/visible_text.h"

#include <QApplication>
#include <QMenuBar>

namespace vantrel {

ConsoleWindow::ConsoleWindow(Console& console, EventDispatcher dispatch) {
    const FormDescription& description = console.Description(kConsoleForm);
    setObjectName(QStringLiteral("VantrelTestWindow"));
    setWindowTitle(ToQString(description.caption));
    view_ = new FormView(description, console.Window(), dispatch, this);
    setCentralWidget(view_);
    tools_ = menuBar()->addMenu(tr("&Tools"));
    tools_->setObjectName(QStringLiteral("ToolsMenu"));
    // The set-up dialogs have no button on the console; the menu reaches them
    // without moving a control.
    setup_ = menuBar()->addMenu(tr("&Set-up"));
    setup_->setObjectName(QStringLiteral("SetupMenu"));
    for (const MenuEntry& entry : SetupMenu()) {
        QAction* action = setup_->addAction(ToQString(entry.caption));
        action->setObjectName(QString::fromStdString(entry.name));
        connect(action, &QAction::triggered, this, [dispatch, handler = entry.action] { dispatch(handler); });
    }
    // The menu bar's height comes on top of the fixed client area.
    setFixedSize(view_->width(), view_->height() + menuBar()->sizeHint().height());
}

ConsoleApp::ConsoleApp(std::vector<FormDescription> forms, const ServerRegistry& servers, CallListener& events,
                       Prompter& prompter, ErrorReport& report, ConsoleOptions options)
    : prompter_(prompter, events)
    , report_(report)
    , servers_(servers.Decorated(BusyWhileCalling))
    , console_(Console::Ports{servers_, events, prompter_, windows_}, std::move(forms))
    , options_(options) {
    // Menus and boxes in the forms' font too: a second face at start-up
    // cost its own font search and glyphs.
    QApplication::setFont(FormFont());
    const EventDispatcher dispatch = [this](const Handler& handler) { Dispatch(handler); };
    window_ = std::make_unique<ConsoleWindow>(console_, dispatch);
    windows_.Attach(console_, *window_, dispatch);
}

ConsoleApp::~ConsoleApp() = default;

void ConsoleApp::Load() { console_.Load(); }

void ConsoleApp::Show() {
    window_->show();
    window_->activateWindow();
    // A toolkit gives the first focusable control the focus; a position
    // button with the focus would call the server at start-up.
    window_->view().setFocus(Qt::OtherFocusReason);
    window_->view().SetTimersRunning(options_.runTimers);
}

FormView* ConsoleApp::View(std::string_view form) {
    if (form == kConsoleForm) {
        return &window_->view();
    }
    return windows_.View(form);
}

FormView& ConsoleApp::ActiveView() {
    FormView* shown = windows_.ShownView();
    return shown ? *shown : window_->view();
}

void ConsoleApp::Dispatch(const Handler& handler) { vantrel::Dispatch(console_, handler, report_); }

}  // namespace vantrel
