#include "call_monitor_window.h"

#include "ui/comparison_window.h"
#include "ui/window_places.h"
#include "ui/console_window.h"
#include "ui/visible_text.h"

#include <QAbstractListModel>
#include <QAbstractTableModel>
#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QStandardPaths>
#include <QDir>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QSyntaxHighlighter>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <chrono>
#include <filesystem>

namespace vantrel {

namespace {

using Column = CallMonitorModel::Column;

const char* HeaderOf(Column column) {
    switch (column) {
    case Column::Number: return "#";
    case Column::Time: return "Time";
    case Column::Member: return "Member";
    case Column::Kind: return "Kind";
    case Column::Position: return "Pos.";
    case Column::Sent: return "Sent";
    case Column::Answer: return "Answer or error";
    case Column::ServerTime: return "Server took";
    }
    return "";
}

// Our std::string texts are UTF-8.
QString FromStd(const std::string& text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

}  // namespace

// The table's Qt side: rows come from the plain model, which tells it
// before and after each change so the view keeps its selection and place.
class MonitorTableModel final : public QAbstractTableModel, public CallMonitorModel::Observer {
public:
    MonitorTableModel(CallMonitorModel& model, QObject* parent)
        : QAbstractTableModel(parent)
        , model_(model) {
        model_.SetObserver(this);
    }
    ~MonitorTableModel() override { model_.SetObserver(nullptr); }

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(model_.size());
    }
    int columnCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : CallMonitorModel::kColumnCount;
    }

    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid() || static_cast<std::size_t>(index.row()) >= model_.size()) {
            return {};
        }
        const auto column = static_cast<Column>(index.column());
        const auto row = static_cast<std::size_t>(index.row());
        switch (role) {
        case Qt::DisplayRole: return ToQString(model_.Cell(row, column));
        case Qt::TextAlignmentRole:
            if (column == Column::Number || column == Column::ServerTime) {
                return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
            }
            return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
        case Qt::ForegroundRole:
            // Errors stand out: the console would have ended on most of them.
            if (model_.Event(row)->error && column == Column::Answer) {
                return QColor(0xB0, 0x00, 0x20);
            }
            return {};
        default: return {};
        }
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
            return {};
        }
        return QString::fromLatin1(HeaderOf(static_cast<Column>(section)));
    }

    void BeforeAppend(std::size_t first, std::size_t count) override {
        beginInsertRows(QModelIndex(), static_cast<int>(first), static_cast<int>(first + count - 1));
    }
    void AfterAppend() override { endInsertRows(); }
    void BeforeRemoveFront(std::size_t count) override {
        beginRemoveRows(QModelIndex(), 0, static_cast<int>(count - 1));
    }
    void AfterRemoveFront() override { endRemoveRows(); }
    void BeforeReset() override { beginResetModel(); }
    void AfterReset() override { endResetModel(); }

private:
    CallMonitorModel& model_;
};

// Sets the marked names («CR», «NUL × 40», «xE9») apart from the text.
class MarkHighlighter final : public QSyntaxHighlighter {
public:
    using QSyntaxHighlighter::QSyntaxHighlighter;

protected:
    void highlightBlock(const QString& text) override {
        QTextCharFormat mark;
        mark.setForeground(QColor(0x1F, 0x5F, 0xAF));
        qsizetype open = text.indexOf(QChar(0x00AB));
        while (open >= 0) {
            const qsizetype close = text.indexOf(QChar(0x00BB), open);
            if (close < 0) {
                break;
            }
            setFormat(static_cast<int>(open), static_cast<int>(close - open + 1), mark);
            open = text.indexOf(QChar(0x00AB), close);
        }
    }
};

// The hex lines of one value, made only for the rows the list shows, so a
// value of ten million characters costs no more than a short one.
class HexLinesModel final : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    void SetLayout(HexLayout layout) {
        beginResetModel();
        layout_ = std::move(layout);
        endResetModel();
    }

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(layout_.lineCount());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole || !index.isValid()) {
            return {};
        }
        return ToQString(layout_.Line(static_cast<std::size_t>(index.row())));
    }

