#include "send_again.h"

namespace vantrel {

std::optional<std::string> WhyNotSendAgain(const CallEvent& event) {
    switch (event.op) {
    case CallEvent::Op::Put:
        if (!event.argument) {
            return "The value of this put was not kept, so it cannot be sent exactly.";
        }
        return std::nullopt;
    case CallEvent::Op::Call: return std::nullopt;
    case CallEvent::Op::Create: return "The server is created once per run; a creation is not sent again.";
    case CallEvent::Op::MessageBox:
    case CallEvent::Op::InputBox:
        return "A box is the console's own and never reached the server; only puts and calls are sent again.";
    case CallEvent::Op::Report:
        return "The error report is the console's own and never reached the server; only puts and calls are "
               "sent again.";
    }
    return "Only puts and calls are sent again.";
}

void SendAgain(const CallEvent& event, AutomationObject& server) {
    if (event.op == CallEvent::Op::Put) {
        server.Put(event.member, *event.argument);
    } else if (!event.argument) {
        server.Call(event.member);
    } else if (event.byRef) {
        Variant argument = *event.argument;
        server.CallByRef(event.member, argument);
    } else {
        server.Call(event.member, *event.argument);
    }
}

}  // namespace vantrel
