#include "process_error_report.h"

#include "server/server_link.h"
#include "server/text.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace vantrel {

ProcessErrorReport::ProcessErrorReport(CallListener& events, Mode mode)
    : events_(events)
    , mode_(mode) {}

namespace {

constexpr const char* kServerGone =
    "The server has gone. Tools > Reconnect to the server creates it again (in a script, the line "
    "menu \"Tools\" \"Reconnect to the server\"); the session, its log and the call monitor stay. Until then "
    "each call to the server fails and is traced, without another report.";

}  // namespace

void ProcessErrorReport::OnEvent(const CallEvent& event) {
    if (event.op == CallEvent::Op::Create && !event.error) {
        goneTold_ = false;  // a new server: its going would be news again
    }
    if (event.op != CallEvent::Op::Put && event.op != CallEvent::Op::Call) {
        return;
    }
    lastCall_ = event.member + (event.op == CallEvent::Op::Put ? ", put" : ", call");
    if (event.argument) {
        // What was sent, escaped and shortened: the report is no place for a
        // whole image packet.
        // Read in place: a copy of an image packet would add its whole size
        // to the peak at every call.
        const Variant& argument = *event.argument;
        const Text converted = argument.is(Variant::Kind::Text) ? Text() : ToText(argument);
        const TextView sent = argument.is(Variant::Kind::Text) ? TextView(argument.text()) : TextView(converted);
        constexpr std::size_t kShown = 120;
        lastCall_ += " \"" + Escaped(sent.substr(0, kShown)) + "\"" +
                     (sent.size() > kShown ? " (" + std::to_string(sent.size()) + " characters in all)" : "");
    }
}

void ProcessErrorReport::Report(const RuntimeError& error) {
    if (keepGoing_ && IsServerGone(error)) {
        // One report says that the server has gone and how to get it back;
        // the calls that fail after it are in the record only.
        if (goneTold_) {
            Trace(error);
        } else {
            goneTold_ = true;
            Tell(error, kServerGone);
        }
        reported_ = true;
        return;
    }
    Tell(error);
    if (!keepGoing_) {
        std::_Exit(1);
    }
    reported_ = true;
}

void ProcessErrorReport::ReportAndEnd(const RuntimeError& error) {
    Tell(error);
    std::_Exit(1);
}

void ProcessErrorReport::Trace(const RuntimeError& error) {
    CallEvent event;
    event.op = CallEvent::Op::Report;
    event.error = error;
    event.when = std::chrono::system_clock::now();
    events_.OnEvent(event);
}

void ProcessErrorReport::Tell(const RuntimeError& error, const char* advice) {
    Trace(error);
    if (mode_ == Mode::MessageBox) {
        std::string details;
        if (!lastCall_.empty()) {
            details += "The last call to the server: " + lastCall_;
        }
        if (!sessionLog_.empty()) {
            details += (details.empty() ? "" : "\n\n") +
                       std::string("This session's calls, boxes and this report are in its log:\n") + sessionLog_;
        }
        ShowBox("Run-time error '" + ErrorNumberText(error.number()) + "':\n\n" + error.description() +
                    (advice ? std::string("\n\n") + advice : std::string()),
                details);
    }
    const std::string line = "Run-time error " + ErrorNumberText(error.number()) + ": " +
                             WithControlsEscaped(error.description(), ControlEscapes::All) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    if (advice) {
        std::fprintf(stderr, "%s\n", advice);
    }
    if (!lastCall_.empty()) {
        const std::string call = "The last call to the server: " + lastCall_ + "\n";
        std::fwrite(call.data(), 1, call.size(), stderr);
    }
    if (!sessionLog_.empty()) {
        const std::string where = "The session's log: " + sessionLog_ + "\n";
        std::fwrite(where.data(), 1, where.size(), stderr);
    }
    std::fflush(nullptr);
}

}  // namespace vantrel
