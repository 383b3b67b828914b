#include "car_wash_bay.h"

#include "answer_text.h"
#include "server/command_block.h"

namespace vantrel::simulation {

namespace {

constexpr Milliseconds kRequestTime{2000};

std::string_view CodeStatusName(int status) {
    static constexpr std::string_view kNames[] = {"Valid", "Used", "Cancelled"};
    return kNames[status];
}

// A selector or count of one or two digits: "01", "3".
std::optional<int> Number(BlockReader& block, std::string_view key, int lowest, int highest) {
    const auto value = block.Take(key);
    if (!value) {
        return std::nullopt;
    }
    const auto number = ParseDigits(*value, 1, 2);
    if (!number || *number < lowest || *number > highest) {
        block.Fail(std::string(key) + "=" + Readable(*value) + " is not a number from " + std::to_string(lowest) +
                   " to " + std::to_string(highest));
        return std::nullopt;
    }
    return static_cast<int>(*number);
}

}  // namespace

CarWash::CarWash() {
    // The wash's own table until the console sends one.
    for (int program = 1; program <= 3; ++program) {
        const std::int64_t full = 400 + 100 * program;
        programs_[program] = Price{true, {full, full - 100, full - 200}};
        const std::int64_t option = 20 + 5 * program;
        options_[program] = Price{true, {option, option - 5, option - 10}};
    }
}

std::string CarWash::Request(BlockReader& block, Milliseconds now) {
    const BlockLine* first = block.TakeAny();
    if (!first) {
        return block.ok() ? "the block holds no request" : block.problem();
    }
    if (first->kind != BlockLine::Kind::Word) {
        return "line 1: a request word expected, found \"" + Readable(first->text) + "\"";
    }
    const Text word(first->key);
    std::string problem;
    Text data;
    if (word == u"RequestCarWashCode") {
        problem = RequestCode(block);
    } else if (word == u"CancelCarWashCode") {
        problem = CodeCommand(block, true);
    } else if (word == u"CarWashCodeStatus") {
        problem = CodeCommand(block, false);
    } else if (word == u"SetPriceData") {
        problem = SetPrices(block);
    } else if (word.starts_with(u"Return") && word.ends_with(u"Data")) {
        block.ExpectEnd();
        if (!block.ok()) {
            return block.problem();
        }
        if (word == u"ReturnPriceData") {
            data_ = PriceTable();
        } else if (word == u"ReturnReportData") {
            data_ = Report();
        } else if (word == u"ReturnKeyData") {
            data_ = AnswerText().Add("KeyData", lastKeys_).Take();
        } else if (word == u"ReturnCardData") {
            data_ = AnswerText().Add("CardData", "").Take();
        } else if (word == u"ReturnRFIDData") {
            data_ = AnswerText().Add("RFIDTag", "").Take();
        } else if (word == u"ReturnTransactionData") {
            data_ = lastTransaction_.empty() ? AnswerText().Add("CarWashCode", "").Take() : lastTransaction_;
        } else {
            return "line 1: " + Readable(word) + " is not a data request of the car wash";
        }
    } else {
        return "line 1: " + Readable(word) + " is not a car wash request";
    }
    if (!problem.empty()) {
        return problem;
    }
    request_ = word;
    completesAt_ = now + kRequestTime;
    return {};
}

std::string CarWash::RequestCode(BlockReader& block) {
    const auto program = Number(block, "ProgramNumber", 1, kMaxPrograms);
    if (block.ok() && !programs_.count(*program)) {
        block.Fail("ProgramNumber=" + ToUtf8(ZeroPad(*program, 2)) + " is not in the price table");
    }
    const auto level = Number(block, "PriceLevel", 1, 3);
    const auto optionCount = Number(block, "OptionCount", 0, kMaxPrograms);
    std::int64_t cents = block.ok() ? programs_[*program].levels[static_cast<std::size_t>(*level - 1)] : 0;
    for (int i = 0; block.ok() && i < *optionCount; ++i) {
        const auto option = Number(block, "OptionNumber", 1, kMaxPrograms);
        if (block.ok() && !options_.count(*option)) {
            block.Fail("OptionNumber=" + ToUtf8(ZeroPad(*option, 2)) + " is not in the price table");
        }
        const auto optionLevel = Number(block, "PriceLevel", 1, 3);
        if (block.ok()) {
            cents += options_[*option].levels[static_cast<std::size_t>(*optionLevel - 1)];
        }
    }
    block.ExpectEnd();
    if (!block.ok()) {
        return block.problem();
    }
    Text code;
    for (std::int64_t attempt = codesIssued_;; ++attempt) {
        code = ZeroPad(10000 + (attempt * 7919 + 4271) % 90000, 5);
        if (!codes_.count(code)) {
            break;
        }
    }
    codes_[code] = Code{*program, cents, *optionCount, CodeStatus::Valid};
    ++codesIssued_;
    lastCode_ = code;
    data_ = AnswerText()
                .Add("CarWashCode", code)
                .Add("ProgramNumber", ZeroPad(*program, 2))
                .Add("OptionCount", *optionCount)
                .Add("Price", ZeroPad(cents, 5))
                .Take();
    return {};
}

std::string CarWash::CodeCommand(BlockReader& block, bool cancel) {
    const auto value = block.Take("CarWashCode");
    block.ExpectEnd();
    if (!block.ok()) {
        return block.problem();
    }
    const Text code(*value);
    if (code.empty()) {
        return "line 2: CarWashCode= is empty";
    }
    const auto found = codes_.find(code);
    if (!cancel) {
        AnswerText answer;
        answer.Add("CarWashCode", code);
        if (found == codes_.end()) {
            answer.Add("CodeStatus", "Unknown");
        } else {
            answer.Add("CodeStatus", CodeStatusName(static_cast<int>(found->second.status)))
                .Add("ProgramNumber", ZeroPad(found->second.program, 2))
                .Add("Price", ZeroPad(found->second.cents, 5));
        }
        data_ = answer.Take();
        return {};
    }
    if (found == codes_.end()) {
        return "CarWashCode=" + Readable(code) + " is not a code of this wash";
    }
    if (found->second.status != CodeStatus::Valid) {
        return "CarWashCode=" + ToUtf8(code) + " is " +
               std::string(CodeStatusName(static_cast<int>(found->second.status))) + " already";
    }
    found->second.status = CodeStatus::Cancelled;
    ++codesCancelled_;
    data_ = AnswerText().Add("CarWashCode", code).Add("CodeStatus", "Cancelled").Take();
    return {};
}

std::string CarWash::SetPrices(BlockReader& block) {
    std::map<int, Price> tables[2];
    const std::string_view counts[2] = {"ProgramCount", "OptionCount"};
    const std::string_view numbers[2] = {"ProgramNumber", "OptionNumber"};
    const std::string_view prices[3] = {"FullPrice", "Discount1Price", "Discount2Price"};
    for (int kind = 0; kind < 2 && block.ok(); ++kind) {
        const auto count = Number(block, counts[kind], 0, kMaxPrograms);
        for (int i = 0; block.ok() && i < *count; ++i) {
            const auto number = Number(block, numbers[kind], 1, kMaxPrograms);
            if (block.ok() && tables[kind].count(*number)) {
                block.Fail(std::string(numbers[kind]) + "=" + ToUtf8(ZeroPad(*number, 2)) + " comes twice");
            }
            Price price{true, {}};
            for (std::size_t level = 0; level < 3 && block.ok(); ++level) {
                const auto value = block.Take(prices[level]);
                const auto cents = value ? ParseDigits(*value, 5, 5) : std::nullopt;
                if (value && !cents) {
                    block.Fail(std::string(prices[level]) + "=" + Readable(*value) + " is not five digits");
                }
                price.levels[level] = cents.value_or(0);
            }
            if (block.ok()) {
                tables[kind][*number] = price;
            }
        }
    }
    block.ExpectEnd();
    if (!block.ok()) {
        return block.problem();
    }
    programs_ = std::move(tables[0]);
    options_ = std::move(tables[1]);
    data_ = PriceTable();
    return {};
}

std::string CarWash::EnterCode(TextView code, Milliseconds now) {
    lastKeys_.assign(code);
    if (washingUntil_ > now) {
        return "the wash bay is busy for another " + std::to_string((washingUntil_ - now).count() / 1000) + " s";
    }
    const auto found = codes_.find(Text(code));
    if (found == codes_.end() || found->second.status != CodeStatus::Valid) {
        return "code " + Readable(code) + " is not valid at this wash";
    }
    Code& used = found->second;
    used.status = CodeStatus::Used;
    ++codesUsed_;
    revenueCents_ += used.cents;
    washingProgram_ = used.program;
    washingUntil_ = now + Milliseconds(120'000 + 30'000 * used.options);
    lastTransaction_ = AnswerText()
                           .Add("CarWashCode", Text(code))
                           .Add("ProgramNumber", ZeroPad(used.program, 2))
                           .Add("Price", ZeroPad(used.cents, 5))
                           .Take();
    return {};
}

Text CarWash::UnusedCode() const {
    for (auto it = codes_.rbegin(); it != codes_.rend(); ++it) {
        if (it->second.status == CodeStatus::Valid) {
            return it->first;
        }
    }
    return {};
}

Text CarWash::RequestStatus(Milliseconds now) const {
    AnswerText answer;
    answer.Add("Request", request_);
    if (request_ == u"None") {
        answer.Add("Status", "Idle");
    } else {
        answer.Add("Status", now < completesAt_ ? "Busy" : "Complete");
    }
    return answer.Take();
}

Text CarWash::DataRead(Milliseconds now) const { return request_ == u"None" || now < completesAt_ ? Text() : data_; }

Text CarWash::OperationStatus(Milliseconds now) const {
    const bool washing = washingUntil_ > now;
    std::int64_t valid = 0;
    for (const auto& [code, entry] : codes_) {
        valid += entry.status == CodeStatus::Valid ? 1 : 0;
    }
    return AnswerText()
        .Add("CarWash", washing ? "Washing" : "Ready")
        .Add("ProgramNumber", ZeroPad(washing ? washingProgram_ : 0, 2))
        .Add("SecondsLeft", washing ? (washingUntil_ - now).count() / 1000 : std::int64_t{0})
        .Add("CodesValid", valid)
        .Take();
}

Text CarWash::PriceTable() const {
    AnswerText answer;
    const std::map<int, Price>* tables[2] = {&programs_, &options_};
    const char* counts[2] = {"ProgramCount", "OptionCount"};
    const char* numbers[2] = {"ProgramNumber", "OptionNumber"};
    for (int kind = 0; kind < 2; ++kind) {
        answer.Add(counts[kind], ZeroPad(static_cast<std::int64_t>(tables[kind]->size()), 2));
        for (const auto& [number, price] : *tables[kind]) {
            answer.Add(numbers[kind], ZeroPad(number, 2))
                .Add("FullPrice", ZeroPad(price.levels[0], 5))
                .Add("Discount1Price", ZeroPad(price.levels[1], 5))
                .Add("Discount2Price", ZeroPad(price.levels[2], 5));
        }
    }
    return answer.Take();
}

Text CarWash::Report() const {
    return AnswerText()
        .Add("CodesIssued", codesIssued_)
        .Add("CodesUsed", codesUsed_)
        .Add("CodesCancelled", codesCancelled_)
        .Add("Revenue", Money(revenueCents_))
        .Take();
}

}  // namespace vantrel::simulation
