#pragma once

#include "server/server_calls.h"

#include <optional>
#include <string>

namespace vantrel {

// Why a monitor row cannot be sent to the server again; nothing when it can.
// Only puts and calls went to the server: boxes and the error report are the
// console's own, and the server is created once per run.
std::optional<std::string> WhyNotSendAgain(const CallEvent& event);

// Sends the row's member, invocation style and value to `server` exactly as
// they went the first time. A by-reference argument goes out as it was sent,
// not as the server wrote it back. Throws the server's RuntimeError.
void SendAgain(const CallEvent& event, AutomationObject& server);

}  // namespace vantrel
