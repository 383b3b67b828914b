#include "call_monitor_window.h"

#include "monitor/send_again.h"
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
#include <QDateTime>
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

#include <filesystem>
#include <fstream>

namespace vantrel {

namespace {

// "1 event", "2 events", "12,345 events".
QString Counted(std::uint64_t count, const char* one, const char* many) {
    return QString::fromStdString(Grouped(count)) + QLatin1Char(' ') + QLatin1String(count == 1 ? one : many);
}

}  // namespace

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

    std::size_t lastRemoved() const { return lastRemoved_; }
    std::size_t lastAppended() const { return lastAppended_; }
    void ResetCounts() {
        lastRemoved_ = 0;
        lastAppended_ = 0;
    }

    void BeforeAppend(std::size_t first, std::size_t count) override {
        lastAppended_ += count;
        beginInsertRows(QModelIndex(), static_cast<int>(first), static_cast<int>(first + count - 1));
    }
    void AfterAppend() override { endInsertRows(); }
    void BeforeRemoveFront(std::size_t count) override {
        lastRemoved_ += count;
        beginRemoveRows(QModelIndex(), 0, static_cast<int>(count - 1));
    }
    void AfterRemoveFront() override { endRemoveRows(); }
    void BeforeReset() override { beginResetModel(); }
    void AfterReset() override { endResetModel(); }

private:
    CallMonitorModel& model_;
    std::size_t lastRemoved_ = 0;
    std::size_t lastAppended_ = 0;
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
    , feed_(feed)
    , model_(limits) {
    setObjectName(QStringLiteral("CallMonitor"));
    setWindowTitle(tr("Call monitor"));
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);

    auto* layout = new QVBoxLayout(this);
    auto* bar = new QWidget(this);
    BuildToolBar(bar);
    layout->addWidget(bar);

    tableModel_ = new MonitorTableModel(model_, this);
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
    CallMonitorFeed::Batch batch = feed_.Take();
    if (batch.entries.empty() && batch.dropped == 0) {
        return;
    }
    QScrollBar* bar = table_->verticalScrollBar();
    const int before = bar->value();
    tableModel_->ResetCounts();
    scrolling_ = true;
    model_.Append(std::move(batch));
    if (follow_->isChecked()) {
        table_->scrollToBottom();
    } else {
        // Rows dropped at the top would shift what the technician reads.
        bar->setValue(before - static_cast<int>(tableModel_->lastRemoved()));
        newWhilePaused_ += tableModel_->lastAppended();
    }
    scrolling_ = false;
    UpdateMembers();
    UpdateStatus();
}

void CallMonitorWindow::ScrollValueChanged(int value) {
    if (scrolling_) {
        return;
    }
    // Scrolled back by hand: pause; scrolled to the end: follow again.
    const bool atEnd = value >= table_->verticalScrollBar()->maximum();
    if (atEnd != follow_->isChecked()) {
        follow_->setChecked(atEnd);
        if (atEnd) {
            newWhilePaused_ = 0;
        }
        UpdateStatus();
    }
}

void CallMonitorWindow::SetFollowing(bool following) {
    follow_->setChecked(following);
    if (following) {
        newWhilePaused_ = 0;
        scrolling_ = true;
        table_->scrollToBottom();
        scrolling_ = false;
    }
    UpdateStatus();
}

void CallMonitorWindow::ApplyFilter() {
    model_.SetFilter(member_->currentData().toString().toStdString(), Unescaped(FromQString(filter_->text())),
                     errorsOnly_->isChecked());
    // Keep the selected event selected when it passes the new filter; the
    // detail of a row the filter hides goes with it.
    if (selected_) {
        if (const auto row = model_.RowOf(selectedNumber_)) {
            scrolling_ = true;
            table_->selectRow(static_cast<int>(*row));
            scrolling_ = false;
        } else {
            selected_.reset();
            ShowDetail();
        }
    }
    if (follow_->isChecked()) {
        scrolling_ = true;
        table_->scrollToBottom();
        scrolling_ = false;
    }
    UpdateStatus();
}

