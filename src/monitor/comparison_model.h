#pragma once

#include "monitor/replay.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// What the call monitor's comparison view shows, without a toolkit: one row
// per replayed event, marked same, masked or changed, and for the selected
// row its old and new answer with the characters that differ marked. Either
// front-end draws it; the replay fills it as an observer.
namespace vantrel {

class ComparisonModel final : public ReplayObserver {
public:
    struct Row {
        std::uint64_t number = 0;  // the event's number in the record
        std::string member;
        Verdict verdict = Verdict::Same;
        std::vector<std::string> lines;  // the report's lines for a change
        Outcome recorded;
        Outcome now;
    };
    // One side of a row as the text and hex views show it: the answer's
    // text, or a description of what it was ("i2 7", "error 57 Device I/O
    // error", "no answer"), and the ranges [first, end) of its characters
    // that differ from the other side.
    struct Side {
        Text text;
        std::vector<std::pair<std::size_t, std::size_t>> marked;
    };

    void OnReplayed(const RecordReader::Entry& entry, const Outcome& recorded, const Outcome& now,
                    const Comparison& comparison) override;
    void OnSkipped(const RecordReader::Entry&) override {}

    std::size_t size() const { return rows_.size(); }
    const Row& row(std::size_t index) const { return rows_[index]; }
    // Old and new side of a row.
    std::pair<Side, Side> Sides(std::size_t index) const;

private:
    std::vector<Row> rows_;
};

// The record at `path` replayed against the session's own server (which
// traces each call as any other), its rows into `model`. Empty when the
// record was read to its end, else why it stopped there.
std::string CompareWithRecord(const std::string& path, AutomationObject& server, ComparisonModel& model);

}  // namespace vantrel
