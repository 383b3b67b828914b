#include "call_events.h"

namespace vantrel::testing {

CallEvent PutEvent(std::string member, Variant value, EventTiming timing) {
    CallEvent event;
    event.op = CallEvent::Op::Put;
    event.member = std::move(member);
    event.argument = std::move(value);
    event.when = timing.when;
    event.duration = timing.took;
    return event;
}

CallEvent CallEventOf(std::string member, std::optional<Variant> argument, Variant result, bool byRef,
                      EventTiming timing) {
    CallEvent event;
    event.op = CallEvent::Op::Call;
    event.member = std::move(member);
    event.argument = std::move(argument);
    event.byRef = byRef;
    event.result = std::move(result);
    event.when = timing.when;
    event.duration = timing.took;
    return event;
}

CallEvent FailedEvent(CallEvent event, int number, std::string description) {
    event.result.reset();
    event.error = RuntimeError(number, std::move(description));
    return event;
}

CallEvent BoxEvent(CallEvent::Op op, Text text, Text title, Text answer, CallEvent::Buttons buttons,
                   std::chrono::system_clock::time_point when) {
    CallEvent event;
    event.op = op;
    event.text = std::move(text);
    event.title = std::move(title);
    event.answer = std::move(answer);
    event.buttons = buttons;
    event.when = when;
    return event;
}

}  // namespace vantrel::testing