void CallMonitorWindow::Find(CallMonitorModel::Direction direction) {
    const Text needle = Unescaped(FromQString(find_->text()));
    if (needle.empty() || model_.size() == 0) {
        return;
    }
    const QModelIndex current = table_->currentIndex();
    std::size_t from = 0;
    if (current.isValid()) {
        from = static_cast<std::size_t>(current.row());
    } else if (direction == CallMonitorModel::Direction::Forward) {
        from = model_.size() - 1;  // so the search starts at the first row
    }
    const auto found = model_.Find(needle, from, direction);
    if (!found) {
        message_ = tr("No row holds \u201C%1\u201D.").arg(find_->text());
    } else {
        message_.clear();
        table_->selectRow(static_cast<int>(*found));
        table_->scrollTo(tableModel_->index(static_cast<int>(*found), 0));
    }
    UpdateStatus();
}

void CallMonitorWindow::CopyRows() {
    QModelIndexList rows = table_->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end(), [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
    std::string text;
    for (const QModelIndex& index : rows) {
        text += model_.RowLiteral(static_cast<std::size_t>(index.row()));
        text += '\n';
    }
    if (!text.empty()) {
        QApplication::clipboard()->setText(FromStd(text));
    }
}

void CallMonitorWindow::Clear() {
    // What is still queued was there before the click: it goes too.
    feed_.Take();
    model_.Clear();
    selected_.reset();
    newWhilePaused_ = 0;
    message_.clear();
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
    const QString name = QStringLiteral("vantrel-calls-%1.jsonl")
                             .arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-ddTHH-mm-ss")));
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Export the shown rows"), QDir(folder).filePath(name),
                                     tr("JSON Lines, the trace format (*.jsonl);;Plain text log (*.txt *.log)"));
    if (!path.isEmpty()) {
        ExportTo(path);
    }
}

bool CallMonitorWindow::ExportTo(const QString& path) {
    Flush();
    std::ofstream out(std::filesystem::path(path.toStdU16String()), std::ios::binary | std::ios::trunc);
    if (out) {
        // A .txt or .log file gets the plain log; any other the trace format.
        if (path.endsWith(QStringLiteral(".txt"), Qt::CaseInsensitive) ||
            path.endsWith(QStringLiteral(".log"), Qt::CaseInsensitive)) {
            model_.ExportText(out);
        } else {
            model_.ExportJsonLines(out);
        }
        out.flush();
    }
    const bool written = static_cast<bool>(out);
    message_ = written ? tr("%1 written to %2").arg(Counted(model_.size(), "row", "rows"), path)
                       : tr("Cannot write %1").arg(path);
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
    selected_ = model_.Event(static_cast<std::size_t>(row));
    selectedNumber_ = model_.Number(static_cast<std::size_t>(row));
    ShowDetail();
}

void CallMonitorWindow::SetDetail(const QString& line) {
    detail_->setText(line);
    detail_->setToolTip(line);
}

void CallMonitorWindow::ShowDetail() {
    if (!selected_) {
        SetDetail(QString());
        text_->clear();
        hexModel_->SetLayout(HexLayout());
        return;
    }
    auto wanted = static_cast<EventPart>(part_->checkedId());
    PartView part = PartOf(selected_, wanted);
    if (!part.present) {
        // A put has no answer, a call without argument sends nothing: show
        // the part there is.
        wanted = wanted == EventPart::Answer ? EventPart::Sent : EventPart::Answer;
        part = PartOf(selected_, wanted);
    }
    const QString header =
        QStringLiteral("#%1 %2 %3 \u2014 ")
            .arg(selectedNumber_)
            .arg(FromStd(MonitorKind(*selected_)),
                 ToQString(SymbolText(MonitorMember(*selected_), SymbolLines::OneLine, CallMonitorModel::kCellLimit)));
    if (!part.present) {
        SetDetail(header + tr("nothing sent or answered"));
        text_->clear();
        hexModel_->SetLayout(HexLayout());
        return;
    }
    const QString which = wanted == EventPart::Answer ? tr("answer") : tr("sent");
    if (!part.isText) {
        SetDetail(header + tr("%1: %2").arg(which, ToQString(part.description)));
        text_->setPlainText(ToQString(part.description));
        hexModel_->SetLayout(HexLayout());
        return;
    }
    const Text& value = *part.text;
    QString summary = tr("%1: %2 characters").arg(which, FromStd(Grouped(value.size())));
    if (value.size() > kDetailLimit) {
        summary += tr(" (the text view draws the first %1, the hex view all)").arg(FromStd(Grouped(kDetailLimit)));
    }
    SetDetail(header + summary);
    text_->setPlainText(ToQString(SymbolText(value, SymbolLines::BreakAfterCrLf, kDetailLimit)));
    hexModel_->SetLayout(HexLayout(part.text, value));
    hex_->scrollToTop();
}

