#pragma once

#include "server/server_calls.h"

#include <chrono>
#include <optional>
#include <string>

namespace vantrel::testing {

// When an event happened and how long the server took.
struct EventTiming {
    std::chrono::system_clock::time_point when;
    std::chrono::nanoseconds took{0};
};

// Events as the traced server and the traced boxes report them, one line
// each in a test.
CallEvent PutEvent(std::string member, Variant value, EventTiming timing);
CallEvent CallEventOf(std::string member, std::optional<Variant> argument, Variant result, bool byRef,
                      EventTiming timing);
// The same call failing: no result, the error instead.
CallEvent FailedEvent(CallEvent event, int number, std::string description);
CallEvent BoxEvent(CallEvent::Op op, Text text, Text title, Text answer, CallEvent::Buttons buttons,
                   std::chrono::system_clock::time_point when);

}  // namespace vantrel::testing
