// vantrel-test: the hand-driven test console for "Vantrel.Application".

#include "app/all_forms.h"
#include "app/shown_probe.h"
#include "base/console.h"
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

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr const char* kVersion = "1.0.0 (console Ver 1010.29)";

constexpr const char* kHelp =
    "Usage: vantrel-test [--simulator] [--trace FILE] [--script FILE] [--exit-when-shown]\n"
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
    std::optional<std::string> trace;
    std::optional<std::string> script;
};

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

    std::vector<std::string> scriptLines;
    if (options.script) {
        std::ifstream file(*options.script, std::ios::binary);
        if (!file) {
            return Usage("cannot read the script " + *options.script);
        }
        for (std::string line; std::getline(file, line);) {
            scriptLines.push_back(line);
        }
        // Script mode needs no display.
        qputenv("QT_QPA_PLATFORM", "offscreen");
    } else if (!HasDisplay()) {
        std::fprintf(stderr,
                     "vantrel-test: no display found; run with --script FILE to drive the console headless, "
                     "or set QT_QPA_PLATFORM=offscreen\n");
        return 1;
    }

    vantrel::CallEvents events;
    std::unique_ptr<vantrel::TraceFile> trace;
    if (options.trace) {
        trace = std::make_unique<vantrel::TraceFile>(*options.trace);
        if (!trace->isOpen()) {
            return Usage("cannot write the trace " + *options.trace);
        }
        events.Add(trace.get());
    }

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("VantrelTest"));
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
    vantrel::Prompter& prompter = options.script ? static_cast<vantrel::Prompter&>(scripted) : boxes;
    vantrel::ConsoleOptions consoleOptions;
    consoleOptions.runTimers = !options.script;
    vantrel::ConsoleApp console(vantrel::AllForms(), servers, events, prompter, report, consoleOptions);
    // Listens before the load, so the monitor has the whole session, the
    // creation of the server included, whenever it is opened.
    vantrel::CallMonitor monitor(events, console.window());

    try {
        console.Load();
    } catch (const vantrel::RuntimeError& error) {
        report.Report(error);  // ends the program before any window is shown
    }
    if (simulator) {
        vantrel::AddSimulatorTool(console.window(), *simulator);
    }
    std::unique_ptr<vantrel::ShownProbe> probe;
    if (options.exitWhenShown) {
        probe = std::make_unique<vantrel::ShownProbe>(console.window());
    }
    console.Show();

    vantrel::QtScriptFrontEnd frontEnd(console);
    std::unique_ptr<vantrel::ScriptRunner> runner;
    if (options.script) {
        runner = std::make_unique<vantrel::ScriptRunner>(*options.script, std::move(scriptLines), console.console(),
                                                         frontEnd, scripted, simulator);
        runner->Start();
    }
    return QApplication::exec();
}
