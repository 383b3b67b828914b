#pragma once

#include "block_reader.h"
#include "clock.h"
#include "server/text.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>

namespace vantrel::simulation {

// The car wash: a price table of programs and options, wash codes that are
// sold, cancelled, asked about and used at the wash bay, and the data that
// the wash hands back on request. A request is busy for two seconds of
// simulated time, then complete; its data can then be read.
class CarWash {
public:
    CarWash();

    // One CarWashInformationRequest block; an empty text when accepted.
    std::string Request(BlockReader& block, Milliseconds now);

    // A code typed at the wash bay's keypad: the wash starts.
    std::string EnterCode(TextView code, Milliseconds now);
    // The newest code still valid, for automatic traffic; empty when none.
    Text UnusedCode() const;

    Text RequestStatus(Milliseconds now) const;
    Text DataRead(Milliseconds now) const;
    Text OperationStatus(Milliseconds now) const;

    std::int64_t codesIssued() const { return codesIssued_; }

private:
    struct Price {
        bool set = false;
        std::array<std::int64_t, 3> levels{};  // full, discount 1, discount 2, in cents
    };
    enum class CodeStatus {
        Valid,
        Used,
        Cancelled,
    };
    struct Code {
        int program = 0;
        std::int64_t cents = 0;
        int options = 0;
        CodeStatus status = CodeStatus::Valid;
    };

    std::string RequestCode(BlockReader& block);
    std::string SetPrices(BlockReader& block);
    std::string CodeCommand(BlockReader& block, bool cancel);
    Text PriceTable() const;
    Text Report() const;

    static constexpr int kMaxPrograms = 99;
    std::map<int, Price> programs_;
    std::map<int, Price> options_;
    std::map<Text, Code> codes_;
    Text lastCode_;
    Text request_ = u"None";
    Milliseconds completesAt_{0};
    Text data_;
    std::int64_t codesIssued_ = 0;
    std::int64_t codesUsed_ = 0;
    std::int64_t codesCancelled_ = 0;
    std::int64_t revenueCents_ = 0;
    Text lastKeys_;
    Text lastTransaction_;
    int washingProgram_ = 0;
    Milliseconds washingUntil_{0};
};

}  // namespace vantrel::simulation
