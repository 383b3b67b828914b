#pragma once

#include "base/ports.h"
#include "server/server_calls.h"

#include <string>

namespace vantrel {

// The program's error report, on any front-end: it traces the report, shows
// it in the front-end's box ("Run-time error 'N':" and the description, the
// last call and the session log behind the details), writes it on standard
// error, and ends the process with exit code 1, or goes on when asked to.
class ProcessErrorReport : public ErrorReport, public CallListener {
public:
    enum class Mode {
        MessageBox,
        StandardError,
    };
    ProcessErrorReport(CallListener& events, Mode mode);
    void Report(const RuntimeError& error) override;
    // The last server call, remembered for the report's details.
    void OnEvent(const CallEvent& event) override;
    // Where this session's log is, for the report's details; none without.
    void SetSessionLog(std::string path) { sessionLog_ = std::move(path); }

    // On request, a run-time error is reported and the console goes on: the
    // handler that raised it stops there, the session does not. Off by
    // default: then every report ends the program.
    void SetKeepGoing(bool on) { keepGoing_ = on; }
    bool keepGoing() const { return keepGoing_; }
    // With keep-going on, the first error that says the server has gone is
    // reported with how to reconnect; later ones are traced only, until a
    // new server is created.
    // Whether any error was reported and gone past.
    bool reported() const { return reported_; }
    // A report that ends the program whatever was asked: the console cannot
    // go on without its server.
    [[noreturn]] void ReportAndEnd(const RuntimeError& error);

protected:
    // The front-end's modal box with the message, and the details behind
    // its "Show Details..." where it has one; returns when it is closed.
    virtual void ShowBox(const std::string& message, const std::string& details) = 0;

private:
    void Trace(const RuntimeError& error);
    void Tell(const RuntimeError& error, const char* advice = nullptr);

    CallListener& events_;
    Mode mode_;
    std::string sessionLog_;
    bool keepGoing_ = false;
    bool reported_ = false;
    bool goneTold_ = false;
    std::string lastCall_;  // "SystemVersions, call" with what was sent, shortened
};

}  // namespace vantrel