void CallMonitorWindow::UpdateMembers() {
    const std::set<std::string>& members = model_.members();
    const std::set<std::string>& titles = model_.boxTitles();
    const std::size_t names = members.size() + titles.size();
    if (names == listedNames_) {
        return;  // names only ever grow between clears
    }
    listedNames_ = names;
    const QString current = member_->currentData().toString();
    const QSignalBlocker block(member_);
    member_->clear();
    member_->addItem(tr("All members"), QString());
    for (const std::string& name : members) {
        member_->addItem(FromStd(name), FromStd(name));
    }
    // Box titles apart from the server's members.
    if (!titles.empty()) {
        member_->insertSeparator(member_->count());
        for (const std::string& title : titles) {
            member_->addItem(tr("box: %1").arg(FromStd(title)), FromStd(title));
        }
    }
    const int index = member_->findData(current);
    if (index >= 0) {
        member_->setCurrentIndex(index);
    } else if (!current.isEmpty()) {
        // The chosen member stays chosen after a clear, even with no row yet.
        member_->addItem(current, current);
        member_->setCurrentIndex(member_->count() - 1);
    }
}

void CallMonitorWindow::SendSelectedAgain() {
    if (!selected_) {
        message_ = tr("Select a put or call to send it again");
    } else if (const std::optional<std::string> why = WhyNotSendAgain(*selected_)) {
        message_ = tr("Not sent: %1").arg(FromStd(*why));
    } else if (AutomationObject* server = server_ ? server_() : nullptr) {
        const EventPointer row = selected_;  // the new row may trim this one
        const std::uint64_t number = selectedNumber_;
        try {
            SendAgain(*row, *server);
            message_ = tr("#%1 sent again").arg(number);
        } catch (const RuntimeError& error) {
            message_ =
                tr("#%1 sent again: error %2").arg(number).arg(QString::fromStdString(ErrorNumberText(error.number())));
        }
        Flush();
    } else {
        message_ = tr("Not sent: there is no server");
    }
    UpdateStatus();
}

void CallMonitorWindow::UpdateStatus() {
    QString text = Counted(model_.keptCount(), "event", "events");
    if (model_.filtered()) {
        text += tr(", %1 shown").arg(FromStd(Grouped(model_.size())));
    }
    if (!follow_->isChecked()) {
        text += tr("  \u00B7  auto-scroll paused");
        if (newWhilePaused_ > 0) {
            text += tr(", %1 new below").arg(FromStd(Grouped(newWhilePaused_)));
        }
    }
    if (!message_.isEmpty()) {
        text += QStringLiteral("  \u00B7  ") + message_;
    }
    status_->setText(text);
    const std::uint64_t dropped = model_.droppedCount();
    dropped_->setVisible(dropped > 0);
    if (dropped > 0) {
        dropped_->setText(tr("%1 older events dropped: the monitor keeps the newest %2 events and %3 characters")
                              .arg(FromStd(Grouped(dropped)), FromStd(Grouped(model_.limits().rows)),
                                   FromStd(Grouped(model_.limits().characters))));
    }
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
