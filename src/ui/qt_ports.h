#pragma once

#include "base/ports.h"
#include "server/server_calls.h"
#include "ui/form_view.h"

#include <QPoint>
#include <QPointer>

#include <functional>
#include <map>
#include <string>

class QDialog;
class QWidget;

namespace vantrel {

class Console;

// The width a box needs so that its title is not cut: the title in the title
// bar's font and room for the frame's icon and buttons.
int TitleWidth(const QString& title);

// Real modal boxes: QMessageBox and QInputDialog, each at least as wide as
// its title needs.
class QtPrompter final : public Prompter {
public:
    void Message(const Text& text, const Text& title) override;
    Answer Ask(const Text& text, const Text& title) override;
    Text Input(const Text& prompt, const Text& title) override;
};

// The platform's report of an unhandled error: a message box with the number
// and description (or standard error when headless), then the program ends
// with exit code 1 at once, so no handler goes on after it.
// The platform's error report. It listens to the session's events so that
// its details can name the call that failed.
class ProcessErrorReport final : public ErrorReport, public CallListener {
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
    // Whether any error was reported and gone past.
    bool reported() const { return reported_; }
    // A report that ends the program whatever was asked: the console cannot
    // go on without its server.
    [[noreturn]] void ReportAndEnd(const RuntimeError& error);

private:
    void Tell(const RuntimeError& error);

    CallListener& events_;
    Mode mode_;
    std::string sessionLog_;
    bool keepGoing_ = false;
    bool reported_ = false;
    std::string lastCall_;  // "SystemVersions, call" with what was sent, shortened
};

// The secondary windows as dialogs owned by the console window. Each is made
// on first showing and kept, hidden, for the rest of the run.
class QtWindowHost final : public WindowHost {
public:
    void Attach(Console& console, QWidget& owner, EventDispatcher dispatch);

    void ShowModal(std::string_view form) override;
    void Hide(std::string_view form) override;

    // The view of a secondary window, or nullptr if it was never shown.
    FormView* View(std::string_view form) const;
    // The secondary window on top while it is shown modally, or nullptr.
    FormView* ShownView() const;

private:
    Console* console_ = nullptr;
    QWidget* owner_ = nullptr;
    EventDispatcher dispatch_;
    std::map<std::string, QPointer<QDialog>, std::less<>> dialogs_;
    std::map<std::string, FormView*, std::less<>> views_;
    // Where each window's frame was when it was last hidden.
    std::map<std::string, QPoint, std::less<>> places_;
};

}  // namespace vantrel
