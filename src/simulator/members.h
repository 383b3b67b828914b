#pragma once

#include "server/variant.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vantrel::simulation {

class Forecourt;

// How a member is invoked. A member used in another way raises error 438,
// as the server's own dispatch does.
enum class MemberStyle {
    Assignment,    // member = value
    Text,          // result = member(), a text
    Numeric,       // result = member(), a 16-bit number
    WithPosition,  // result = member(position)
};

// One member of the server: its name, how it is invoked, and what it does to
// the model (a forecourt brought up to the present). One of the three
// actions is set, by the style.
struct Member {
    std::string_view name;
    MemberStyle style;
    // An assignment: an empty text when done, else why not, which goes to
    // the error queue.
    std::string (*assign)(Forecourt& site, const Variant& value) = nullptr;
    // A call without argument: the answer.
    Variant (*answer)(Forecourt& site) = nullptr;
    // A call about a position 1 to 32: the answer.
    Variant (*about)(Forecourt& site, int position) = nullptr;
};

// A member's row in the table.
using MemberId = std::size_t;

// Every member the simulator knows, in the order of its dispatch table.
std::span<const Member> Members();
const Member& Info(MemberId id);
// By name, ignoring case as late binding does; nothing for an unknown name.
std::optional<MemberId> FindMember(std::string_view name);

}  // namespace vantrel::simulation
