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

QtErrorReport::QtErrorReport(CallListener& events, Mode mode)
    : ProcessErrorReport(events, mode) {}

void QtErrorReport::ShowBox(const std::string& message, const std::string& details) {
    if (!qApp) {
        return;
    }
    QMessageBox box(QMessageBox::Critical, ToQString(kApplicationTitle), QString::fromStdString(message),
                    QMessageBox::Ok, ModalOwner());
    // Behind "Show Details...": the report reads as the platform's.
    if (!details.empty()) {
        box.setDetailedText(QString::fromStdString(details));
    }
    ExecModal(box);
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
