#include "site_devices.h"

#include "answer_text.h"
#include "server/command_block.h"

#include <algorithm>

namespace vantrel::simulation {

namespace {

constexpr std::int64_t kLitre = 1'000'000;
constexpr Milliseconds kReportTime{5000};

}  // namespace

PriceSign::PriceSign()
    : lines_{u"001459", u"001529", u"001619", u"001389", u"000000"} {}

std::string PriceSign::Send(BlockReader& block) {
    const auto command = block.Take("Command");
    if (command && *command == u"SendPrices") {
        std::array<TextView, 5> next;
        for (std::size_t i = 0; i < next.size() && block.ok(); ++i) {
            const std::string key = "Line" + std::to_string(i + 1);
            const auto value = block.Take(key);
            if (value && !ParseDigits(*value, 6, 6)) {
                block.Fail(key + "=" + Readable(*value) + " is not six digits");
            }
            next[i] = value.value_or(TextView());
        }
        block.ExpectEnd();
        if (block.ok()) {
            for (std::size_t i = 0; i < next.size(); ++i) {
                lines_[i].assign(next[i]);
            }
        }
    } else if (command && *command == u"DisplayControl") {
        const auto intensity = block.Take("Intensity");
        if (intensity && (intensity->size() != 3 || (*intensity)[0] < u'A' || (*intensity)[0] > u'Z' ||
                          !ParseDigits(intensity->substr(1), 2, 2))) {
            block.Fail("Intensity=" + Readable(*intensity) + " is not a letter and two digits");
        }
        block.ExpectEnd();
        if (block.ok()) {
            intensity_.assign(*intensity);
        }
    } else if (command) {
        block.Fail("Command=" + Readable(*command) + " is neither SendPrices nor DisplayControl");
    }
    if (!block.ok()) {
        return block.problem();
    }
    ++updates_;
    return {};
}

Text PriceSign::Read() const {
    AnswerText answer;
    answer.Add("Status", "OK");
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        answer.Add("Line" + std::to_string(i + 1), lines_[i]);
    }
    answer.Add("Intensity", intensity_).Add("Updates", updates_);
    return answer.Take();
}

TankMonitor::TankMonitor() {
    const std::array<std::int64_t, kTanks> litres{18'500, 12'250, 7'600, 21'000};
    const std::array<int, kTanks> water{12, 0, 5, 20};
    const std::array<int, kTanks> temperature{148, 151, 146, 139};
    for (std::size_t i = 0; i < tanks_.size(); ++i) {
        tanks_[i] = Tank{litres[i] * kLitre, 30'000 * kLitre, water[i], temperature[i]};
    }
}

void TankMonitor::Draw(int tank, std::int64_t microlitres) {
    Tank& drawn = tanks_[static_cast<std::size_t>(tank)];
    drawn.microlitres = std::max<std::int64_t>(0, drawn.microlitres - microlitres);
}

void TankMonitor::Start(Milliseconds now) {
    started_ = true;
    busy_ = true;
    completesAt_ = now + kReportTime;
    report_.clear();
}

void TankMonitor::Complete() {
    busy_ = false;
    AnswerText answer;
    answer.Add("Tanks", kTanks);
    for (std::size_t i = 0; i < tanks_.size(); ++i) {
        const Tank& tank = tanks_[i];
        const std::string temperature =
            std::to_string(tank.temperatureTenths / 10) + "." + std::to_string(tank.temperatureTenths % 10);
        answer.Add("Tank", static_cast<int>(i + 1))
            .Add("Product", ProductOfTank(static_cast<int>(i)))
            .Add("Volume", Litres(tank.microlitres))
            .Add("Ullage", Litres(tank.capacity - tank.microlitres))
            .Add("Water", tank.waterMillimetres)
            .Add("Temperature", temperature);
    }
    report_ = answer.Take();
}

Text TankMonitor::Status() const {
    return AnswerText().Add("ReportStatus", !started_ ? "Idle" : busy_ ? "Busy" : "Complete").Take();
}

std::string TankMonitor::ReadStart(const Variant& value, Milliseconds now) {
    const bool number =
        value.is(Variant::Kind::Int16) || value.is(Variant::Kind::Int32) || value.is(Variant::Kind::Double);
    const bool one = value.int16() == 1 || value.int32() == 1 || value.real() == 1.0;
    if (!number || !one) {
        return "the report starts with the number 1, not " +
               (number ? std::string("the number ") + ToUtf8(ToText(value)) : std::string("a value that is no number"));
    }
    Start(now);
    return {};
}

}  // namespace vantrel::simulation
