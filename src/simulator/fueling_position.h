#pragma once

#include "clock.h"
#include "error_sink.h"
#include "server/text.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace vantrel::simulation {

class BlockReader;

inline constexpr int kPositions = 32;
inline constexpr int kMaxHoses = 8;
inline constexpr int kTanks = 4;

enum class PositionState {
    Idle,
    Authorized,
    Fueling,
    Stopped,
    Finished,  // the sale waits to be paid out
};

std::string_view StateName(PositionState state);

// Which tank a hose draws from, 0 to kTanks - 1.
int TankOfHose(int hose);
std::string_view ProductOfTank(int tank);

// One hose group of a price block, already checked.
struct HosePrice {
    int hose = 0;
    std::int64_t tier1 = 0;  // thousandths of the currency a litre: 1459 is 1.459
    std::int64_t tier2 = 0;
    int blend = -1;  // percent; -1 when the block had no Blend= line
};

// What a sale delivered in one step of time, for the tanks.
struct Delivery {
    int hose = 0;
    std::int64_t microlitres = 0;
};

// One fueling position: a dispenser with up to eight hoses and its sale. Fuel
// flows at 0.6 litres a second, and at 0.1 litres a second over the last part
// of the sale that the slow-down point sets (the slow-down point is money
// before the limit, in cents). A sale ends by itself at its limit, or when the
// car's tank is full.
class FuelingPosition {
public:
    FuelingPosition(int number, ErrorSink& errors);

    int number() const { return number_; }
    PositionState state() const { return state_; }
    bool nozzleUp() const { return nozzleUp_; }
    int liftedHose() const { return liftedHose_; }
    int hoses() const { return hoseCount_; }
    const Text& positionText() const { return positionText_; }
    // Whether the authorization lets this hose deliver.
    bool Allows(int hose) const {
        return hose >= 1 && hose <= kMaxHoses && ((authorization_.allowed >> (hose - 1)) & 1u);
    }

    // Moves a running sale on to the time given.
    Delivery AdvanceTo(Milliseconds now);

    // Commands. Each returns an empty text when done, else the reason why
    // not, which the caller puts into the error queue.
    std::string Authorize(TextView hose, TextView mop, TextView limit);
    std::string SetPrices(std::int64_t slowdownCents, const HosePrice* prices, int count);
    // A stop of a position that has nothing to stop is harmless.
    void Stop();
    std::string Resume();
    std::string Deauthorize();
    std::string PayOut();

    // The blocks of the members that drive a position, read after their
    // "FuelingPosition=" line. A problem with the block stays in the reader;
    // otherwise what the command said.
    std::string ReadAuthorize(BlockReader& block);  // Authorize
    std::string ReadPrices(BlockReader& block);     // Price

    // Forecourt events; a refusal is the technician's mistake, not the
    // controller's, so it goes back to whoever asked.
    std::string Lift(int hose);
    std::string Hang();

    Text Information() const;
    Text DispenserInformation() const;

    // Volume and amount of the sale shown now (0 when there is none).
    std::int64_t saleMicrolitres() const { return sale_.microlitres; }
    std::int64_t saleCents() const;

private:
    struct Hose {
        bool priced = false;
        std::int64_t tier1 = 0;
        std::int64_t tier2 = 0;
        int blend = -1;
        std::int64_t totalMicrolitres = 0;
    };
    struct Authorization {
        Text hoseText;
        unsigned allowed = 0;  // bit h - 1 for hose h
        char16_t mop = u'F';
        Text limitText;
        std::int64_t limitCents = 0;
        bool fillUp = false;
    };
    struct Sale {
        int hose = 0;
        std::int64_t unitPrice = 0;
        std::int64_t microlitres = 0;
        std::int64_t endMicrolitres = 0;
        std::int64_t slowFromMicrolitres = 0;
    };
    struct LastSale {
        int hose = 0;
        std::int64_t microlitres = 0;
        std::int64_t cents = 0;
    };

    std::string StartSaleIfReady();
    void EndSale();
    std::string Where() const;

    int number_;
    Text positionText_;
    ErrorSink& errors_;
    PositionState state_ = PositionState::Idle;
    bool nozzleUp_ = false;
    int liftedHose_ = 0;
    int hoseCount_ = 4;
    std::int64_t slowdownCents_ = 15;
    std::array<Hose, kMaxHoses> hoses_{};
    Authorization authorization_;
    Sale sale_;
    LastSale last_;
    int sales_ = 0;
    Milliseconds now_{0};
};

}  // namespace vantrel::simulation
