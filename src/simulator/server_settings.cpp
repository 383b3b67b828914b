#include "server_settings.h"

#include "answer_text.h"

namespace vantrel::simulation {

int PreloadedMessages::Loaded(const std::array<PreloadedMessage, kNumbers>& kind) const {
    int loaded = 0;
    for (const PreloadedMessage& message : kind) {
        loaded += message.loaded ? 1 : 0;
    }
    return loaded;
}

void ServerSettings::SetLink(int port, int baud, TextView logFile) {
    port_ = port;
    baud_ = baud;
    logFile_.assign(logFile);
}

void ServerSettings::StartDiagnostics(Milliseconds now) {
    diagnosticsUntil_ = now + Milliseconds(3000);
    ++diagnosticsRuns_;
}

Text ServerSettings::Versions() const {
    AnswerText answer;
    answer.Add("Application", "Vantrel.Application 10.29 (built-in simulator)")
        .Add("Link", "COM" + std::to_string(port_) + " " + std::to_string(baud_) + " baud")
        .Add("LogFile", logFile_)
        .Add("FuelingPositions", 32)
        .Add("Dispensers", "Simulated dispenser 4.02")
        .Add("Readers", "Simulated reader terminal 2.17")
        .Add("CarWash", "Simulated car wash 1.30")
        .Add("PriceSign", "Simulated price sign 1.05")
        .Add("TankMonitor", "Simulated tank monitor 3.11")
        .Add("Window", windowVisible_ ? "Visible" : "Hidden")
        .Add("DiagnosticsRuns", diagnosticsRuns_);
    return answer.Take();
}

}  // namespace vantrel::simulation
