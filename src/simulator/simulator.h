#pragma once

#include "server/fault_injection.h"
#include "server/server_calls.h"

#include <deque>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace vantrel {

// The built-in stand-in for "Vantrel.Application". It knows every member the
// console uses, with the way each one is invoked, and answers with plausible
// key=value texts. A member it does not know, or one used in a way it does
// not support, raises error 438 as the real server's dispatch would.
class Simulator final : public AutomationObject, public FaultInjection {
public:
    enum class Style {
        Assignment,    // member = value
        Text,          // result = member(), a text
        Numeric,       // result = member(), a 16-bit number
        WithPosition,  // result = member(position)
    };

    Simulator();

    void Put(std::string_view member, const Variant& value) override;
    Variant Call(std::string_view member) override;
    Variant Call(std::string_view member, const Variant& argument) override;
    Variant CallByRef(std::string_view member, Variant& argument) override;

    bool Knows(std::string_view member) const override;
    void QueueAnswer(std::string_view member, Variant answer) override;
    void QueueFailure(std::string_view member, RuntimeError error) override;

    // Every member it knows and how it is invoked, ordered by name regardless
    // of case: the name table of its dispatch interface.
    std::vector<std::pair<std::string, Style>> Members() const;

    // What was assigned, for tests and the simulator's own views.
    const std::vector<std::pair<std::string, Variant>>& assignments() const { return assignments_; }

private:
    struct Member {
        std::string name;
        Style style;
    };
    using Outcome = std::variant<Variant, RuntimeError>;

    const Member& Lookup(std::string_view member, Style style) const;
    bool TakeQueued(const Member& member, Variant& answer);
    Variant Answer(const Member& member, std::int16_t position);

    std::map<std::string, Member, std::less<>> members_;  // by lower-case name
    std::map<std::string, std::deque<Outcome>, std::less<>> queued_;
    std::vector<std::pair<std::string, Variant>> assignments_;
};

}  // namespace vantrel