private:
    HexLayout layout_;
};

CallMonitorWindow::CallMonitorWindow(CallMonitorFeed& feed, MonitorLimits limits, QWidget* owner)
    : QWidget(owner, Qt::Window)
    , view_(feed, limits) {
    setObjectName(QStringLiteral("CallMonitor"));
    setWindowTitle(tr("Call monitor"));
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);

    auto* layout = new QVBoxLayout(this);
    auto* bar = new QWidget(this);
    BuildToolBar(bar);
    layout->addWidget(bar);

    tableModel_ = new MonitorTableModel(view_.model(), this);
    table_ = new QTableView(this);
    table_->setObjectName(QStringLiteral("CallMonitorTable"));
    table_->setModel(tableModel_);
    table_->setFont(fixed);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table_->setWordWrap(false);
    table_->setTextElideMode(Qt::ElideRight);
    // Fixed row heights and column widths: the view never measures 50,000
    // rows to lay itself out.
    table_->verticalHeader()->setVisible(false);
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->verticalHeader()->setDefaultSectionSize(QFontMetrics(fixed).height() + 4);
    table_->horizontalHeader()->setStretchLastSection(false);
    const int digit = QFontMetrics(fixed).horizontalAdvance(QLatin1Char('0'));
    const int widths[CallMonitorModel::kColumnCount] = {6, 13, 28, 12, 5, 40, 40, 11};
    for (int column = 0; column < CallMonitorModel::kColumnCount; ++column) {
        table_->setColumnWidth(column, widths[column] * digit + 12);
    }
    // The values share what room is left; stretching measures no cell.
    table_->horizontalHeader()->setSectionResizeMode(static_cast<int>(Column::Sent), QHeaderView::Stretch);
    table_->horizontalHeader()->setSectionResizeMode(static_cast<int>(Column::Answer), QHeaderView::Stretch);
    connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { SelectionChanged(); });
    connect(table_->verticalScrollBar(), &QScrollBar::valueChanged, this,
            [this](int value) { ScrollValueChanged(value); });

    auto* copy = new QAction(tr("Copy row as literal"), table_);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(copy, &QAction::triggered, this, [this] { CopyRows(); });
    table_->addAction(copy);
    auto* again = new QAction(tr("Send again"), table_);
    again->setObjectName(QStringLiteral("CallMonitorSendAgainAction"));
    connect(again, &QAction::triggered, this, [this] { SendSelectedAgain(); });
    table_->addAction(again);
    table_->setContextMenuPolicy(Qt::ActionsContextMenu);

    auto* lower = new QWidget(this);
    auto* lowerLayout = new QVBoxLayout(lower);
    lowerLayout->setContentsMargins(0, 0, 0, 0);
    auto* choice = new QHBoxLayout();
    part_ = new QButtonGroup(this);
    auto* answer = new QRadioButton(tr("Answer"), lower);
    answer->setObjectName(QStringLiteral("CallMonitorShowAnswer"));
    answer->setChecked(true);
    auto* sent = new QRadioButton(tr("Sent"), lower);
    sent->setObjectName(QStringLiteral("CallMonitorShowSent"));
    part_->addButton(answer, static_cast<int>(EventPart::Answer));
    part_->addButton(sent, static_cast<int>(EventPart::Sent));
    connect(part_, &QButtonGroup::idClicked, this, [this] { ShowDetail(); });
    detail_ = new QLabel(lower);
    detail_->setObjectName(QStringLiteral("CallMonitorDetail"));
    // A long member name must not widen the window: the line takes the room
    // there is, and its tooltip holds the whole of it.
    detail_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    choice->addWidget(new QLabel(tr("Show:"), lower));
    choice->addWidget(answer);
    choice->addWidget(sent);
    choice->addSpacing(12);
    choice->addWidget(detail_, 1);
    lowerLayout->addLayout(choice);

    auto* views = new QSplitter(Qt::Horizontal, lower);
    text_ = new QPlainTextEdit(views);
    text_->setObjectName(QStringLiteral("CallMonitorText"));
    text_->setReadOnly(true);
    text_->setFont(fixed);
    text_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    new MarkHighlighter(text_->document());
    hexModel_ = new HexLinesModel(this);
    hex_ = new QListView(views);
    hex_->setObjectName(QStringLiteral("CallMonitorHex"));
    hex_->setModel(hexModel_);
    hex_->setFont(fixed);
    hex_->setUniformItemSizes(true);
    hex_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    views->addWidget(text_);
    views->addWidget(hex_);
    views->setStretchFactor(0, 1);
    views->setStretchFactor(1, 1);
    lowerLayout->addWidget(views, 1);

    auto* split = new QSplitter(Qt::Vertical, this);
    split->addWidget(table_);
    split->addWidget(lower);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 2);
    layout->addWidget(split, 1);

    auto* foot = new QHBoxLayout();
    dropped_ = new QLabel(this);
    dropped_->setObjectName(QStringLiteral("CallMonitorDropped"));
    dropped_->setStyleSheet(QStringLiteral("color: #b00020;"));
    dropped_->setVisible(false);
    status_ = new QLabel(this);
    status_->setObjectName(QStringLiteral("CallMonitorStatus"));
    foot->addWidget(status_, 1);
    foot->addWidget(dropped_);
    traceProblem_ = new QLabel(this);
    traceProblem_->setObjectName(QStringLiteral("CallMonitorTraceProblem"));
    traceProblem_->setStyleSheet(QStringLiteral("color: #b00020;"));
    traceProblem_->setVisible(false);
    foot->addWidget(traceProblem_);
    layout->addLayout(foot);

    timer_ = new QTimer(this);
    timer_->setInterval(kFlushMilliseconds);
    connect(timer_, &QTimer::timeout, this, [this] { Flush(); });

    auto* findNext = new QShortcut(QKeySequence::FindNext, this);
    connect(findNext, &QShortcut::activated, this, [this] { Find(CallMonitorModel::Direction::Forward); });
    auto* findPrevious = new QShortcut(QKeySequence::FindPrevious, this);
    connect(findPrevious, &QShortcut::activated, this, [this] { Find(CallMonitorModel::Direction::Backward); });
    auto* focusFind = new QShortcut(QKeySequence::Find, this);
    connect(focusFind, &QShortcut::activated, this, [this] {
        find_->setFocus();
        find_->selectAll();
    });

    // Within a screen of 1024 by 768, and of 1280 by 1024 at 150 %; where
    // the technician left it last time when that is known.
    resize(820, 620);
    RestoreGeometry(this, kMonitorGeometryKey);
    UpdateStatus();
}

