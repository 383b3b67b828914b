#pragma once

#include "block_reader.h"
#include "clock.h"
#include "fueling_position.h"
#include "server/text.h"
#include "server/variant.h"

#include <array>
#include <cstdint>
#include <limits>
#include <string>

namespace vantrel::simulation {

// The price sign by the road: five price lines and a display intensity.
class PriceSign {
public:
    PriceSign();
    // One PriceSignDataSend block; an empty text when accepted.
    std::string Send(BlockReader& block);
    Text Read() const;

private:
    std::array<Text, 5> lines_;
    Text intensity_ = u"M05";
    std::int64_t updates_ = 0;
};

// The tank monitor: four tanks that the hoses draw from. A report takes five
// seconds of simulated time and shows the tanks as they were when it ended.
class TankMonitor {
public:
    TankMonitor();

    void Draw(int tank, std::int64_t microlitres);
    // A report that is already running is started afresh.
    void Start(Milliseconds now);
    // TankMonitorStartReport: the number 1 starts a report; anything else
    // is refused with the reason.
    std::string ReadStart(const Variant& value, Milliseconds now);
    // When a running report ends; the largest time when none runs.
    Milliseconds dueAt() const { return busy_ ? completesAt_ : Milliseconds::max(); }
    void Complete();

    Text Status() const;
    Text Report() const { return report_; }
    std::int64_t microlitres(int tank) const { return tanks_[static_cast<std::size_t>(tank)].microlitres; }

private:
    struct Tank {
        std::int64_t microlitres = 0;
        std::int64_t capacity = 0;
        int waterMillimetres = 0;
        int temperatureTenths = 0;
    };
    std::array<Tank, kTanks> tanks_;
    bool started_ = false;
    bool busy_ = false;
    Milliseconds completesAt_{0};
    Text report_;
};

}  // namespace vantrel::simulation
