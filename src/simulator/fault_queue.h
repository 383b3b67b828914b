#pragma once

#include "clock.h"
#include "members.h"
#include "server/runtime_error.h"
#include "server/variant.h"

#include <deque>
#include <string>
#include <variant>
#include <vector>

namespace vantrel::simulation {

// Outcomes queued for the next calls of a member, in order: an answer in
// place of the model's, an error raised, or an answer held back for a while.
// A delay and an answer or error combine: the call waits, then gives it.
class FaultQueue {
public:
    void QueueAnswer(MemberId member, Variant answer);
    void QueueFailure(MemberId member, RuntimeError error);
    void QueueDelay(MemberId member, Milliseconds delay);

    bool empty() const { return pending_ == 0; }
    // The delay queued for this call of the member, or zero.
    Milliseconds TakeDelay(MemberId member);
    // True and the answer when one is queued; throws a queued error.
    bool TakeOutcome(MemberId member, Variant& answer);

    // What is still queued, one readable line each, for the simulator window.
    std::vector<std::string> Describe() const;

private:
    using Outcome = std::variant<Variant, RuntimeError>;
    std::vector<std::deque<Outcome>> outcomes_ = std::vector<std::deque<Outcome>>(Members().size());
    std::vector<std::deque<Milliseconds>> delays_ = std::vector<std::deque<Milliseconds>>(Members().size());
    std::size_t pending_ = 0;
};

// A huge answer of exactly `length` characters: "Filler=" lines of 80
// characters with CR LF, the last one cut where the length ends.
Text HugeText(std::size_t length);

}  // namespace vantrel::simulation
