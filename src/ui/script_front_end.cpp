#include "script_front_end.h"

#include "ui/console_window.h"
#include "ui/visible_text.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QTimer>

namespace vantrel {

namespace {

void Activate(QWidget* window) {
    if (QApplication::activeWindow() == window) {
        return;
    }
#if QT_VERSION < QT_VERSION_CHECK(6, 5, 0)
    QApplication::setActiveWindow(window);
#else
    window->activateWindow();
    for (int attempt = 0; attempt < 200 && QApplication::activeWindow() != window; ++attempt) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 5);
    }
#endif
}

}  // namespace

QtScriptFrontEnd::QtScriptFrontEnd(ConsoleApp& app)
    : app_(app) {}

std::string QtScriptFrontEnd::ActiveForm() { return app_.ActiveView().description().name; }

bool QtScriptFrontEnd::Click(const std::string& control, bool twice) {
    QWidget* widget = app_.ActiveView().Widget(control);
    if (!widget || !widget->isVisible() || !widget->isEnabled()) {
        return false;
    }
    const QPointF local = QRectF(widget->rect()).center();
    const QPointF global = widget->mapToGlobal(local);
    const auto send = [&](QEvent::Type type, Qt::MouseButtons buttons) {
        QMouseEvent event(type, local, global, Qt::LeftButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    };
    Activate(widget->window());
    // A real press gives the focus first, by the control's focus policy; a
    // synthesized one does not, so do what the toolkit would.
    if ((widget->focusPolicy() & Qt::ClickFocus) == Qt::ClickFocus && QApplication::focusWidget() != widget) {
        widget->setFocus(Qt::MouseFocusReason);
    }
    send(QEvent::MouseButtonPress, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, Qt::NoButton);
    if (twice) {
        send(QEvent::MouseButtonDblClick, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, Qt::NoButton);
    }
    return true;
}

void QtScriptFrontEnd::Type(const std::string& control, const Text& text) {
    auto* box = qobject_cast<QLineEdit*>(app_.ActiveView().Widget(control));
    if (!box) {
        return;
    }
    Activate(box->window());
    box->setFocus(Qt::OtherFocusReason);
    box->setText(ToQString(text));
}

bool QtScriptFrontEnd::Menu(const std::string& menu, const Text& entry) {
    // Entries are named as they read, without the access-key "&".
    const auto plain = [](QString text) { return text.remove(QLatin1Char('&')); };
    for (QAction* top : app_.window().menuBar()->actions()) {
        if (!top->menu() || plain(top->text()) != QString::fromStdString(menu)) {
            continue;
        }
        for (QAction* action : top->menu()->actions()) {
            if (plain(action->text()) == ToQString(entry) && action->isEnabled()) {
                action->trigger();
                return true;
            }
        }
    }
    return false;
}

void QtScriptFrontEnd::Tick() { app_.window().view().FireTimer("Timer1"); }

QWidget* QtScriptFrontEnd::Window(const std::string& name) {
    if (FormView* view = app_.View(name)) {
        return view->window();
    }
    // Tool windows that are no form, such as the simulator's.
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == QString::fromStdString(name) && widget->isVisible()) {
            return widget;
        }
    }
    return nullptr;
}

ScriptFrontEnd::Picture QtScriptFrontEnd::Shot(const std::string& window, const std::string& file) {
    QWidget* widget = Window(window);
    if (!widget) {
        return Picture::NoWindow;
    }
    return widget->grab().save(QString::fromStdString(file), "PNG") ? Picture::Written : Picture::NotWritten;
}

void QtScriptFrontEnd::Later(std::function<void()> step) { QTimer::singleShot(0, &app_.window(), std::move(step)); }

void QtScriptFrontEnd::Quit(int code) { QCoreApplication::exit(code); }

}  // namespace vantrel
