#pragma once

#include "server/server_calls.h"

#include <memory>

namespace vantrel {

// The object `create` makes, wrapped so that every window shows the busy
// cursor while the server works: its creation and each put or call. A slow
// server otherwise looks like a console that hangs.
std::unique_ptr<AutomationObject> BusyWhileCalling(const ServerFactory& create);

}  // namespace vantrel
