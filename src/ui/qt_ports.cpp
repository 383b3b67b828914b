#include "qt_ports.h"

#include "base/console.h"
#include "ui/console_window.h"
#include "ui/form_view.h"
#include "ui/visible_text.h"

#include <QApplication>
#include <QDialog>
#include <QFontMetrics>
#include <QGridLayout>
#include <QInputDialog>
#include <QMessageBox>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace vantrel {

int TitleWidth(const QString& title) {
    // The title in the title bar's font, and room for the frame's icon and
    // buttons, so that a window manager need not cut it ("V... t").
    const QFontMetrics metrics(QApplication::font("QMdiSubWindowTitleBar"));
    return metrics.horizontalAdvance(title) + 140;
}

namespace {

// A message box lays itself out from its text; a spacer as wide as the
// title keeps it from growing narrower than that.
void FitTitle(QMessageBox& box) {
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout())) {
        grid->addItem(new QSpacerItem(TitleWidth(box.windowTitle()), 0, QSizePolicy::Minimum, QSizePolicy::Fixed),
                      grid->rowCount(), 0, 1, grid->columnCount());
    }
}

// Boxes and the console's windows are modal to the console alone: they block
// the console and its other windows, while the tool windows beside it (the
// call monitor, the simulator) stay usable, so that a technician can copy
// the call that led to a box or a report while it is up.
QWidget* ModalOwner() {
    if (QWidget* modal = QApplication::activeModalWidget()) {
        return modal;
    }
    for (QWidget* top : QApplication::topLevelWidgets()) {
        if (qobject_cast<ConsoleWindow*>(top)) {
            return top;
        }
    }
    return QApplication::activeWindow();
}

int ExecModal(QDialog& box) {
    box.setWindowModality(Qt::WindowModal);
    return box.exec();
}

}  // namespace

void QtPrompter::Message(const Text& text, const Text& title) {
    QMessageBox box(QMessageBox::NoIcon, ToQString(title), VisibleText(text, LineBreaks::AtCrLf), QMessageBox::Ok,
                    ModalOwner());
    FitTitle(box);
    ExecModal(box);
}

Answer QtPrompter::Ask(const Text& text, const Text& title) {
    QMessageBox box(QMessageBox::Question, ToQString(title), ToQString(text), QMessageBox::Yes | QMessageBox::No,
                    ModalOwner());
    FitTitle(box);
    return ExecModal(box) == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

Text QtPrompter::Input(const Text& prompt, const Text& title) {
    QInputDialog box(ModalOwner());
    box.setWindowTitle(ToQString(title));
    box.setLabelText(ToQString(prompt));
    box.setTextValue(QString());
    box.setMinimumWidth(TitleWidth(box.windowTitle()));
    box.resize(std::max(box.sizeHint().width(), box.minimumWidth()), box.sizeHint().height());
    return ExecModal(box) == QDialog::Accepted ? FromQString(box.textValue()) : Text();
}

ProcessErrorReport::ProcessErrorReport(CallListener& events, Mode mode)
    : events_(events)
    , mode_(mode) {}

void ProcessErrorReport::OnEvent(const CallEvent& event) {
    if (event.op != CallEvent::Op::Put && event.op != CallEvent::Op::Call) {
        return;
    }
    lastCall_ = event.member + (event.op == CallEvent::Op::Put ? ", put" : ", call");
    if (event.argument) {
        // What was sent, escaped and shortened: the report is no place for a
        // whole image packet.
        const Text sent = ToText(*event.argument);
        constexpr std::size_t kShown = 120;
        lastCall_ += " \"" + Escaped(TextView(sent).substr(0, kShown)) + "\"" +
                     (sent.size() > kShown ? " (" + std::to_string(sent.size()) + " characters in all)" : "");
    }
}

void ProcessErrorReport::Report(const RuntimeError& error) {
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

void ProcessErrorReport::Tell(const RuntimeError& error) {
    CallEvent event;
    event.op = CallEvent::Op::Report;
    event.error = error;
    event.when = std::chrono::system_clock::now();
    events_.OnEvent(event);
    const std::string message = "Run-time error '" + std::to_string(error.number()) + "':\n\n" + error.description();
    if (mode_ == Mode::MessageBox && qApp) {
        QMessageBox box(QMessageBox::Critical, ToQString(kApplicationTitle), QString::fromStdString(message),
                        QMessageBox::Ok, ModalOwner());
        // Behind "Show Details...": the report reads as the platform's.
        QString details;
        if (!lastCall_.empty()) {
            details += QStringLiteral("The last call to the server: ") + QString::fromStdString(lastCall_);
        }
        if (!sessionLog_.empty()) {
            details += (details.isEmpty() ? QString() : QStringLiteral("\n\n")) +
                       QStringLiteral("This session's calls, boxes and this report are in its log:\n") +
                       QString::fromStdString(sessionLog_);
        }
        if (!details.isEmpty()) {
            box.setDetailedText(details);
        }
        ExecModal(box);
    }
    const std::string line = "Run-time error " + std::to_string(error.number()) + ": " +
                             WithControlsEscaped(error.description(), ControlEscapes::All) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
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

void QtWindowHost::Attach(Console& console, QWidget& owner, EventDispatcher dispatch) {
    console_ = &console;
    owner_ = &owner;
    dispatch_ = std::move(dispatch);
}

void QtWindowHost::ShowModal(std::string_view form) {
    if (!console_) {
        return;
    }
    QPointer<QDialog>& dialog = dialogs_[std::string(form)];
    if (!dialog) {
        const FormDescription& description = console_->Description(form);
        dialog = new QDialog(owner_);
        dialog->setObjectName(QString::fromStdString(description.name) + QStringLiteral("Window"));
        dialog->setWindowTitle(ToQString(description.caption));
        auto* layout = new QVBoxLayout(dialog);
        layout->setContentsMargins(0, 0, 0, 0);
        auto* view = new FormView(description, console_->Form(form), dispatch_, dialog);
        layout->addWidget(view);
        dialog->setFixedSize(view->size());
        views_[std::string(form)] = view;
    }
    // A window manager that frames a window again may put it a title bar
    // lower at each showing; the frame goes back where it was left.
    const auto place = places_.find(form);
    if (place != places_.end()) {
        dialog->move(place->second);
    }
    ExecModal(*dialog);
    if (dialog) {
        places_[std::string(form)] = dialog->pos();
    }
}

void QtWindowHost::Hide(std::string_view form) {
    const auto found = dialogs_.find(form);
    if (found != dialogs_.end() && found->second) {
        found->second->hide();
    }
}

FormView* QtWindowHost::View(std::string_view form) const {
    const auto found = views_.find(form);
    return found == views_.end() ? nullptr : found->second;
}

FormView* QtWindowHost::ShownView() const {
    QWidget* modal = QApplication::activeModalWidget();
    for (const auto& [name, dialog] : dialogs_) {
        if (dialog && dialog == modal && dialog->isVisible()) {
            return View(name);
        }
    }
    return nullptr;
}

}  // namespace vantrel
