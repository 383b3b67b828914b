// vantrel-test: the hand-driven test console for "Vantrel.Application".

#include "app/all_forms.h"
#include "app/session_log.h"
#include "app/shown_probe.h"
#include "app/trace_output.h"
#include "base/console.h"
#include "script/script_file.h"
#include "script/script_runner.h"
#include "server/server_calls.h"
#include "server/trace_json.h"
#include "simulator/simulator.h"
#include "ui/call_monitor_window.h"
#include "ui/console_style.h"
#if defined(_WIN32)
#include "com/com_automation.h"
#endif
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

constexpr const char* kVersion = "1.0.0 (console Ver 1010.29)";

constexpr const char* kHelp =
    "Usage: vantrel-test [--simulator] [--trace FILE] [--script FILE] [--no-log] [--keep-going]\n"
    "                    [--exit-when-shown]\n"
    "\n"
    "The hand-driven test console for the forecourt controller server\n"
    "\"Vantrel.Application\": one button per command, with every call echoed.\n"
    "\n"
    "  --simulator     use the built-in simulator even where the real server exists\n"
    "  --trace FILE    write every server call, box and error report to FILE,\n"
    "                  one JSON object per line, flushed as it happens\n"
    "  --script FILE   run FILE headless on Qt's offscreen platform and exit:\n"
    "                  0 at its end, 1 through the error report, 2 when the\n"
    "                  script itself fails\n"
    "  --keep-going    after a run-time error, show its report and go on instead\n"
    "                  of ending the program (a script then ends with 1 when an\n"
    "                  error was reported); Tools > Keep going after run-time\n"
    "                  errors sets the same for normal runs, and is remembered\n"
    "  --no-log        write no session log (a run without --script writes its\n"
    "                  trace to $XDG_STATE_HOME/vantrel-test/logs, one file per\n"
    "                  run, the newest 20 runs or 100 MB kept)\n"
    "  --exit-when-shown\n"
    "                  once the console window has been painted for the first\n"
    "                  time, write \"shown\" and the resident size (\"shown 41236\n"
    "                  KiB\") on standard output and exit with 0 (start-up\n"
    "                  measurements, see bench/run)\n"
    "  --help          show this text\n"
    "  --version       show the version\n"
    "\n"
    "On Windows the console drives the COM server registered as\n"
    "\"Vantrel.Application\"; elsewhere, and with --simulator, the built-in\n"
    "simulator stands in. VANTREL_NO_SIMULATOR=1 leaves the simulator out\n"
    "where no --simulator is given (the console then cannot start without a\n"
    "server).\n";

struct Options {
    bool simulator = false;
    bool exitWhenShown = false;
    bool noLog = false;
    bool keepGoing = false;
    std::optional<std::string> trace;
    std::optional<std::string> script;
};

// A file of the command line that cannot be used: exit code 2, as a script
// that fails.
int Refused(const std::string& message) {
    const std::string line =
        "vantrel-test: " + vantrel::WithControlsEscaped(message, vantrel::ControlEscapes::All) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    return 2;
}

