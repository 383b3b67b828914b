#pragma once

#include "server/server_calls.h"

#include <string>

namespace vantrel {

// Makes the ProgID resolve to the platform's COM automation: the object is
// created as an in-process or local server and reached through IDispatch by
// late binding. Windows only.
void RegisterComServer(ServerRegistry& registry, std::string progId);

}  // namespace vantrel
