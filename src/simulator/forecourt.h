#pragma once

#include "car_wash_bay.h"
#include "clock.h"
#include "server_queues.h"
#include "fueling_position.h"
#include "reader_terminal.h"
#include "server_settings.h"
#include "site_devices.h"

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace vantrel::simulation {

class Forecourt;

// The automatic mode: random but plausible traffic. About every five seconds
// of simulated time one thing happens: a customer lifts a nozzle at an
// authorized or idle position, hangs up after a finished sale, swipes a card,
// types a PIN, inserts a note, a terminal sends a packet, or a driver enters a
// code at the car wash. The same seed gives the same traffic.
class Traffic {
public:
    explicit Traffic(std::uint32_t seed = 1029);

    void Switch(bool on, Milliseconds now);
    bool on() const { return on_; }
    Milliseconds dueAt() const { return on_ ? next_ : Milliseconds::max(); }
    void Act(Forecourt& forecourt, Milliseconds now);

private:
    int Pick(int count) { return static_cast<int>(random_() % static_cast<std::uint32_t>(count)); }
    Text Digits(int count);

    std::mt19937 random_;
    bool on_ = false;
    Milliseconds next_{0};
};

// Everything the controller drives: 32 fueling positions with their reader
// terminals, the queues, the car wash, the price sign, the tank monitor and
// the server's own settings, all on one time line.
class Forecourt {
public:
    Forecourt();
    Forecourt(const Forecourt&) = delete;
    Forecourt& operator=(const Forecourt&) = delete;

    // Moves sales, reports and automatic traffic on, in time order.
    void AdvanceTo(Milliseconds now);
    Milliseconds now() const { return now_; }

    // A number 1 to 32 of a position that exists; the caller checks.
    FuelingPosition& position(int number) { return positions_[static_cast<std::size_t>(number - 1)]; }
    const FuelingPosition& position(int number) const { return positions_[static_cast<std::size_t>(number - 1)]; }
    ReaderTerminal& reader(int number) { return readers_[static_cast<std::size_t>(number - 1)]; }

    // Forecourt events. Each returns an empty text when it happened, else
    // why it cannot happen (a position out of range, no nozzle lifted ...).
    std::string Lift(int position, int hose);
    std::string Hang(int position);
    std::string SwipeCard(int position, TextView data);
    std::string PressKeys(int position, TextView keys);
    std::string InsertCash(int position, TextView amount);
    // At most kMaxPacket characters: the count field has three digits.
    static constexpr std::size_t kMaxPacket = 999;
    std::string SendPacket(int position, TextView data);
    std::string EnterWashCode(TextView code);

    // Members addressed by a bare position text ("07"), or by a packet
    // block: an empty text when done, else why not.
    std::string StopAt(TextView position);  // "0" stops every position
    std::string ResumeAt(TextView position);
    std::string DeauthorizeAt(TextView position);
    std::string PayOutAt(TextView position);
    std::string ReceivePacketBlock(TextView block);  // PacketQueOutput

    EventQueues queues;
    CarWash carWash;
    PriceSign priceSign;
    TankMonitor tanks;
    ServerSettings settings;
    PreloadedMessages preloaded;
    Traffic traffic;

private:
    void MoveFuel(Milliseconds to);
    static std::string CheckPosition(int position);
    // The position of a bare two-digit text, or nothing.
    static std::optional<int> PositionOf(TextView text);

    std::vector<FuelingPosition> positions_;
    std::vector<ReaderTerminal> readers_;
    Milliseconds now_{0};
};

// "20.00", "5", "0.50": whole units with up to two decimals, in cents; -1
// when the text is no amount.
std::int64_t ParseAmount(TextView text);

}  // namespace vantrel::simulation