int Usage(const std::string& message) {
    std::fprintf(stderr, "vantrel-test: %s\n(see vantrel-test --help)\n", message.c_str());
    return 2;
}

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
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--help" || argument == "-h") {
            std::fputs(kHelp, stdout);
            return 0;
        }
        if (argument == "--version") {
            std::printf("vantrel-test %s\n", kVersion);
            return 0;
        }
        if (argument == "--simulator") {
            options.simulator = true;
        } else if (argument == "--keep-going") {
            options.keepGoing = true;
        } else if (argument == "--no-log") {
            options.noLog = true;
        } else if (argument == "--exit-when-shown") {
            options.exitWhenShown = true;
        } else if (argument == "--trace" || argument == "--script") {
            if (i + 1 >= argc) {
                return Usage(std::string(argument) + " needs a file name");
            }
            (argument == "--trace" ? options.trace : options.script) = argv[++i];
        } else {
            return Usage("unknown option " + std::string(argument));
        }
    }

    vantrel::IgnoreBrokenPipes();
    vantrel::RaiseOpenFileLimit();
    std::vector<std::string> scriptLines;
    if (options.script) {
        auto read = vantrel::ReadScriptFile(*options.script);
        if (const auto* problem = std::get_if<std::string>(&read)) {
            return Refused(*problem);
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
    std::vector<std::unique_ptr<vantrel::TraceFile>> traces;
    if (options.trace) {
        const vantrel::OpenedTrace opened = vantrel::OpenTrace(*options.trace, options.script);
        if (!opened.problem.empty()) {
            return Refused(opened.problem);
        }
        traces.push_back(std::make_unique<vantrel::TraceFile>(opened.file, *options.trace));
    }
    // An interactive run keeps its own record, so that a run that ends
    // through the error report loses nothing.
    std::string sessionLog;
    if (!options.script && !options.noLog) {
        const vantrel::SessionLog log = vantrel::OpenSessionLog(vantrel::SessionLogFolder());
        if (log.file) {
            sessionLog = log.path;
            traces.push_back(std::make_unique<vantrel::TraceFile>(log.file, log.path));
        } else {
            std::fprintf(stderr, "vantrel-test: no session log: %s\n", log.problem.c_str());
        }
    }
    // A trace that cannot be written is never a silent loss: it fails a
    // script; a normal run says so once, goes on, and the monitor notes it.
    std::unique_ptr<vantrel::ScriptRunner> runner;
    vantrel::CallMonitor* monitorForNotes = nullptr;
    for (const auto& trace : traces) {
        trace->SetFailure([&runner, &monitorForNotes, script = options.script.has_value()](const std::string& message) {
            if (runner) {
                runner->Fail(message);
            }
            if (script) {  // before the script's first line
                Refused(message);
                std::fflush(nullptr);
                std::_Exit(2);
            }
            if (monitorForNotes) {
                monitorForNotes->NoteTraceProblem(QString::fromStdString(message));
            }
            if (!qApp) {
                Refused(message);
                return;
            }
            QTimer::singleShot(0, qApp, [message] {
                QMessageBox::warning(QApplication::activeWindow(), QStringLiteral("VantrelTest"),
                                     QString::fromStdString(message) +
                                         QStringLiteral("\n\nThe console goes on; nothing more is written there."));
            });
        });
        events.Add(trace.get());
    }

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("VantrelTest"));
    QApplication::setOrganizationName(QStringLiteral("vantrel-test"));
    QApplication::setStyle(new vantrel::ConsoleStyle);

    // "Vantrel.Application" resolves to the platform's automation where there
    // is one; everywhere else, and on request, the built-in simulator.
    // VANTREL_NO_SIMULATOR=1 leaves the built-in one out, to see what the
    // console does on a machine where the server is not installed.
    vantrel::ServerRegistry servers;
    vantrel::Simulator* simulator = nullptr;
#if defined(_WIN32)
    if (!options.simulator) {
        vantrel::RegisterComServer(servers, std::string(vantrel::kServerProgId));
    }
#endif
    const bool noSimulator = qEnvironmentVariable("VANTREL_NO_SIMULATOR") == QLatin1String("1");
    if (!servers.Has(vantrel::kServerProgId) && (!noSimulator || options.simulator)) {
        // Script mode runs it on a clock that only "server time" lines move.
        const bool manualClock = options.script.has_value();
        servers.Register(std::string(vantrel::kServerProgId), [&simulator, manualClock] {
            auto created =
                manualClock ? std::make_unique<vantrel::Simulator>(std::make_unique<vantrel::simulation::ManualClock>(
                                  vantrel::simulation::ManualClock::Waits::Slept))
                            : std::make_unique<vantrel::Simulator>();
            simulator = created.get();
            return created;
        });
    }

    vantrel::QtPrompter boxes;
    vantrel::ScriptPrompter scripted;
    vantrel::ProcessErrorReport report(events, options.script ? vantrel::ProcessErrorReport::Mode::StandardError
                                                              : vantrel::ProcessErrorReport::Mode::MessageBox);
    report.SetSessionLog(sessionLog);
    events.Add(&report);
    // A normal run takes the technician's remembered choice; a script only
    // what its command line says, so that every run of it is the same.
    QSettings settings;
    report.SetKeepGoing(options.keepGoing || (!options.script && settings.value(kKeepGoingKey, false).toBool()));
    vantrel::Prompter& prompter = options.script ? static_cast<vantrel::Prompter&>(scripted) : boxes;
    vantrel::ConsoleOptions consoleOptions;
    consoleOptions.runTimers = !options.script;
    vantrel::ConsoleApp console(vantrel::AllForms(), servers, events, prompter, report, consoleOptions);
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
    if (simulator) {
        vantrel::AddSimulatorTool(console.window(), *simulator);
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
    std::unique_ptr<vantrel::ShownProbe> probe;
    if (options.exitWhenShown) {
        probe = std::make_unique<vantrel::ShownProbe>(console.window());
    }
    console.Show();

    vantrel::QtScriptFrontEnd frontEnd(console);
    if (options.script) {
        runner = std::make_unique<vantrel::ScriptRunner>(*options.script, std::move(scriptLines), console.console(),
                                                         frontEnd, scripted, simulator);
    }
    if (runner) {
        runner->Start();
    }
    const int code = QApplication::exec();
    // A script that went past a run-time error did not run cleanly.
    return code == 0 && runner && report.reported() ? 1 : code;
}
