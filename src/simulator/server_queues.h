#pragma once

#include "error_sink.h"
#include "server/text.h"

#include <cstdint>
#include <deque>
#include <string>

namespace vantrel::simulation {

// The server's queues of events from the forecourt: cards, keys, cash,
// packets from the terminals, and the errors it could not act on. Reads look
// at the oldest entry; the clear members take it away.
class EventQueues final : public ErrorSink {
public:
    static constexpr std::size_t kCapacity = 100;

    // Forecourt side; false when that queue is full.
    bool AddCard(const Text& position, TextView data);
    bool AddKeys(const Text& position, TextView mode, TextView keys);
    bool AddCash(const Text& position, std::int64_t cents);
    bool AddPacket(const Text& position, TextView data);

    // The error queue keeps the newest kCapacity entries and counts the rest.
    void Report(std::string_view source, const std::string& message) override;

    Text CardAnswer() const { return Front(cards_); }
    Text KeyAnswer() const { return Front(keys_); }
    Text CashAnswer() const { return Front(cash_); }
    Text PacketAnswer() const { return Front(packets_); }
    Text ErrorAnswer() const;
    Text CountAnswer() const;

    // Each returns how many entries are left in that queue.
    int ClearTopCard() { return PopFront(cards_); }
    int ClearTopKey() { return PopFront(keys_); }
    int ClearTopCash() { return PopFront(cash_); }
    int ClearTopPacket() { return PopFront(packets_); }
    int ClearErrors();

    std::size_t cards() const { return cards_.size(); }
    std::size_t keys() const { return keys_.size(); }
    std::size_t cash() const { return cash_.size(); }
    std::size_t packets() const { return packets_.size(); }
    std::size_t errors() const { return errors_.size(); }
    const std::deque<Text>& errorEntries() const { return errors_; }

private:
    static Text Front(const std::deque<Text>& queue) { return queue.empty() ? Text() : queue.front(); }
    static int PopFront(std::deque<Text>& queue);
    static bool Push(std::deque<Text>& queue, Text entry);

    // Each entry is the answer text of its read, made when it arrived.
    std::deque<Text> cards_;
    std::deque<Text> keys_;
    std::deque<Text> cash_;
    std::deque<Text> packets_;
    std::deque<Text> errors_;
    std::int64_t errorsLost_ = 0;
};

// "ReaderPosition=NN" CR LF "PacketCount=NNN" CR LF "PacketData=" data CR LF
// NUL: the header is 47 characters while the count fits three digits.
Text PacketBlockText(const Text& position, TextView data);

}  // namespace vantrel::simulation
