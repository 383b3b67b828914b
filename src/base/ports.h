#pragma once

#include "base/form.h"
#include "server/runtime_error.h"
#include "server/text.h"

#include <string_view>

namespace vantrel {

enum class Answer {
    Ok,
    Yes,
    No,
};

// The modal boxes a command may open. Script mode and tests replace it.
class Prompter {
public:
    virtual ~Prompter() = default;
    // Message box with an OK button only.
    virtual void Message(const Text& text, const Text& title) = 0;
    // Message box with Yes and No and the question icon.
    virtual Answer Ask(const Text& text, const Text& title) = 0;
    // Input box with no default text; an empty text means cancel.
    virtual Text Input(const Text& prompt, const Text& title) = 0;
};

// The secondary windows: shown modally over the console, closed by hiding.
class WindowHost {
public:
    virtual ~WindowHost() = default;
    // Returns when the window has been hidden again.
    virtual void ShowModal(std::string_view form) = 0;
    virtual void Hide(std::string_view form) = 0;
};

// The platform's report of an unhandled run-time error. In the program it ends
// the process with exit code 1; tests record instead.
class ErrorReport {
public:
    virtual ~ErrorReport() = default;
    virtual void Report(const RuntimeError& error) = 0;
};

// Runs one user-interface event's handler. An error that escapes it goes to
// the report: the one place that catches for good. Returns false when an
// error was reported.
bool Dispatch(Console& console, const Handler& handler, ErrorReport& report);

}  // namespace vantrel
