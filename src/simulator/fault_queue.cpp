#include "fault_queue.h"

namespace vantrel::simulation {

void FaultQueue::QueueAnswer(MemberId member, Variant answer) {
    outcomes_[member].push_back(std::move(answer));
    ++pending_;
}

void FaultQueue::QueueFailure(MemberId member, RuntimeError error) {
    outcomes_[member].push_back(std::move(error));
    ++pending_;
}

void FaultQueue::QueueDelay(MemberId member, Milliseconds delay) {
    delays_[member].push_back(delay);
    ++pending_;
}

Milliseconds FaultQueue::TakeDelay(MemberId member) {
    auto& delays = delays_[member];
    if (delays.empty()) {
        return Milliseconds(0);
    }
    const Milliseconds delay = delays.front();
    delays.pop_front();
    --pending_;
    return delay;
}

bool FaultQueue::TakeOutcome(MemberId member, Variant& answer) {
    auto& outcomes = outcomes_[member];
    if (outcomes.empty()) {
        return false;
    }
    Outcome outcome = std::move(outcomes.front());
    outcomes.pop_front();
    --pending_;
    if (const auto* error = std::get_if<RuntimeError>(&outcome)) {
        throw *error;
    }
    answer = std::get<Variant>(std::move(outcome));
    return true;
}

namespace {

std::string DescribeAnswer(const Variant& answer) {
    switch (answer.kind()) {
    case Variant::Kind::Text: {
        const Text& text = answer.text();
        if (text.empty()) {
            return "answers an empty text";
        }
        if (text.size() > 80) {
            return "answers a text of " + std::to_string(text.size()) + " characters";
        }
        return "answers \"" + Escaped(text) + "\"";
    }
    case Variant::Kind::Int16: return "answers the number " + std::to_string(answer.int16());
    case Variant::Kind::Int32: return "answers the number " + std::to_string(answer.int32());
    default: return "answers a value";
    }
}

}  // namespace

std::vector<std::string> FaultQueue::Describe() const {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < Members().size(); ++i) {
        const std::string name(Info(i).name);
        for (const Milliseconds delay : delays_[i]) {
            lines.push_back(name + ": late by " + std::to_string(delay.count()) + " ms");
        }
        for (const Outcome& outcome : outcomes_[i]) {
            if (const auto* error = std::get_if<RuntimeError>(&outcome)) {
                lines.push_back(name + ": fails with " + std::to_string(error->number()) + " \"" +
                                error->description() + "\"");
            } else {
                lines.push_back(name + ": " + DescribeAnswer(std::get<Variant>(outcome)));
            }
        }
    }
    return lines;
}

Text HugeText(std::size_t length) {
    static const Text kLine = [] {
        Text line = u"Filler=";
        line.append(80 - line.size() - 2, u'X');
        return line + u"\r\n";
    }();
    Text text;
    text.reserve(length);
    while (text.size() + kLine.size() <= length) {
        text += kLine;
    }
    text.append(kLine, 0, length - text.size());
    return text;
}

}  // namespace vantrel::simulation
