#pragma once

#include "base/ports.h"
#include "base/process_error_report.h"
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

// The error report in a Qt message box (or on standard error alone when
// headless); then the program ends with exit code 1 at once, so no handler
// goes on after it, unless the technician asked to keep going.
class QtErrorReport final : public ProcessErrorReport {
public:
    QtErrorReport(CallListener& events, Mode mode);

protected:
    void ShowBox(const std::string& message, const std::string& details) override;
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
