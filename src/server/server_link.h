#pragma once

#include "server_calls.h"

#include <memory>
#include <vector>

namespace vantrel {

// Whether a failing call says that the server's process has gone (the RPC
// "server unavailable", "disconnected" and "server died" codes, an object
// no longer connected): every later call to that object fails the same way.
bool IsServerGone(const RuntimeError& error);

// The console's connection to its server, made again on request after the
// server's process has died. The console keeps the one object it created
// at its load; behind it, calls go to the newest server. Objects of earlier
// servers are kept, never released, as the first one would have been.
class ServerLink {
public:
    explicit ServerLink(CallListener& events)
        : events_(events) {}
    ServerLink(const ServerLink&) = delete;
    ServerLink& operator=(const ServerLink&) = delete;

    // The registry whose objects are this link: the first creation is the
    // registry's own, traced by whoever asked for it.
    ServerRegistry Linked(const ServerRegistry& registry);

    // Creates the server again by the same means and sends later calls to
    // it. The creation is traced like the first. Throws the creation's error
    // (429 when nothing can create it), and then the old object stays.
    void Reconnect();
    // Whether the first creation has been made, so that there is a server to
    // make again.
    bool connected() const { return current_ != nullptr; }

private:
    class Connection;

    CallListener& events_;
    ServerFactory create_;
    std::string progId_;
    std::unique_ptr<AutomationObject> current_;
    std::vector<std::unique_ptr<AutomationObject>> earlier_;
};

}  // namespace vantrel
