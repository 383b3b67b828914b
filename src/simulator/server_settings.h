#pragma once

#include "clock.h"
#include "server/text.h"

#include <array>
#include <cstdint>
#include <string>

namespace vantrel::simulation {

class BlockReader;

struct PreloadedMessage {
    bool loaded = false;
    int section = 0;
    Text text;
};

// The numbered messages loaded ahead of their use, shared by all terminals.
struct PreloadedMessages {
    static constexpr int kNumbers = 9;
    std::array<PreloadedMessage, kNumbers> card;
    std::array<PreloadedMessage, kNumbers> printer;

    int Loaded(const std::array<PreloadedMessage, kNumbers>& kind) const;
    // A PreloadDisplayMessage block; a problem stays in the reader.
    void Read(BlockReader& block);
};

// What belongs to the server itself: its window, its link to the forecourt,
// its help file and its self diagnostics.
class ServerSettings {
public:
    void SetWindowVisible(bool visible) { windowVisible_ = visible; }
    bool windowVisible() const { return windowVisible_; }
    void SetLink(int port, int baud, TextView logFile);
    void OpenHelp() { ++helpOpened_; }
    std::int64_t helpOpened() const { return helpOpened_; }

    // Self diagnostics run for three seconds.
    void StartDiagnostics(Milliseconds now);
    bool DiagnosticsBusy(Milliseconds now) const { return diagnosticsUntil_ > now; }

    Text Versions() const;

    // The WindowControl and SerialPortParameters blocks; a problem stays in
    // the reader.
    void ReadWindowControl(BlockReader& block);
    void ReadSerialPort(BlockReader& block);

private:
    bool windowVisible_ = false;
    int port_ = 1;
    int baud_ = 9600;
    Text logFile_;
    std::int64_t helpOpened_ = 0;
    Milliseconds diagnosticsUntil_{0};
    std::int64_t diagnosticsRuns_ = 0;
};

}  // namespace vantrel::simulation
