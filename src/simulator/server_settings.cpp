#include "server_settings.h"

#include "answer_text.h"
#include "block_reader.h"

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

namespace {

// The rest of a message: its last line's CR LF ends the block, not the text.
TextView WithoutLastLineEnd(TextView message) {
    if (message.ends_with(u"\r\n")) {
        message.remove_suffix(2);
    }
    return message;
}

}  // namespace

void PreloadedMessages::Read(BlockReader& block) {
    const auto section = block.Number("Section", 1, 1, 1);
    const auto type = block.Take("MessageType");
    if (type && *type != u"Card" && *type != u"Printer") {
        block.Fail("MessageType=" + Readable(*type) + " is neither Card nor Printer");
    }
    const auto number = block.Number("MessageNumber", 1, 1, kNumbers);
    if (block.ok() && *number == 0) {
        block.Fail("MessageNumber=0: messages are numbered from 1");
    }
    block.Take("Message");
    if (block.ok()) {
        auto& kind = *type == u"Card" ? card : printer;
        PreloadedMessage& slot = kind[static_cast<std::size_t>(*number - 1)];
        slot.loaded = true;
        slot.section = static_cast<int>(*section);
        slot.text.assign(WithoutLastLineEnd(block.RestFromLastLine()));
    }
}

void ServerSettings::ReadWindowControl(BlockReader& block) {
    const BlockLine* line = block.TakeAny();
    const bool visible = line && line->kind == BlockLine::Kind::Word && line->key == u"Visible";
    const bool hide = line && line->kind == BlockLine::Kind::Word && line->key == u"Hide";
    if (block.ok() && !visible && !hide) {
        block.Fail(line ? Quoted(line->text) + " is neither Visible nor Hide"
                        : "the block holds neither Visible nor Hide");
    }
    block.ExpectEnd();
    if (block.ok()) {
        SetWindowVisible(visible);
    }
}

void ServerSettings::ReadSerialPort(BlockReader& block) {
    const auto port = block.NextIs("PortNumber") ? block.Number("PortNumber", 1, 1, 4) : 1;
    if (block.ok() && *port == 0) {
        block.Fail("PortNumber=0: ports are numbered 1 to 4");
    }
    std::int64_t baud = 9600;
    while (block.ok() && block.NextIs("BaudRate")) {
        const auto rate = block.Number("BaudRate", 4, 5, 19200);
        if (block.ok() && *rate != 2400 && *rate != 4800 && *rate != 9600 && *rate != 19200) {
            block.Fail("BaudRate=" + std::to_string(*rate) + " is not 2400, 4800, 9600 or 19200");
        }
        baud = rate.value_or(baud);
    }
    const auto logFile = block.Take("LogFileName");
    block.ExpectEnd();
    if (block.ok()) {
        SetLink(static_cast<int>(*port), static_cast<int>(baud), *logFile);
    }
}

}  // namespace vantrel::simulation