CallMonitorWindow::~CallMonitorWindow() = default;

void CallMonitorWindow::BuildToolBar(QWidget* bar) {
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    const auto button = [&](const QString& text, const char* name, const QString& tip) {
        auto* made = new QToolButton(bar);
        made->setText(text);
        made->setObjectName(QString::fromLatin1(name));
        made->setToolTip(tip);
        made->setToolButtonStyle(Qt::ToolButtonTextOnly);
        return made;
    };

    member_ = new QComboBox(bar);
    member_->setObjectName(QStringLiteral("CallMonitorMember"));
    member_->addItem(tr("All members"), QString());
    member_->setMinimumContentsLength(18);
    member_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    connect(member_, &QComboBox::currentIndexChanged, this, [this] { ApplyFilter(); });

    const QString escapes = tr("Escapes as in scripts: \\r \\n \\t \\0 \\e \\\\ \\xHH \\uHHHH; letters in any case.");
    filter_ = new QLineEdit(bar);
    filter_->setObjectName(QStringLiteral("CallMonitorFilter"));
    filter_->setPlaceholderText(tr("Filter rows by text"));
    filter_->setToolTip(escapes);
    filter_->setClearButtonEnabled(true);
    connect(filter_, &QLineEdit::textChanged, this, [this] { ApplyFilter(); });

    errorsOnly_ = button(tr("Errors"), "CallMonitorErrorsOnly", tr("Show only failed calls and error reports"));
    errorsOnly_->setCheckable(true);
    connect(errorsOnly_, &QToolButton::toggled, this, [this] { ApplyFilter(); });

    find_ = new QLineEdit(bar);
    find_->setObjectName(QStringLiteral("CallMonitorFind"));
    find_->setPlaceholderText(tr("Search (Ctrl+F, F3)"));
    find_->setToolTip(escapes);
    connect(find_, &QLineEdit::returnPressed, this, [this] { Find(CallMonitorModel::Direction::Forward); });
    auto* previous = button(tr("\u25B2"), "CallMonitorFindPrevious", tr("Previous row that holds the text (Shift+F3)"));
    connect(previous, &QToolButton::clicked, this, [this] { Find(CallMonitorModel::Direction::Backward); });
    auto* next = button(tr("\u25BC"), "CallMonitorFindNext", tr("Next row that holds the text (F3)"));
    connect(next, &QToolButton::clicked, this, [this] { Find(CallMonitorModel::Direction::Forward); });

    follow_ = button(tr("Follow"), "CallMonitorFollow",
                     tr("Keep the newest row in sight; scrolling back pauses it, scrolling to the end resumes it"));
    follow_->setCheckable(true);
    follow_->setChecked(true);
    connect(follow_, &QToolButton::clicked, this, [this](bool checked) { SetFollowing(checked); });
    auto* copy =
        button(tr("Copy"), "CallMonitorCopy", tr("Copy the selected rows, values as escaped literals (Ctrl+C)"));
    connect(copy, &QToolButton::clicked, this, [this] { CopyRows(); });
    auto* again = button(tr("Send again"), "CallMonitorSendAgain",
                         tr("Send the selected put or call to the server again, exactly as it went"));
    connect(again, &QToolButton::clicked, this, [this] { SendSelectedAgain(); });
    auto* clear = button(tr("Clear"), "CallMonitorClear", tr("Forget every row so far"));
    connect(clear, &QToolButton::clicked, this, [this] { Clear(); });
    auto* exportRows = button(tr("Export\u2026"), "CallMonitorExport",
                              tr("Write the shown rows to a JSON Lines file in the trace format"));
    connect(exportRows, &QToolButton::clicked, this, [this] { AskExport(); });
    auto* compare = button(tr("Compare\u2026"), "CallMonitorCompare",
                           tr("Send a recorded session to the server again and compare every answer"));
    connect(compare, &QToolButton::clicked, this, [this] { AskCompare(); });

    row->addWidget(member_);
    row->addWidget(filter_, 2);
    row->addWidget(errorsOnly_);
    row->addSpacing(8);
    row->addWidget(find_, 2);
    row->addWidget(previous);
    row->addWidget(next);
    row->addSpacing(8);
    row->addWidget(follow_);
    row->addWidget(copy);
    row->addWidget(again);
    row->addWidget(clear);
    row->addWidget(exportRows);
    row->addWidget(compare);
}

void CallMonitorWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    Flush();
    timer_->start();
}

void CallMonitorWindow::hideEvent(QHideEvent* event) {
    // Hidden, the feed holds the events (within the limits) until it shows.
    timer_->stop();
    SaveGeometry(this, kMonitorGeometryKey);
    QWidget::hideEvent(event);
}

void CallMonitorWindow::Flush() {
    QScrollBar* bar = table_->verticalScrollBar();
    const int before = bar->value();
    scrolling_ = true;
    const CallMonitorView::Taken taken = view_.Flush();
    if (taken.any) {
        if (view_.following()) {
            table_->scrollToBottom();
        } else {
            // Rows dropped at the top would shift what the technician reads.
            bar->setValue(before - static_cast<int>(taken.removedFront));
        }
    }
    scrolling_ = false;
    if (taken.any) {
        UpdateMembers();
        UpdateStatus();
    }
}

void CallMonitorWindow::ScrollValueChanged(int value) {
    if (!scrolling_ && view_.ScrolledTo(value >= table_->verticalScrollBar()->maximum())) {
        follow_->setChecked(view_.following());
        UpdateStatus();
    }
}

void CallMonitorWindow::SetFollowing(bool following) {
    view_.SetFollowing(following);
    follow_->setChecked(following);
    if (following) {
        scrolling_ = true;
        table_->scrollToBottom();
        scrolling_ = false;
    }
    UpdateStatus();
}

