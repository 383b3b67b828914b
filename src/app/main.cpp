// vantrel-test: the hand-driven test console for "Vantrel.Application".

#include "app/all_forms.h"
#include "app/program.h"
#include "app/replay_run.h"
#include "app/shown_probe.h"
#include "app/trace_output.h"
#include "base/console.h"
#include "base/reconnect.h"
#include "script/script_file.h"
#include "script/script_runner.h"
#include "script/simulator_steering.h"
#include "server/server_calls.h"
#include "server/server_link.h"
#include "server/trace_json.h"
#include "simulator/simulator.h"
#include "ui/call_monitor_window.h"
#include "ui/console_style.h"
#include "ui/console_window.h"
#include "ui/qt_ports.h"
#include "ui/script_front_end.h"
#include "ui/simulator_window.h"

#include <QApplication>
#include <QAction>
#include <QMenu>
#include <QMessageBox>
#include <QSettings>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr char kKeepGoingKey[] = "keepGoingAfterRunTimeErrors";

bool HasDisplay() {
#if defined(__linux__)
    const char* platform = std::getenv("QT_QPA_PLATFORM");
    if (platform && *platform) {
        return true;
    }
    const char* x11 = std::getenv("DISPLAY");
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    return (x11 && *x11) || (wayland && *wayland);
#else
    return true;
#endif
}

}  // namespace

int main(int argc, char* argv[]) {
    const auto parsed = vantrel::ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
    if (const int* code = std::get_if<int>(&parsed)) {
        return *code;
    }
    const vantrel::ProgramOptions& options = std::get<vantrel::ProgramOptions>(parsed);
    if (options.replay) {
        return vantrel::RunReplay(options);  // headless: no window, no display needed
    }

    vantrel::IgnoreBrokenPipes();
    vantrel::RaiseOpenFileLimit();
    std::vector<std::string> scriptLines;
    if (options.script) {
        auto read = vantrel::ReadScriptFile(*options.script);
        if (const auto* problem = std::get_if<std::string>(&read)) {
            return vantrel::Refused(*problem);
        }
        scriptLines = std::move(std::get<std::vector<std::string>>(read));
        // Script mode needs no display.
        qputenv("QT_QPA_PLATFORM", "offscreen");
    } else if (!HasDisplay()) {
        std::fprintf(stderr,
                     "vantrel-test: no display found; run with --script FILE to drive the console headless, "
                     "or set QT_QPA_PLATFORM=offscreen\n");
        return 1;
    }

    vantrel::CallEvents events;
    auto opened = vantrel::OpenRunRecords(options, events);
    if (const int* code = std::get_if<int>(&opened)) {
        return *code;
    }
    vantrel::RunRecords& records = std::get<vantrel::RunRecords>(opened);
    // A trace that cannot be written is never a silent loss: it fails a
    // script; a normal run says so once, goes on, and the monitor notes it.
    std::unique_ptr<vantrel::ScriptRunner> runner;
    vantrel::CallMonitor* monitorForNotes = nullptr;
    for (const auto& trace : records.traces) {
        trace->SetFailure([&runner, &monitorForNotes, script = options.script.has_value()](const std::string& message) {
            if (runner) {
                runner->Fail(message);
            }
            if (script) {  // before the script's first line
                vantrel::Refused(message);
                std::fflush(nullptr);
                std::_Exit(2);
            }
            if (monitorForNotes) {
                monitorForNotes->NoteTraceProblem(QString::fromStdString(message));
            }
            if (!qApp) {
                vantrel::Refused(message);
                return;
            }
            QTimer::singleShot(0, qApp, [message] {
                QMessageBox::warning(QApplication::activeWindow(), QStringLiteral("VantrelTest"),
                                     QString::fromStdString(message) +
                                         QStringLiteral("\n\nThe console goes on; nothing more is written there."));
            });
        });
    }

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("VantrelTest"));
    QApplication::setOrganizationName(QStringLiteral("vantrel-test"));
    QApplication::setStyle(new vantrel::ConsoleStyle);

    vantrel::ServerRegistry servers;
    vantrel::ServerReached reached;
    vantrel::RegisterServers(servers, options, reached);

    vantrel::QtPrompter boxes;
    vantrel::ScriptPrompter scripted;
    vantrel::QtErrorReport report(events, options.script ? vantrel::ProcessErrorReport::Mode::StandardError
                                                         : vantrel::ProcessErrorReport::Mode::MessageBox);
    report.SetSessionLog(records.sessionLog);
    events.Add(&report);
    // A normal run takes the technician's remembered choice; a script only
    // what its command line says, so that every run of it is the same.
    QSettings settings;
    report.SetKeepGoing(options.keepGoing || (!options.script && settings.value(kKeepGoingKey, false).toBool()));
    vantrel::Prompter& prompter = options.script ? static_cast<vantrel::Prompter&>(scripted) : boxes;
    vantrel::ConsoleOptions consoleOptions;
    consoleOptions.runTimers = !options.script;
    // The console's server behind a link that Tools > Reconnect makes again.
    vantrel::ServerLink link(events);
    const vantrel::ServerRegistry linked = link.Linked(servers);
    vantrel::ConsoleApp console(vantrel::AllForms(), linked, events, prompter, report, consoleOptions);
    // Listens before the load, so the monitor has the whole session, the
    // creation of the server included, whenever it is opened.
    vantrel::CallMonitor monitor(events, console.window());
    monitorForNotes = &monitor;
    monitor.SetServerReach([&console]() -> vantrel::AutomationObject* {
        return console.console().HasServer() ? &console.console().KRM() : nullptr;
    });

    try {
        console.Load();
    } catch (const vantrel::RuntimeError& error) {
        report.ReportAndEnd(error);  // before any window is shown, whatever was asked
    }
    if (reached.simulator) {
        vantrel::AddSimulatorTool(console.window(), *reached.simulator);
    }
    QAction* keepGoing = console.window().toolsMenu().addAction(QObject::tr("&Keep going after run-time errors"));
    keepGoing->setObjectName(QStringLiteral("KeepGoingEntry"));
    keepGoing->setCheckable(true);
    keepGoing->setChecked(report.keepGoing());
    QObject::connect(keepGoing, &QAction::toggled, [&report, &settings, script = options.script.has_value()](bool on) {
        report.SetKeepGoing(on);
        if (!script) {
            settings.setValue(kKeepGoingKey, on);
        }
    });
    QAction* reconnect = console.window().toolsMenu().addAction(QString::fromStdU16String(vantrel::kReconnectEntry));
    reconnect->setObjectName(QStringLiteral("ReconnectEntry"));
    QObject::connect(reconnect, &QAction::triggered,
                     [&console, &link, &report] { vantrel::ReconnectToServer(console.console(), link, report); });
    std::unique_ptr<vantrel::ShownProbe> probe;
    if (options.exitWhenShown) {
        probe = std::make_unique<vantrel::ShownProbe>(console.window());
    }
    console.Show();

    vantrel::QtScriptFrontEnd frontEnd(console);
    if (options.script) {
        runner = std::make_unique<vantrel::ScriptRunner>(*options.script, std::move(scriptLines), console.console(),
                                                         frontEnd, scripted, reached.ForScript());
    }
    if (runner) {
        runner->Start();
    }
    const int code = QApplication::exec();
    // A script that went past a run-time error did not run cleanly.
    return code == 0 && runner && report.reported() ? 1 : code;
}
