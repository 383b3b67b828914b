#pragma once

#include <QWidget>

#include <string>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QSpinBox;
class QTableWidget;
class QTimer;

namespace vantrel {

class ConsoleWindow;
class Simulator;

// The forecourt side of the built-in simulator: a technician lifts and hangs
// up nozzles, swipes cards, presses keys, inserts cash, sends packets from a
// terminal, enters a car wash code, switches the automatic traffic on, and
// queues faults for the next calls of a member. A table shows the 32
// positions; it follows the model twice a second while the window is shown.
class SimulatorWindow final : public QWidget {
    Q_OBJECT

public:
    SimulatorWindow(Simulator& simulator, QWidget* parent = nullptr);
    Q_DISABLE_COPY_MOVE(SimulatorWindow)

    void Refresh();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QWidget* MakeForecourtBox();
    QWidget* MakeFaultBox();
    // Shows why an event could not happen, or that it did.
    void Done(const std::string& refusal, const QString& what);
    // The box's text with its escapes resolved; false, with a message, when
    // an escape is broken.
    bool Escaped(QLineEdit* box, std::u16string& text);
    void QueueFault();
    void UpdateFaultFields();

    Simulator& simulator_;
    QSpinBox* position_ = nullptr;
    QSpinBox* hose_ = nullptr;
    QLineEdit* card_ = nullptr;
    QLineEdit* keys_ = nullptr;
    QLineEdit* cash_ = nullptr;
    QLineEdit* packet_ = nullptr;
    QLineEdit* washCode_ = nullptr;
    QCheckBox* automatic_ = nullptr;
    QComboBox* member_ = nullptr;
    QComboBox* outcome_ = nullptr;
    QSpinBox* number_ = nullptr;
    QLineEdit* description_ = nullptr;
    QTableWidget* positions_ = nullptr;
    QLabel* summary_ = nullptr;
    QLabel* status_ = nullptr;
    QString queuedNote_;  // the status line of the last fault queued
    QListWidget* pending_ = nullptr;
    QListWidget* errors_ = nullptr;
    QTimer* timer_ = nullptr;
};

// Adds "Simulator..." to the console's Tools menu; the window is made on
// first use and kept.
void AddSimulatorTool(ConsoleWindow& console, Simulator& simulator);

}  // namespace vantrel
