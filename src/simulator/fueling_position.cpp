#include "fueling_position.h"

#include "answer_text.h"
#include "block_parser.h"
#include "server/command_block.h"
#include "block_reader.h"

#include <algorithm>

namespace vantrel::simulation {

namespace {

constexpr std::int64_t kFastFlow = 600;  // microlitres a millisecond: 0.6 litres a second
constexpr std::int64_t kSlowFlow = 100;
constexpr std::int64_t kLitre = 1'000'000;
// cents = microlitres * thousandths / kCentDivisor
constexpr std::int64_t kCentDivisor = 10'000'000;

struct DefaultHose {
    std::int64_t tier1;
    std::int64_t tier2;
};
constexpr std::array<DefaultHose, 4> kDefaultPrices{{{1459, 1439}, {1529, 1509}, {1619, 1599}, {1389, 1369}}};

std::int64_t CeilDivide(std::int64_t value, std::int64_t divisor) { return (value + divisor - 1) / divisor; }

}  // namespace

std::string_view StateName(PositionState state) {
    switch (state) {
    case PositionState::Idle: return "Idle";
    case PositionState::Authorized: return "Authorized";
    case PositionState::Fueling: return "Fueling";
    case PositionState::Stopped: return "Stopped";
    case PositionState::Finished: return "Finished";
    }
    return "Idle";
}

int TankOfHose(int hose) { return (hose - 1) % kTanks; }

std::string_view ProductOfTank(int tank) {
    static constexpr std::array<std::string_view, kTanks> kProducts{"Unleaded", "Super", "SuperPlus", "Diesel"};
    return kProducts[static_cast<std::size_t>(tank % kTanks)];
}

FuelingPosition::FuelingPosition(int number, ErrorSink& errors)
    : number_(number)
    , positionText_(PositionText(number))
    , errors_(errors) {
    for (std::size_t i = 0; i < hoses_.size(); ++i) {
        // Meter readings of a dispenser that has seen some years of work.
        hoses_[i].totalMicrolitres = (100'000 + number * 1'000 + static_cast<std::int64_t>(i) * 10) * kLitre;
        if (i < kDefaultPrices.size()) {
            hoses_[i].priced = true;
            hoses_[i].tier1 = kDefaultPrices[i].tier1;
            hoses_[i].tier2 = kDefaultPrices[i].tier2;
        }
    }
}

std::string FuelingPosition::Where() const { return "position " + ToUtf8(positionText_); }

Delivery FuelingPosition::AdvanceTo(Milliseconds now) {
    Delivery delivered;
    std::int64_t remaining = (now - now_).count();
    now_ = std::max(now_, now);
    if (state_ != PositionState::Fueling || remaining <= 0) {
        return delivered;
    }
    const std::int64_t before = sale_.microlitres;
    if (sale_.microlitres < sale_.slowFromMicrolitres) {
        const std::int64_t needed = CeilDivide(sale_.slowFromMicrolitres - sale_.microlitres, kFastFlow);
        if (remaining < needed) {
            sale_.microlitres += remaining * kFastFlow;
            remaining = 0;
        } else {
            sale_.microlitres = sale_.slowFromMicrolitres;
            remaining -= needed;
        }
    }
    if (remaining > 0) {
        const std::int64_t needed = CeilDivide(sale_.endMicrolitres - sale_.microlitres, kSlowFlow);
        if (remaining < needed) {
            sale_.microlitres += remaining * kSlowFlow;
        } else {
            sale_.microlitres = sale_.endMicrolitres;
            state_ = PositionState::Finished;
        }
    }
    delivered.hose = sale_.hose;
    delivered.microlitres = sale_.microlitres - before;
    hoses_[static_cast<std::size_t>(sale_.hose - 1)].totalMicrolitres += delivered.microlitres;
    return delivered;
}

std::int64_t FuelingPosition::saleCents() const {
    if (sale_.hose == 0) {
        return 0;
    }
    std::int64_t cents = sale_.microlitres * sale_.unitPrice / kCentDivisor;
    if (!authorization_.fillUp) {
        cents = std::min(cents, authorization_.limitCents);
    }
    return cents;
}

std::string FuelingPosition::Authorize(TextView hose, TextView mop, TextView limit) {
    if (state_ != PositionState::Idle && state_ != PositionState::Authorized) {
        return Where() + " is " + std::string(StateName(state_)) + "; only an idle position can be authorized";
    }
    Authorization next;
    next.hoseText = Text(hose);
    const unsigned fitted = (1u << hoseCount_) - 1u;
    if (!hose.empty() && hose[0] == u'M') {
        const TextView mask = hose.substr(1);
        if (mask.size() != kMaxHoses || mask.find_first_not_of(u"01") != TextView::npos) {
            return "Hose=" + Readable(hose) + " is no hose mask (M and eight digits 0 or 1, hose 1 rightmost)";
        }
        for (std::size_t i = 0; i < mask.size(); ++i) {
            if (mask[mask.size() - 1 - i] == u'1') {
                next.allowed |= 1u << i;
            }
        }
        next.allowed &= fitted;
        if (next.allowed == 0) {
            return "Hose=" + Readable(hose) + " allows none of the " + std::to_string(hoseCount_) + " hoses of " +
                   Where();
        }
    } else {
        const auto number = ParseDigits(hose, 1, 2);
        if (!number || *number > kMaxHoses) {
            return "Hose=" + Readable(hose) + " is not a hose (0 for any, 1 to 8, or a mask M00000101)";
        }
        if (*number > hoseCount_) {
            return "Hose=" + Readable(hose) + ": " + Where() + " has " + std::to_string(hoseCount_) + " hoses";
        }
        next.allowed = *number == 0 ? fitted : 1u << (*number - 1);
    }
    if (mop.size() != 1 || (mop[0] != u'1' && mop[0] != u'2' && mop[0] != u'F' && mop[0] != u'f')) {
        return "MOP=" + Readable(mop) + " is not a method of payment (1, 2 or F)";
    }
    next.mop = mop[0] == u'f' ? u'F' : mop[0];
    const auto cents = ParseDigits(limit, 1, 6);
    if (!cents || *cents == 0) {
        return "Limit=" + Readable(limit) + " is not a limit (1 to 6 digits, in cents, not 0)";
    }
    next.limitText = Text(limit);
    next.limitCents = *cents;
    next.fillUp = *cents == 999999;
    authorization_ = std::move(next);
    state_ = PositionState::Authorized;
    return StartSaleIfReady();
}

std::string FuelingPosition::StartSaleIfReady() {
    if (state_ != PositionState::Authorized || !nozzleUp_) {
        return {};
    }
    if (!Allows(liftedHose_)) {
        return Where() + ": hose " + std::to_string(liftedHose_) +
               " is lifted, but the authorization is for Hose=" + Readable(authorization_.hoseText);
    }
    const Hose& hose = hoses_[static_cast<std::size_t>(liftedHose_ - 1)];
    if (!hose.priced) {
        return Where() + ": hose " + std::to_string(liftedHose_) + " has no price; nothing flows";
    }
    ++sales_;
    sale_ = Sale{};
    sale_.hose = liftedHose_;
    sale_.unitPrice = authorization_.mop == u'2' ? hose.tier2 : hose.tier1;
    // The car's tank: between 20 and 60 litres, different for each sale.
    const std::int64_t carTank = (20 + (number_ * 7 + sales_ * 13) % 41) * kLitre;
    sale_.endMicrolitres = carTank;
    if (!authorization_.fillUp && sale_.unitPrice > 0) {
        sale_.endMicrolitres = std::min(carTank, CeilDivide(authorization_.limitCents * kCentDivisor, sale_.unitPrice));
    }
    const std::int64_t slowVolume = sale_.unitPrice > 0 ? slowdownCents_ * kCentDivisor / sale_.unitPrice : 0;
    sale_.slowFromMicrolitres = std::max<std::int64_t>(0, sale_.endMicrolitres - slowVolume);
    state_ = PositionState::Fueling;
    return {};
}

std::string FuelingPosition::SetPrices(std::int64_t slowdownCents, const HosePrice* prices, int count) {
    int highest = 0;
    for (int i = 0; i < count; ++i) {
        highest = std::max(highest, prices[i].hose);
    }
    if (highest == 0) {
        return "the block sets no hose prices";
    }
    slowdownCents_ = slowdownCents;
    hoseCount_ = std::max(highest, 1);
    for (int i = 0; i < count; ++i) {
        Hose& hose = hoses_[static_cast<std::size_t>(prices[i].hose - 1)];
        hose.priced = true;
        hose.tier1 = prices[i].tier1;
        hose.tier2 = prices[i].tier2;
        hose.blend = prices[i].blend;
    }
    // A running sale keeps the price it started with.
    return {};
}

void FuelingPosition::Stop() {
    if (state_ == PositionState::Fueling || state_ == PositionState::Authorized) {
        state_ = PositionState::Stopped;
    }
}

std::string FuelingPosition::Resume() {
    if (state_ != PositionState::Stopped) {
        return Where() + " is not stopped (State=" + std::string(StateName(state_)) + ")";
    }
    if (sale_.hose != 0 && sale_.microlitres > 0) {
        state_ = nozzleUp_ ? PositionState::Fueling : PositionState::Finished;
        return {};
    }
    state_ = PositionState::Authorized;
    return StartSaleIfReady();
}

std::string FuelingPosition::Deauthorize() {
    switch (state_) {
    case PositionState::Authorized: EndSale(); return {};
    case PositionState::Stopped:
        if (sale_.microlitres > 0) {
            state_ = PositionState::Finished;
        } else {
            EndSale();
        }
        return {};
    case PositionState::Fueling:
        // Fuel that has passed must still be paid.
        state_ = PositionState::Finished;
        return {};
    case PositionState::Idle:
    case PositionState::Finished: break;
    }
    return Where() + " is not authorized (State=" + std::string(StateName(state_)) + ")";
}

std::string FuelingPosition::PayOut() {
    if (state_ != PositionState::Finished) {
        return Where() + " has no sale to pay out (State=" + std::string(StateName(state_)) + ")";
    }
    last_.hose = sale_.hose;
    last_.microlitres = sale_.microlitres;
    last_.cents = saleCents();
    EndSale();
    return {};
}

void FuelingPosition::EndSale() {
    sale_ = Sale{};
    authorization_ = Authorization{};
    state_ = PositionState::Idle;
}

std::string FuelingPosition::Lift(int hose) {
    if (nozzleUp_) {
        return "hose " + std::to_string(liftedHose_) + " is already lifted at " + Where() + "; hang it up first";
    }
    if (hose < 1 || hose > hoseCount_) {
        return Where() + " has hoses 1 to " + std::to_string(hoseCount_);
    }
    nozzleUp_ = true;
    liftedHose_ = hose;
    if (const std::string problem = StartSaleIfReady(); !problem.empty()) {
        errors_.Report("Forecourt", problem);
    }
    return {};
}

std::string FuelingPosition::Hang() {
    if (!nozzleUp_) {
        return "no nozzle is lifted at " + Where();
    }
    nozzleUp_ = false;
    liftedHose_ = 0;
    if (state_ == PositionState::Fueling || (state_ == PositionState::Stopped && sale_.microlitres > 0)) {
        if (sale_.microlitres > 0) {
            state_ = PositionState::Finished;
        } else {
            sale_ = Sale{};
            state_ = PositionState::Authorized;
        }
    }
    return {};
}

Text FuelingPosition::Information() const {
    const bool hasSale = sale_.hose != 0;
    AnswerText answer;
    answer.Add("FuelingPosition", positionText_)
        .Add("State", StateName(state_))
        .Add("Nozzle", nozzleUp_ ? "Up" : "Down")
        .Add("Hose", hasSale ? sale_.hose : liftedHose_)
        .Add("MOP", state_ == PositionState::Idle ? Text() : Text(1, authorization_.mop))
        .Add("Limit", authorization_.limitText)
        .Add("Volume", Litres(sale_.microlitres))
        .Add("Amount", Money(saleCents()))
        .Add("UnitPrice", UnitPrice(sale_.unitPrice));
    return answer.Take();
}

Text FuelingPosition::DispenserInformation() const {
    AnswerText answer;
    answer.Add("FuelingPosition", positionText_)
        .Add("Hoses", hoseCount_)
        .Add("SlowdownPoint", slowdownCents_)
        .Add("AuthorizedHose", authorization_.hoseText);
    for (int h = 1; h <= hoseCount_; ++h) {
        const Hose& hose = hoses_[static_cast<std::size_t>(h - 1)];
        answer.Add("Hose", h).Add("Product", ProductOfTank(TankOfHose(h)));
        if (hose.priced) {
            answer.Add("Tier1", ZeroPad(hose.tier1, 4)).Add("Tier2", ZeroPad(hose.tier2, 4));
        } else {
            answer.Add("Tier1", "").Add("Tier2", "");
        }
        if (hose.blend >= 0) {
            answer.Add("Blend", ZeroPad(hose.blend, 3));
        }
        answer.Add("Totalizer", Litres(hose.totalMicrolitres));
    }
    answer.Add("Sales", sales_)
        .Add("LastSaleHose", last_.hose)
        .Add("LastSaleVolume", Litres(last_.microlitres))
        .Add("LastSaleAmount", Money(last_.cents));
    return answer.Take();
}

std::string FuelingPosition::ReadAuthorize(BlockReader& block) {
    const auto hose = block.Take("Hose");
    const auto mop = block.Take("MOP");
    const auto limit = block.Take("Limit");
    block.ExpectEnd();
    return block.ok() ? Authorize(*hose, *mop, *limit) : std::string();
}

std::string FuelingPosition::ReadPrices(BlockReader& block) {
    const auto slowdown = block.Number("SlowdownPoint", 1, 4, 9999);
    std::array<HosePrice, kMaxHoses> prices{};
    int count = 0;
    unsigned seen = 0;
    while (block.ok() && !block.AtEnd()) {
        const auto hose = block.Number("Hose", 1, 1, kMaxHoses);
        if (block.ok() && (*hose == 0 || (seen >> *hose) & 1u)) {
            block.Fail(*hose == 0 ? "Hose=0 has no price" : "Hose=" + std::to_string(*hose) + " comes twice");
        }
        const auto tier1 = block.Price("Tier1");
        const auto tier2 = block.Price("Tier2");
        std::optional<std::int64_t> blend;
        if (block.ok() && block.NextIs("Blend")) {
            blend = block.Number("Blend", 3, 3, 100);
        }
        if (block.ok()) {
            seen |= 1u << *hose;
            prices[static_cast<std::size_t>(count++)] = {static_cast<int>(*hose), *tier1, *tier2,
                                                         blend ? static_cast<int>(*blend) : -1};
        }
    }
    return block.ok() ? SetPrices(*slowdown, prices.data(), count) : std::string();
}

}  // namespace vantrel::simulation