void CallMonitorWindow::ApplyFilter() {
    const bool selected = view_.hasSelection();
    view_.SetFilter(member_->currentData().toString().toStdString(), FromQString(filter_->text()),
                    errorsOnly_->isChecked());
    // The selected event stays selected when it passes the new filter; the
    // detail of a row the filter hides goes with it.
    if (const auto row = view_.SelectedRow()) {
        scrolling_ = true;
        table_->selectRow(static_cast<int>(*row));
        scrolling_ = false;
    } else if (selected) {
        ShowDetail();
    }
    if (view_.following()) {
        scrolling_ = true;
        table_->scrollToBottom();
        scrolling_ = false;
    }
    UpdateStatus();
}

void CallMonitorWindow::Find(CallMonitorModel::Direction direction) {
    const QModelIndex current = table_->currentIndex();
    const auto found =
        view_.Find(FromQString(find_->text()),
                   current.isValid() ? std::optional<std::size_t>(current.row()) : std::nullopt, direction);
    if (found) {
        table_->selectRow(static_cast<int>(*found));
        table_->scrollTo(tableModel_->index(static_cast<int>(*found), 0));
    }
    UpdateStatus();
}

void CallMonitorWindow::CopyRows() {
    std::vector<std::size_t> rows;
    for (const QModelIndex& index : table_->selectionModel()->selectedRows()) {
        rows.push_back(static_cast<std::size_t>(index.row()));
    }
    const std::string text = view_.CopyText(std::move(rows));
    if (!text.empty()) {
        QApplication::clipboard()->setText(FromStd(text));
    }
}

void CallMonitorWindow::Clear() {
    view_.Clear();
    UpdateMembers();
    ShowDetail();
    SetFollowing(true);
}

void CallMonitorWindow::AskExport() {
    // A dated name in the user's documents, never the working folder.
    QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (folder.isEmpty() || !QDir(folder).exists()) {
        folder = QDir::homePath();  // a dialog offers a folder that is missing as the working one
    }
    const QString name = FromStd(CallMonitorView::ExportName(std::chrono::system_clock::now()));
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Export the shown rows"), QDir(folder).filePath(name),
                                     tr("JSON Lines, the trace format (*.jsonl);;Plain text log (*.txt *.log)"));
    if (!path.isEmpty()) {
        ExportTo(path);
    }
}

void CallMonitorWindow::AskCompare() {
    const QString path = QFileDialog::getOpenFileName(this, tr("Compare with a record"), QString(),
                                                      tr("Records: traces and session logs (*.jsonl);;All files (*)"));
    if (!path.isEmpty()) {
        CompareWith(path);
    }
}

ComparisonWindow* CallMonitorWindow::CompareWith(const QString& record) {
    AutomationObject* server = server_ ? server_() : nullptr;
    if (!server) {
        view_.Say("Compare: there is no server to send the record to");
        UpdateStatus();
        return nullptr;
    }
    ComparisonModel comparison;
    const std::string problem = CompareWithRecord(record.toStdString(), *server, comparison);
    if (!problem.empty()) {
        view_.Say("Compare: " + problem);
        UpdateStatus();
    }
    auto* window = new ComparisonWindow(std::move(comparison), record, this);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    return window;
}

