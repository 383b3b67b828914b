#pragma once

#include "base/form.h"
#include "base/form_state.h"

#include <QWidget>

#include <functional>
#include <map>
#include <string>

class QTimer;

namespace vantrel {

// Runs a handler as one user-interface event (errors go to the report).
using EventDispatcher = std::function<void(const Handler&)>;

// The font every form is drawn in, and the console's menus and boxes too.
QFont FormFont();

// The generic renderer: turns a form description into Qt widgets at their
// twips, keeps the creation order (a later control lies above an earlier
// one), names each widget after its control, wires the handlers, and keeps
// the widgets in step with the form's state.
class FormView final : public QWidget {
    Q_OBJECT

public:
    FormView(const FormDescription& description, FormState& state, EventDispatcher dispatch, QWidget* parent = nullptr);
    ~FormView() override;
    Q_DISABLE_COPY_MOVE(FormView)

    const FormDescription& description() const { return description_; }
    FormState& state() { return state_; }

    // The widget of a control, or nullptr.
    QWidget* Widget(std::string_view control) const;

    // Fires a timer's tick as if it had elapsed.
    bool FireTimer(std::string_view control);
    void SetTimersRunning(bool running);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* Create(const Control& control, QWidget* parent);
    void Sync(const std::string& control, FormState::Property property);
    void SyncText(const Control& control, QWidget* widget);
    void SyncColors(const Control& control, QWidget* widget);

    const FormDescription& description_;
    FormState& state_;
    EventDispatcher dispatch_;
    std::map<std::string, QWidget*, std::less<>> widgets_;
    std::map<std::string, QTimer*, std::less<>> timers_;
    std::map<QObject*, const Control*> controlOf_;
    bool syncing_ = false;
};

}  // namespace vantrel
