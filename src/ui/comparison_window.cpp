#include "ui/comparison_window.h"

#include "monitor/call_monitor_model.h"

#include <QFont>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTableWidget>
#include <QTextCursor>
#include <QVBoxLayout>

#include <memory>

namespace vantrel {

namespace {

constexpr std::size_t kShownCharacters = 16 * 1024;

const QColor kMarked(255, 214, 102);

QColor VerdictColour(Verdict verdict) {
    switch (verdict) {
    case Verdict::Same: return QColor(Qt::white);
    case Verdict::Masked: return QColor(225, 225, 225);
    case Verdict::Changed: return QColor(255, 236, 179);
    case Verdict::NewError:
    case Verdict::ErrorGone: return QColor(255, 205, 210);
    }
    return QColor(Qt::white);
}

QPlainTextEdit* View(QWidget* parent, const char* name) {
    auto* view = new QPlainTextEdit(parent);
    view->setObjectName(QString::fromLatin1(name));
    view->setReadOnly(true);
    view->setLineWrapMode(QPlainTextEdit::NoWrap);
    view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    return view;
}

// The text with its control characters named, the part that differs on a
// marked background.
void ShowText(QPlainTextEdit* view, const ComparisonModel::Side& side) {
    view->clear();
    QTextCursor cursor(view->document());
    QTextCharFormat plain;
    QTextCharFormat marked;
    marked.setBackground(kMarked);
    std::size_t at = 0;
    const TextView text = side.text;
    for (const auto& [first, end] : side.marked) {
        cursor.insertText(QString::fromStdU16String(
                              SymbolText(text.substr(at, first - at), SymbolLines::BreakAfterCrLf, kShownCharacters)),
                          plain);
        cursor.insertText(QString::fromStdU16String(SymbolText(text.substr(first, end - first),
                                                               SymbolLines::BreakAfterCrLf, kShownCharacters)),
                          marked);
        at = end;
    }
    cursor.insertText(
        QString::fromStdU16String(SymbolText(text.substr(at), SymbolLines::BreakAfterCrLf, kShownCharacters)), plain);
}

// The hex lines, those that hold a differing character marked.
void ShowHex(QPlainTextEdit* view, const ComparisonModel::Side& side) {
    view->clear();
    const auto owner = std::make_shared<Text>(side.text);
    const HexLayout hex(owner, *owner);
    QTextCursor cursor(view->document());
    QTextCharFormat plain;
    QTextCharFormat marked;
    marked.setBackground(kMarked);
    const std::size_t lines = std::min<std::size_t>(hex.lineCount(), 4096);
    for (std::size_t line = 0; line < lines; ++line) {
        const std::size_t first = line * HexLayout::kPerLine;
        bool differs = false;
        for (const auto& [start, end] : side.marked) {
            differs = differs || (start < first + HexLayout::kPerLine && end > first);
        }
        cursor.insertText(QString::fromStdU16String(hex.Line(line)) + QLatin1Char('\n'), differs ? marked : plain);
    }
}

}  // namespace

ComparisonWindow::ComparisonWindow(ComparisonModel model, const QString& record, QWidget* owner)
    : QWidget(owner, Qt::Window)
    , model_(std::move(model)) {
    setObjectName(QStringLiteral("ComparisonWindow"));
    setWindowTitle(tr("Comparison with %1").arg(record));
    resize(960, 640);
    auto* layout = new QVBoxLayout(this);
    auto* split = new QSplitter(Qt::Vertical, this);
    table_ = new QTableWidget(static_cast<int>(model_.size()), 3, split);
    table_->setObjectName(QStringLiteral("ComparisonRows"));
    table_->setHorizontalHeaderLabels({tr("#"), tr("Member"), tr("Outcome")});
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->verticalHeader()->hide();
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    for (std::size_t i = 0; i < model_.size(); ++i) {
        const ComparisonModel::Row& row = model_.row(i);
        const QString cells[] = {QString::number(row.number), QString::fromStdString(row.member),
                                 QString::fromStdString(VerdictText(row.verdict))};
        for (int column = 0; column < 3; ++column) {
            auto* item = new QTableWidgetItem(cells[column]);
            item->setBackground(VerdictColour(row.verdict));
            table_->setItem(static_cast<int>(i), column, item);
        }
    }
    table_->resizeColumnsToContents();
    lines_ = new QLabel(split);
    lines_->setObjectName(QStringLiteral("ComparisonLines"));
    lines_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // The old answer above the new one, each as text and as hex.
    auto* sides = new QWidget(split);
    auto* grid = new QGridLayout(sides);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(new QLabel(tr("Old: the record"), sides), 0, 0);
    grid->addWidget(new QLabel(tr("New: this server"), sides), 2, 0);
    texts_ = {View(sides, "ComparisonOldText"), View(sides, "ComparisonNewText")};
    hexes_ = {View(sides, "ComparisonOldHex"), View(sides, "ComparisonNewHex")};
    for (int side = 0; side < 2; ++side) {
        grid->addWidget(texts_[static_cast<std::size_t>(side)], 2 * side + 1, 0);
        grid->addWidget(hexes_[static_cast<std::size_t>(side)], 2 * side + 1, 1);
    }
    layout->addWidget(split);
    connect(table_, &QTableWidget::currentCellChanged, this, [this](int row) { ShowRow(row); });
    if (model_.size() > 0) {
        SelectRow(0);
    }
}

void ComparisonWindow::SelectRow(int row) { table_->setCurrentCell(row, 0); }

void ComparisonWindow::ShowRow(int row) {
    if (row < 0 || static_cast<std::size_t>(row) >= model_.size()) {
        return;
    }
    const auto [old, now] = model_.Sides(static_cast<std::size_t>(row));
    ShowText(texts_[0], old);
    ShowText(texts_[1], now);
    ShowHex(hexes_[0], old);
    ShowHex(hexes_[1], now);
    QStringList lines;
    for (const std::string& line : model_.row(static_cast<std::size_t>(row)).lines) {
        lines << QString::fromStdString(line);
    }
    lines_->setText(lines.isEmpty() ? tr("the same") : lines.join(QLatin1Char('\n')));
}

}  // namespace vantrel