bool CallMonitorWindow::ExportTo(const QString& path) {
    Flush();
    const bool written = view_.ExportTo(std::filesystem::path(path.toStdU16String()));
    UpdateStatus();
    return written;
}

void CallMonitorWindow::SelectionChanged() {
    const QModelIndex current = table_->selectionModel()->currentIndex();
    const QModelIndexList rows = table_->selectionModel()->selectedRows();
    // The detail follows the row last clicked, or the one selected row.
    int row = -1;
    if (current.isValid() && table_->selectionModel()->isRowSelected(current.row(), QModelIndex())) {
        row = current.row();
    } else if (!rows.isEmpty()) {
        row = rows.front().row();
    }
    if (row < 0) {
        return;  // keep showing the last one, e.g. after a filter change
    }
    view_.Select(static_cast<std::size_t>(row));
    ShowDetail();
}

void CallMonitorWindow::ShowDetail() {
    view_.SetPart(static_cast<EventPart>(part_->checkedId()));
    CallMonitorView::Detail detail = view_.CurrentDetail();
    const QString line = FromStd(detail.line);
    detail_->setText(line);
    detail_->setToolTip(line);
    text_->setPlainText(ToQString(detail.text));
    hexModel_->SetLayout(std::move(detail.hex));
    hex_->scrollToTop();
}

void CallMonitorWindow::UpdateMembers() {
    const QString current = member_->currentData().toString();
    const auto choices = view_.MemberChoices(current.toStdString());
    if (!choices) {
        return;
    }
    const QSignalBlocker block(member_);
    member_->clear();
    for (const CallMonitorView::MemberChoice& choice : *choices) {
        if (choice.separatorBefore) {
            member_->insertSeparator(member_->count());
        }
        member_->addItem(FromStd(choice.label), FromStd(choice.member));
    }
    member_->setCurrentIndex(std::max(0, member_->findData(current)));
}

void CallMonitorWindow::SendSelectedAgain() {
    view_.SendSelectedAgain(server_ ? server_() : nullptr);
    Flush();
    UpdateStatus();
}

void CallMonitorWindow::UpdateStatus() {
    status_->setText(FromStd(view_.StatusLine()));
    const std::string dropped = view_.DroppedNote();
    dropped_->setVisible(!dropped.empty());
    dropped_->setText(FromStd(dropped));
}

CallMonitor::CallMonitor(CallEvents& events, ConsoleWindow& console, MonitorLimits limits)
    : events_(events)
    , feed_(limits)
    , limits_(limits)
    , owner_(console) {
    events_.Add(&feed_);
    action_ = new QAction(tr("Call monitor"), &console);
    action_->setObjectName(QStringLiteral("CallMonitorAction"));
    action_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_M));
    connect(action_, &QAction::triggered, this, [this] { Open(); });
    console.toolsMenu().addAction(action_);
}

CallMonitor::~CallMonitor() {
    events_.Remove(&feed_);
    delete window_.data();
    delete action_.data();
}

void CallMonitorWindow::ShowTraceProblem(const QString& message) {
    traceProblem_->setText(message);
    traceProblem_->setToolTip(message);
    traceProblem_->setVisible(true);
}

void CallMonitor::NoteTraceProblem(const QString& message) {
    traceProblem_ = message;
    if (window_) {
        window_->ShowTraceProblem(message);
    }
}

void CallMonitor::SetServerReach(CallMonitorWindow::ServerReach reach) {
    server_ = std::move(reach);
    if (window_) {
        window_->SetServerReach(server_);
    }
}

CallMonitorWindow& CallMonitor::Open() {
    if (!window_) {
        window_ = new CallMonitorWindow(feed_, limits_, nullptr);
        window_->SetServerReach(server_);
        KeepBeside(*window_, owner_);
        if (!traceProblem_.isEmpty()) {
            window_->ShowTraceProblem(traceProblem_);
        }
    }
    window_->show();
    window_->raise();
    window_->activateWindow();
    return *window_;
}

}  // namespace vantrel
