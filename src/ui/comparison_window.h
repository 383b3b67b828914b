#pragma once

#include "monitor/comparison_model.h"

#include <QWidget>

#include <array>

class QLabel;
class QPlainTextEdit;
class QTableWidget;

namespace vantrel {

// The call monitor's comparison of a record with its replay: a row per
// event marked same, masked or changed, and the selected row's old and new
// answer side by side, as text and as hex, the differing characters marked.
// It draws the ComparisonModel and decides nothing itself.
class ComparisonWindow final : public QWidget {
    Q_OBJECT

public:
    ComparisonWindow(ComparisonModel model, const QString& record, QWidget* owner);
    Q_DISABLE_COPY_MOVE(ComparisonWindow)

    const ComparisonModel& model() const { return model_; }
    void SelectRow(int row);

private:
    void ShowRow(int row);

    ComparisonModel model_;
    QTableWidget* table_ = nullptr;
    QLabel* lines_ = nullptr;
    // The old side first, then the new one.
    std::array<QPlainTextEdit*, 2> texts_{};
    std::array<QPlainTextEdit*, 2> hexes_{};
};

}  // namespace vantrel
