#pragma once

#include "monitor/call_monitor_view.h"

#include <QPointer>
#include <QWidget>

#include <functional>

#include <memory>

class QAction;
class QButtonGroup;
class QComboBox;
class QLabel;
class QLineEdit;
class QListView;
class QPlainTextEdit;
class QTableView;
class QTimer;
class QToolButton;

namespace vantrel {

class ConsoleWindow;
class ComparisonWindow;
class HexLinesModel;
class MonitorTableModel;

// The "Call monitor" window: every event of the session as a row, and the
// selected row's text with visible control characters beside its hex lines.
// It is not modal: the technician keeps clicking commands while it is open.
// It draws a CallMonitorView, which decides everything it shows.
class CallMonitorWindow final : public QWidget {
    Q_OBJECT

public:
    // How often the events queued by the feed are taken into the table.
    static constexpr int kFlushMilliseconds = 100;
    static constexpr std::size_t kDetailLimit = CallMonitorView::kDetailLimit;

    CallMonitorWindow(CallMonitorFeed& feed, MonitorLimits limits, QWidget* owner);
    ~CallMonitorWindow() override;
    Q_DISABLE_COPY_MOVE(CallMonitorWindow)

    // Takes the queued events into the table now; the timer calls it while
    // the window is shown.
    void Flush();
    // A line in red under the table: a trace that stopped being written.
    void ShowTraceProblem(const QString& message);
    // Writes the shown rows in the trace format; false (and a message in
    // the status line) when the file cannot be written.
    bool ExportTo(const QString& path);

    const CallMonitorModel& model() const { return view_.model(); }

    // The console's server, for Send again; null while there is none.
    using ServerReach = std::function<AutomationObject*()>;
    void SetServerReach(ServerReach reach) { server_ = std::move(reach); }
    // Sends the selected put or call again, traced as any call; a row that
    // is no put or call is refused with the reason in the status line.
    void SendSelectedAgain();
    // Replays a record against the console's server and shows how each
    // answer compares; null (the reason in the status line) when there is
    // no server or the record stops early. The window stays with this one.
    ComparisonWindow* CompareWith(const QString& record);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void BuildToolBar(QWidget* bar);
    void ApplyFilter();
    void Find(CallMonitorModel::Direction direction);
    void CopyRows();
    void Clear();
    void AskExport();
    void AskCompare();
    void SelectionChanged();
    void ShowDetail();
    void SetDetail(const QString& line);
    void ScrollValueChanged(int value);
    void SetFollowing(bool following);
    void UpdateMembers();
    void UpdateStatus();

    CallMonitorView view_;
    MonitorTableModel* tableModel_ = nullptr;
    HexLinesModel* hexModel_ = nullptr;

    QComboBox* member_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QLineEdit* find_ = nullptr;
    QToolButton* follow_ = nullptr;
    QToolButton* errorsOnly_ = nullptr;
    QTableView* table_ = nullptr;
    QButtonGroup* part_ = nullptr;
    QLabel* detail_ = nullptr;
    QPlainTextEdit* text_ = nullptr;
    QListView* hex_ = nullptr;
    QLabel* status_ = nullptr;
    QLabel* traceProblem_ = nullptr;
    QLabel* dropped_ = nullptr;
    QTimer* timer_ = nullptr;

    bool scrolling_ = false;  // the window itself moves the table
    ServerReach server_;
};

// The monitor as the console has it from start-up: a listener on the hub of
// call events (so that the window, opened later, shows the whole session),
// and the menu entry "Call monitor" (Ctrl+M) under Tools that opens it.
class CallMonitor final : public QObject {
    Q_OBJECT

public:
    CallMonitor(CallEvents& events, ConsoleWindow& console, MonitorLimits limits = {});
    ~CallMonitor() override;
    Q_DISABLE_COPY_MOVE(CallMonitor)

    QAction& action() { return *action_; }
    // Made on first use and kept; shown and raised every time.
    CallMonitorWindow& Open();
    CallMonitorWindow* window() const { return window_; }
    // A trace or session log that could not be written: shown in the window,
    // now or when it opens.
    void NoteTraceProblem(const QString& message);
    // How Send again reaches the console's server.
    void SetServerReach(CallMonitorWindow::ServerReach reach);

private:
    CallEvents& events_;
    CallMonitorFeed feed_;
    MonitorLimits limits_;
    QWidget& owner_;
    QPointer<QAction> action_;
    QPointer<CallMonitorWindow> window_;
    QString traceProblem_;
    CallMonitorWindow::ServerReach server_;
};

}  // namespace vantrel
