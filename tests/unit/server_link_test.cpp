// The way back to a server whose process has died, below either front-end:
// which errors say so, how their numbers read, and the link that makes the
// server again.
#include "server/server_link.h"
#include "support/test_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace vantrel {
namespace {

using testing::RecordingServer;

TEST(ErrorNumbers, OnlyTheCodesOfAServerThatHasGoneSaySo) {
    for (const int gone : {-2147023174, -2147023170, -2147417848, -2147418105, -2147418094, -2147220995}) {
        EXPECT_TRUE(IsServerGone(RuntimeError(gone, ""))) << gone;
    }
    for (const int other : {438, 429, 440, -2147467259, -2147352567, 0}) {
        EXPECT_FALSE(IsServerGone(RuntimeError(other, ""))) << other;
    }
}

class CreationsRecorder final : public CallListener {
public:
    void OnEvent(const CallEvent& event) override {
        if (event.op == CallEvent::Op::Create) {
            creations.push_back(event.member + (event.error ? " failed " + std::to_string(event.error->number()) : ""));
        }
    }
    std::vector<std::string> creations;
};

// A registry whose every creation is a new recording server, kept here to
// be looked at; `refuse` makes the next creations fail.
struct Servers {
    ServerRegistry registry;
    std::vector<RecordingServer*> made;
    bool refuse = false;
    Servers() {
        registry.Register(std::string(kServerProgId), [this]() -> std::unique_ptr<AutomationObject> {
            if (refuse) {
                throw RuntimeError(429, "ActiveX component can't create object");
            }
            auto server = std::make_unique<RecordingServer>();
            made.push_back(server.get());
            return server;
        });
    }
};

// The console's one object, created through the link as at the load.
class LinkedServer : public ::testing::Test {
protected:
    Servers servers;
    CreationsRecorder events;
    ServerLink link{events};
    ServerRegistry linked = link.Linked(servers.registry);
    std::unique_ptr<AutomationObject> object = CreateTraced(linked, kServerProgId, events);
};

TEST_F(LinkedServer, AReconnectSendsLaterCallsToANewServerAndIsTracedAsACreation) {
    object->Put("Stop", Variant::OfText(u"07"));
    link.Reconnect();
    object->Put("Resume", Variant::OfText(u"07"));

    ASSERT_EQ(2u, servers.made.size());
    ASSERT_EQ(1u, servers.made[0]->calls.size());
    EXPECT_EQ("Stop", servers.made[0]->calls[0].member);
    ASSERT_EQ(1u, servers.made[1]->calls.size());
    EXPECT_EQ("Resume", servers.made[1]->calls[0].member);
    EXPECT_EQ((std::vector<std::string>{"Vantrel.Application", "Vantrel.Application"}), events.creations);
}

TEST_F(LinkedServer, AReconnectThatFailsIsTracedAndLeavesTheOldServer) {
    servers.refuse = true;
    try {
        link.Reconnect();
        ADD_FAILURE() << "the reconnect did not fail";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(429, error.number());
    }
    object->Call("CardQue");
    ASSERT_EQ(1u, servers.made.size());
    EXPECT_EQ(1u, servers.made[0]->calls.size());
    EXPECT_EQ((std::vector<std::string>{"Vantrel.Application", "Vantrel.Application failed 429"}), events.creations);
}

}  // namespace
}  // namespace vantrel
