#include "server_calls.h"

#include <algorithm>

namespace vantrel {

void ServerRegistry::Register(std::string progId, ServerFactory factory) {
    factories_[std::move(progId)] = std::move(factory);
}

ServerRegistry ServerRegistry::Decorated(const Decorator& decorate) const {
    ServerRegistry decorated;
    for (const auto& [progId, create] : factories_) {
        decorated.Register(progId, [decorate, create] { return decorate(create); });
    }
    return decorated;
}

bool ServerRegistry::Has(std::string_view progId) const { return factories_.find(progId) != factories_.end(); }

std::unique_ptr<AutomationObject> ServerRegistry::Create(std::string_view progId) const {
    const auto found = factories_.find(progId);
    if (found == factories_.end()) {
        throw errors::CannotCreateObject();
    }
    auto object = found->second();
    if (!object) {
        throw errors::CannotCreateObject();
    }
    return object;
}

void CallEvents::Add(CallListener* listener) { listeners_.push_back(listener); }

void CallEvents::Remove(CallListener* listener) {
    listeners_.erase(std::remove(listeners_.begin(), listeners_.end(), listener), listeners_.end());
}

void CallEvents::OnEvent(const CallEvent& event) {
    // A copy, so a listener may remove itself while being told.
    const auto listeners = listeners_;
    for (CallListener* listener : listeners) {
        listener->OnEvent(event);
    }
}

void CallEvents::OnSharedEvent(const std::shared_ptr<const CallEvent>& event) {
    const auto listeners = listeners_;
    for (CallListener* listener : listeners) {
        listener->OnSharedEvent(event);
    }
}

TracedObject::TracedObject(std::unique_ptr<AutomationObject> inner, CallListener& listener)
    : inner_(std::move(inner))
    , listener_(listener) {}

template <typename Invoke>
Variant TracedObject::Traced(CallEvent made, Invoke&& invoke) {
    // Made once and shared by every listener that keeps it: an image packet
    // is copied into the event once, not once more per listener.
    auto event = std::make_shared<CallEvent>(std::move(made));
    event->when = std::chrono::system_clock::now();
    const auto start = std::chrono::steady_clock::now();
    try {
        Variant result = invoke();
        event->duration = std::chrono::steady_clock::now() - start;
        if (event->op == CallEvent::Op::Call) {
            event->result = result;
        }
        listener_.OnSharedEvent(event);
        return result;
    } catch (const RuntimeError& error) {
        event->duration = std::chrono::steady_clock::now() - start;
        event->error = error;
        listener_.OnSharedEvent(event);
        throw;
    }
}

void TracedObject::Put(std::string_view member, const Variant& value) {
    if (!listener_.Listening()) {
        inner_->Put(member, value);
        return;
    }
    CallEvent event;
    event.op = CallEvent::Op::Put;
    event.member = std::string(member);
    event.argument = value;
    Traced(std::move(event), [&] {
        inner_->Put(member, value);
        return Variant();
    });
}

Variant TracedObject::Call(std::string_view member) {
    if (!listener_.Listening()) {
        return inner_->Call(member);
    }
    CallEvent event;
    event.op = CallEvent::Op::Call;
    event.member = std::string(member);
    return Traced(std::move(event), [&] { return inner_->Call(member); });
}

Variant TracedObject::Call(std::string_view member, const Variant& argument) {
    if (!listener_.Listening()) {
        return inner_->Call(member, argument);
    }
    CallEvent event;
    event.op = CallEvent::Op::Call;
    event.member = std::string(member);
    event.argument = argument;
    return Traced(std::move(event), [&] { return inner_->Call(member, argument); });
}

Variant TracedObject::CallByRef(std::string_view member, Variant& argument) {
    if (!listener_.Listening()) {
        return inner_->CallByRef(member, argument);
    }
    CallEvent event;
    event.op = CallEvent::Op::Call;
    event.member = std::string(member);
    event.argument = argument;  // the value as it went out
    event.byRef = true;
    return Traced(std::move(event), [&] { return inner_->CallByRef(member, argument); });
}

std::unique_ptr<AutomationObject> CreateTraced(const ServerRegistry& registry, std::string_view progId,
                                               CallListener& listener) {
    CallEvent event;
    event.op = CallEvent::Op::Create;
    event.member = std::string(progId);
    event.when = std::chrono::system_clock::now();
    try {
        auto object = registry.Create(progId);
        listener.OnEvent(event);
        return std::make_unique<TracedObject>(std::move(object), listener);
    } catch (const RuntimeError& error) {
        event.error = error;
        listener.OnEvent(event);
        throw;
    }
}

}  // namespace vantrel
