#include "server_queues.h"

#include "answer_text.h"
#include "server/command_block.h"

namespace vantrel::simulation {

Text PacketBlockText(const Text& position, TextView data) {
    CommandBlock block;
    block.AddLine(u"ReaderPosition=" + position)
        .AddLine(u"PacketCount=" + ZeroPad(static_cast<std::int64_t>(data.size()), 3))
        .Append(u"PacketData=")
        .Append(data)
        .AddLine(u"")
        .Terminate();
    return block.Text();
}

bool EventQueues::Push(std::deque<Text>& queue, Text entry) {
    if (queue.size() >= kCapacity) {
        return false;
    }
    queue.push_back(std::move(entry));
    return true;
}

int EventQueues::PopFront(std::deque<Text>& queue) {
    if (!queue.empty()) {
        queue.pop_front();
    }
    return static_cast<int>(queue.size());
}

bool EventQueues::AddCard(const Text& position, TextView data) {
    return Push(cards_, AnswerText().Add("ReaderPosition", position).Add("CardData", data).Take());
}

bool EventQueues::AddKeys(const Text& position, TextView mode, TextView keys) {
    return Push(keys_, AnswerText().Add("ReaderPosition", position).Add("EntryMode", mode).Add("KeyData", keys).Take());
}

bool EventQueues::AddCash(const Text& position, std::int64_t cents) {
    return Push(cash_, AnswerText().Add("ReaderPosition", position).Add("Amount", Money(cents)).Take());
}

bool EventQueues::AddPacket(const Text& position, TextView data) {
    return Push(packets_, PacketBlockText(position, data));
}

void EventQueues::Report(std::string_view source, const std::string& message) {
    if (errors_.size() >= kCapacity) {
        errors_.pop_front();
        ++errorsLost_;
    }
    // One line whatever the message quoted: the entry goes into an answer.
    errors_.push_back(OneLine(FromUtf8(std::string(source) + ": " + message), 400));
}

int EventQueues::ClearErrors() {
    errors_.clear();
    errorsLost_ = 0;
    return 0;
}

Text EventQueues::ErrorAnswer() const {
    AnswerText answer;
    answer.Add("ErrorCount", static_cast<std::int64_t>(errors_.size()));
    if (errorsLost_ > 0) {
        answer.Add("ErrorsLost", errorsLost_);
    }
    for (const Text& entry : errors_) {
        answer.Add("Error", entry);
    }
    return answer.Take();
}

Text EventQueues::CountAnswer() const {
    return AnswerText()
        .Add("CardQue", static_cast<std::int64_t>(cards_.size()))
        .Add("KeyQue", static_cast<std::int64_t>(keys_.size()))
        .Add("CashInQue", static_cast<std::int64_t>(cash_.size()))
        .Add("ErrorQue", static_cast<std::int64_t>(errors_.size()))
        .Add("PacketQue", static_cast<std::int64_t>(packets_.size()))
        .Take();
}

}  // namespace vantrel::simulation
