#include "comparison_model.h"

#include <algorithm>

namespace vantrel {

namespace {

Text Shown(const Outcome& outcome) {
    if (outcome.error) {
        return FromUtf8("error " + std::to_string(outcome.error->number()) + " " + outcome.error->description());
    }
    if (!outcome.result) {
        return FromUtf8("no answer");
    }
    if (outcome.result->is(Variant::Kind::Text)) {
        return outcome.result->text();
    }
    return FromUtf8(ShortValue(*outcome.result));
}

}  // namespace

void ComparisonModel::OnReplayed(const RecordReader::Entry& entry, const Outcome& recorded, const Outcome& now,
                                 const Comparison& comparison) {
    Row row;
    row.number = entry.number;
    row.member = entry.event.member;
    row.verdict = comparison.verdict;
    row.lines = comparison.lines;
    row.recorded = recorded;
    row.now = now;
    rows_.push_back(std::move(row));
}

std::pair<ComparisonModel::Side, ComparisonModel::Side> ComparisonModel::Sides(std::size_t index) const {
    Side old{Shown(rows_[index].recorded), {}};
    Side now{Shown(rows_[index].now), {}};
    // What lies between the common start and the common end differs.
    const std::size_t shorter = std::min(old.text.size(), now.text.size());
    std::size_t start = 0;
    while (start < shorter && old.text[start] == now.text[start]) {
        ++start;
    }
    std::size_t end = 0;
    while (end < shorter - start && old.text[old.text.size() - 1 - end] == now.text[now.text.size() - 1 - end]) {
        ++end;
    }
    if (start < old.text.size() - end) {
        old.marked.emplace_back(start, old.text.size() - end);
    }
    if (start < now.text.size() - end) {
        now.marked.emplace_back(start, now.text.size() - end);
    }
    return {std::move(old), std::move(now)};
}

}  // namespace vantrel

namespace vantrel {

namespace {

// The session's server lent to a replay, which would otherwise own the one
// it creates.
class Lent final : public AutomationObject {
public:
    explicit Lent(AutomationObject& server)
        : server_(server) {}
    void Put(std::string_view member, const Variant& value) override { server_.Put(member, value); }
    Variant Call(std::string_view member) override { return server_.Call(member); }
    Variant Call(std::string_view member, const Variant& argument) override { return server_.Call(member, argument); }
    Variant CallByRef(std::string_view member, Variant& argument) override {
        return server_.CallByRef(member, argument);
    }

private:
    AutomationObject& server_;
};

}  // namespace

std::string CompareWithRecord(const std::string& path, AutomationObject& server, ComparisonModel& model) {
    std::string problem;
    auto record = RecordReader::Open(path, problem);
    if (!record) {
        return problem;
    }
    return Replay(
               *record, [&server] { return std::make_unique<Lent>(server); }, nullptr, model)
        .problem;
}

}  // namespace vantrel
