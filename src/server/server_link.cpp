#include "server_link.h"

#include <utility>

namespace vantrel {

bool IsServerGone(const RuntimeError& error) {
    switch (static_cast<unsigned>(error.number())) {
    case 0x800706BAu:  // RPC_S_SERVER_UNAVAILABLE
    case 0x800706BEu:  // RPC_S_CALL_FAILED
    case 0x80010108u:  // RPC_E_DISCONNECTED
    case 0x80010007u:  // RPC_E_SERVER_DIED
    case 0x80010012u:  // RPC_E_SERVER_DIED_DNE
    case 0x800401FDu:  // CO_E_OBJNOTCONNECTED
        return true;
    default: return false;
    }
}

// What the registry hands out: forwards every call to the newest server.
class ServerLink::Connection final : public AutomationObject {
public:
    explicit Connection(ServerLink& link)
        : link_(link) {}
    void Put(std::string_view member, const Variant& value) override { link_.current_->Put(member, value); }
    Variant Call(std::string_view member) override { return link_.current_->Call(member); }
    Variant Call(std::string_view member, const Variant& argument) override {
        return link_.current_->Call(member, argument);
    }
    Variant CallByRef(std::string_view member, Variant& argument) override {
        return link_.current_->CallByRef(member, argument);
    }

private:
    ServerLink& link_;
};

ServerRegistry ServerLink::Linked(const ServerRegistry& registry) {
    return registry.Decorated([this](const ServerFactory& create) -> std::unique_ptr<AutomationObject> {
        auto object = create();
        if (!object) {
            return nullptr;  // the registry reports the failed creation
        }
        create_ = create;
        progId_ = std::string(kServerProgId);
        if (current_) {
            earlier_.push_back(std::move(current_));
        }
        current_ = std::move(object);
        return std::make_unique<Connection>(*this);
    });
}

void ServerLink::Reconnect() {
    CallEvent event;
    event.op = CallEvent::Op::Create;
    event.member = progId_.empty() ? std::string(kServerProgId) : progId_;
    event.when = std::chrono::system_clock::now();
    try {
        std::unique_ptr<AutomationObject> fresh = create_ ? create_() : nullptr;
        if (!fresh) {
            throw errors::CannotCreateObject();
        }
        earlier_.push_back(std::move(current_));
        current_ = std::move(fresh);
        events_.OnEvent(event);
    } catch (const RuntimeError& error) {
        event.error = error;
        events_.OnEvent(event);
        throw;
    }
}

}  // namespace vantrel
