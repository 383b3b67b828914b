// vantrel-test.exe: the hand-driven test console for "Vantrel.Application"
// on Windows, in the system's own windows.

#include "app/all_forms.h"
#include "app/program.h"
#include "app/replay_run.h"
#include "app/trace_output.h"
#include "base/reconnect.h"
#include "script/script_file.h"
#include "script/script_runner.h"
#include "script/simulator_steering.h"
#include "server/server_link.h"
#include "simulator/simulator.h"
#include "win32/win32_console.h"
#include "win32/win32_ports.h"
#include "win32/win32_process.h"
#include "win32/win32_script_front_end.h"
#include "win32/win32_text.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

int wmain(int argc, wchar_t* argv[]) {
    vantrel::win32::UseStartingConsole();
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.push_back(vantrel::win32::Utf8(argv[i]));
    }
    const auto parsed = vantrel::ParseCommandLine(arguments);
    if (const int* code = std::get_if<int>(&parsed)) {
        return *code;
    }
    const vantrel::ProgramOptions& options = std::get<vantrel::ProgramOptions>(parsed);
    if (options.replay) {
        return vantrel::RunReplay(options);  // headless: no window, no display needed
    }

    vantrel::RaiseOpenFileLimit();
    std::vector<std::string> scriptLines;
    if (options.script) {
        auto read = vantrel::ReadScriptFile(*options.script);
        if (const auto* problem = std::get_if<std::string>(&read)) {
            return vantrel::Refused(*problem);
        }
        scriptLines = std::move(std::get<std::vector<std::string>>(read));
    }
    vantrel::CallEvents events;
    auto opened = vantrel::OpenRunRecords(options, events);
    if (const int* code = std::get_if<int>(&opened)) {
        return *code;
    }
    vantrel::RunRecords& records = std::get<vantrel::RunRecords>(opened);
    // A trace that cannot be written is never a silent loss: it fails a
    // script; a normal run says so once and goes on.
    std::unique_ptr<vantrel::ScriptRunner> runner;
    for (const auto& trace : records.traces) {
        trace->SetFailure([&runner, script = options.script.has_value()](const std::string& message) {
            if (runner) {
                runner->Fail(message);
            }
            vantrel::Refused(message);
            if (script) {  // before the script's first line
                std::fflush(nullptr);
                std::_Exit(2);
            }
            const std::wstring text =
                vantrel::win32::WideFromUtf8(message + "\n\nThe console goes on; nothing more is written there.");
            MessageBoxW(vantrel::win32::BoxOwner(), text.c_str(), L"VantrelTest", MB_OK | MB_ICONWARNING);
        });
    }

    vantrel::ServerRegistry servers;
    vantrel::ServerReached reached;
    vantrel::RegisterServers(servers, options, reached);

    vantrel::win32::Prompter boxes;
    vantrel::ScriptPrompter scripted;
    vantrel::win32::ErrorReport report(events, options.script ? vantrel::ProcessErrorReport::Mode::StandardError
                                                              : vantrel::ProcessErrorReport::Mode::MessageBox);
    report.SetSessionLog(records.sessionLog);
    events.Add(&report);
    report.SetKeepGoing(options.keepGoing);
    vantrel::Prompter& prompter = options.script ? static_cast<vantrel::Prompter&>(scripted) : boxes;
    // The console's server behind a link that Tools > Reconnect makes again.
    vantrel::ServerLink link(events);
    const vantrel::ServerRegistry linked = link.Linked(servers);
    vantrel::win32::ConsoleApp console(vantrel::AllForms(), linked, events, prompter, report,
                                       !options.script.has_value());
    console.onReconnect = [&console, &link, &report] { vantrel::ReconnectToServer(console.console(), link, report); };
    try {
        console.Load();
    } catch (const vantrel::RuntimeError& error) {
        report.ReportAndEnd(error);  // before any window is shown, whatever was asked
    }
    console.Show();
    if (options.exitWhenShown) {
        return vantrel::win32::ReportShown();
    }

    vantrel::win32::ScriptFrontEnd frontEnd(console);
    if (options.script) {
        runner = std::make_unique<vantrel::ScriptRunner>(*options.script, std::move(scriptLines), console.console(),
                                                         frontEnd, scripted, reached.ForScript());
        runner->Start();
    }
    const int code = vantrel::win32::RunMessageLoop([] { return false; }).value_or(0);
    std::fflush(nullptr);
    // A script that went past a run-time error did not run cleanly.
    return code == 0 && runner && report.reported() ? 1 : code;
}
