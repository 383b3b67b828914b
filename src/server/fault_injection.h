#pragma once

#include "server/runtime_error.h"
#include "server/variant.h"

#include <string_view>

namespace vantrel {

// What a server that can be steered offers to script mode and tests: the
// next call of a member answers a given value, or fails.
class FaultInjection {
public:
    virtual ~FaultInjection() = default;
    virtual bool Knows(std::string_view member) const = 0;
    // Queued per member; several answers are given in order.
    virtual void QueueAnswer(std::string_view member, Variant answer) = 0;
    // The next call or assignment of the member raises the error.
    virtual void QueueFailure(std::string_view member, RuntimeError error) = 0;
};

}  // namespace vantrel
