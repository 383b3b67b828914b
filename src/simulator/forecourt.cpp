#include "forecourt.h"

#include "answer_text.h"
#include "block_parser.h"

#include <algorithm>

namespace vantrel::simulation {

std::int64_t ParseAmount(TextView text) {
    const std::size_t point = text.find(u'.');
    const TextView whole = text.substr(0, point);
    const TextView fraction = point == TextView::npos ? TextView() : text.substr(point + 1);
    const auto units = ParseDigits(whole, 1, 7);
    if (!units || (point != TextView::npos && (fraction.empty() || fraction.size() > 2))) {
        return -1;
    }
    const auto part = fraction.empty() ? std::optional<std::int64_t>(0) : ParseDigits(fraction, 1, 2);
    if (!part) {
        return -1;
    }
    return *units * 100 + (fraction.size() == 1 ? *part * 10 : *part);
}

Traffic::Traffic(std::uint32_t seed)
    : random_(seed) {}

void Traffic::Switch(bool on, Milliseconds now) {
    if (on && !on_) {
        next_ = now + Milliseconds(1000);
    }
    on_ = on;
}

Text Traffic::Digits(int count) {
    Text digits;
    for (int i = 0; i < count; ++i) {
        digits.push_back(static_cast<char16_t>(u'0' + Pick(10)));
    }
    return digits;
}

void Traffic::Act(Forecourt& forecourt, Milliseconds now) {
    next_ = now + Milliseconds(2000 + Pick(6000));
    // Customers who are done hang up first, and those waiting at an
    // authorized pump lift their nozzle.
    for (int number = 1; number <= kPositions; ++number) {
        FuelingPosition& position = forecourt.position(number);
        if (position.nozzleUp() && position.state() == PositionState::Finished) {
            (void)forecourt.Hang(number);
            return;
        }
        if (!position.nozzleUp() && position.state() == PositionState::Authorized) {
            int hose = 1;
            while (hose < position.hoses() && !position.Allows(hose)) {
                ++hose;
            }
            (void)forecourt.Lift(number, hose);
            return;
        }
    }
    const int number = 1 + Pick(kPositions);
    FuelingPosition& position = forecourt.position(number);
    switch (Pick(10)) {
    case 0:
    case 1:
    case 2:
    case 3:
        if (position.nozzleUp()) {
            (void)forecourt.Hang(number);  // nobody came to authorize
        } else {
            (void)forecourt.Lift(number, 1 + Pick(position.hoses()));
        }
        break;
    case 4:
    case 5: (void)forecourt.SwipeCard(number, u";4000" + Digits(12) + u"=2512?"); break;
    case 6: (void)forecourt.PressKeys(number, Digits(4)); break;
    case 7: (void)forecourt.InsertCash(number, Ascii(std::to_string(5 * (1 + Pick(10))) + ".00")); break;
    case 8: (void)forecourt.SendPacket(number, u"C\x10\x07"); break;
    default: {
        const Text code = forecourt.carWash.UnusedCode();
        if (!code.empty()) {
            (void)forecourt.EnterWashCode(code);
        }
    }
    }
}

Forecourt::Forecourt() {
    positions_.reserve(kPositions);
    readers_.reserve(kPositions);
    for (int number = 1; number <= kPositions; ++number) {
        positions_.emplace_back(number, queues);
        readers_.emplace_back(number);
    }
}

void Forecourt::MoveFuel(Milliseconds to) {
    if (to <= now_) {
        return;
    }
    for (FuelingPosition& position : positions_) {
        const Delivery delivered = position.AdvanceTo(to);
        if (delivered.microlitres > 0) {
            tanks.Draw(TankOfHose(delivered.hose), delivered.microlitres);
        }
    }
    now_ = to;
}

void Forecourt::AdvanceTo(Milliseconds now) {
    if (now <= now_) {
        return;
    }
    // Traffic that fell far behind (a long pause of the real clock) starts
    // again from the last hour rather than replaying every event.
    if (traffic.on() && now - traffic.dueAt() > Milliseconds(3'600'000)) {
        traffic.Switch(false, now);
        traffic.Switch(true, now - Milliseconds(3'600'000));
    }
    while (true) {
        const Milliseconds due = std::min(tanks.dueAt(), traffic.dueAt());
        if (due > now) {
            break;
        }
        MoveFuel(due);
        if (tanks.dueAt() <= due) {
            tanks.Complete();
        }
        if (traffic.dueAt() <= due) {
            traffic.Act(*this, due);
        }
    }
    MoveFuel(now);
}

std::string Forecourt::CheckPosition(int position) {
    if (position < 1 || position > kPositions) {
        return "there is no fueling position " + std::to_string(position) + " (1 to 32)";
    }
    return {};
}

std::string Forecourt::Lift(int number, int hose) {
    if (std::string problem = CheckPosition(number); !problem.empty()) {
        return problem;
    }
    return position(number).Lift(hose);
}

std::string Forecourt::Hang(int number) {
    if (std::string problem = CheckPosition(number); !problem.empty()) {
        return problem;
    }
    return position(number).Hang();
}

std::string Forecourt::SwipeCard(int number, TextView data) {
    if (std::string problem = CheckPosition(number); !problem.empty()) {
        return problem;
    }
    if (data.empty()) {
        return "a card needs track data";
    }
    if (!queues.AddCard(position(number).positionText(), data)) {
        return "the card queue is full";
    }
    reader(number).CardSwiped(preloaded);
    return {};
}

std::string Forecourt::PressKeys(int number, TextView keys) {
    if (std::string problem = CheckPosition(number); !problem.empty()) {
        return problem;
    }
    if (keys.empty()) {
        return "no keys to press";
    }
    ReaderTerminal& terminal = reader(number);
    const Text mode = terminal.entryMode();
    if (!queues.AddKeys(position(number).positionText(), mode, terminal.KeyEntry(keys))) {
        return "the key queue is full";
    }
    return {};
}

std::string Forecourt::InsertCash(int number, TextView amount) {
    if (std::string problem = CheckPosition(number); !problem.empty()) {
        return problem;
    }
    const std::int64_t cents = ParseAmount(amount);
    if (cents <= 0) {
        return Quoted(amount) + " is no amount of cash (20.00, 5, 0.50)";
    }
    if (!queues.AddCash(position(number).positionText(), cents)) {
        return "the cash queue is full";
    }
    return {};
}

std::string Forecourt::SendPacket(int number, TextView data) {
    if (std::string problem = CheckPosition(number); !problem.empty()) {
        return problem;
    }
    // The packet block states its count in three digits, which is all the
    // console reads: a terminal sends no packet it could not state.
    if (data.size() > kMaxPacket) {
        return "a terminal packet holds at most " + std::to_string(kMaxPacket) + " characters, not " +
               std::to_string(data.size());
    }
    if (!queues.AddPacket(position(number).positionText(), data)) {
        return "the packet queue is full";
    }
    return {};
}

std::string Forecourt::EnterWashCode(TextView code) { return carWash.EnterCode(code, now_); }

std::optional<int> Forecourt::PositionOf(TextView text) {
    const auto number = ParseDigits(text, 2, 2);
    if (!number || *number < 1 || *number > kPositions) {
        return std::nullopt;
    }
    return static_cast<int>(*number);
}

std::string Forecourt::StopAt(TextView value) {
    if (value == u"0") {
        for (FuelingPosition& each : positions_) {
            each.Stop();
        }
        return {};
    }
    const auto number = PositionOf(value);
    if (!number) {
        return Quoted(value) + " is not a fueling position (01 to 32, or 0 for all)";
    }
    position(*number).Stop();
    return {};
}

std::string Forecourt::ResumeAt(TextView value) {
    const auto number = PositionOf(value);
    return number ? position(*number).Resume() : Quoted(value) + " is not a fueling position (01 to 32)";
}

std::string Forecourt::DeauthorizeAt(TextView value) {
    const auto number = PositionOf(value);
    return number ? position(*number).Deauthorize() : Quoted(value) + " is not a fueling position (01 to 32)";
}

std::string Forecourt::PayOutAt(TextView value) {
    const auto number = PositionOf(value);
    return number ? position(*number).PayOut() : Quoted(value) + " is not a fueling position (01 to 32)";
}

std::string Forecourt::ReceivePacketBlock(TextView block) {
    const PacketParse parsed = ParsePacketBlock(block);
    if (!parsed.problem.empty()) {
        return parsed.problem;
    }
    const auto number = PositionOf(parsed.packet.position);
    if (!number) {
        return "ReaderPosition=" + Readable(parsed.packet.position) + " is not a fueling position (01 to 32)";
    }
    return reader(*number).ReceivePacket(parsed.packet.data);
}

}  // namespace vantrel::simulation
