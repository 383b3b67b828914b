#pragma once

#include "runtime_error.h"
#include "variant.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

inline constexpr std::string_view kServerProgId = "Vantrel.Application";

// A server object reached by late binding: members are named as text at the
// moment of the call. Every failure is a RuntimeError.
class AutomationObject {
public:
    virtual ~AutomationObject() = default;

    // member = value (property put)
    virtual void Put(std::string_view member, const Variant& value) = 0;
    // result = member()
    virtual Variant Call(std::string_view member) = 0;
    // result = member(argument), argument by value
    virtual Variant Call(std::string_view member, const Variant& argument) = 0;
    // result = member(argument), argument by reference: the server may write
    // a new value back into it.
    virtual Variant CallByRef(std::string_view member, Variant& argument) = 0;
};

using ServerFactory = std::function<std::unique_ptr<AutomationObject>()>;

// Creation by programmatic identifier. The app registers what this platform
// offers (COM, the built-in simulator) and the console asks by ProgID only.
class ServerRegistry {
public:
    void Register(std::string progId, ServerFactory factory);
    bool Has(std::string_view progId) const;
    // Throws error 429 when nothing can create the object.
    std::unique_ptr<AutomationObject> Create(std::string_view progId) const;
    // A registry whose objects pass through `decorate`, creation included:
    // a front-end's busy cursor wraps every server call this way.
    using Decorator = std::function<std::unique_ptr<AutomationObject>(const ServerFactory& create)>;
    ServerRegistry Decorated(const Decorator& decorate) const;

private:
    std::map<std::string, ServerFactory, std::less<>> factories_;
};

// A Decorator for ServerRegistry::Decorated: a `Guard` (a front-end's busy
// cursor, set in its constructor and undone in its destructor) is held while
// the object is created and during each put or call.
template <class Guard>
std::unique_ptr<AutomationObject> GuardedWhileCalling(const ServerFactory& create) {
    class Guarded final : public AutomationObject {
    public:
        explicit Guarded(std::unique_ptr<AutomationObject> inner)
            : inner_(std::move(inner)) {}
        void Put(std::string_view member, const Variant& value) override {
            const Guard guard;
            inner_->Put(member, value);
        }
        Variant Call(std::string_view member) override {
            const Guard guard;
            return inner_->Call(member);
        }
        Variant Call(std::string_view member, const Variant& argument) override {
            const Guard guard;
            return inner_->Call(member, argument);
        }
        Variant CallByRef(std::string_view member, Variant& argument) override {
            const Guard guard;
            return inner_->CallByRef(member, argument);
        }

    private:
        std::unique_ptr<AutomationObject> inner_;
    };
    std::unique_ptr<AutomationObject> object;
    {
        const Guard guard;
        object = create();
    }
    if (!object) {
        return object;  // the registry reports the failed creation
    }
    return std::make_unique<Guarded>(std::move(object));
}

// What happened at the console's edge: a server call, a modal box, the error
// report. The trace file and the call monitor both listen to these.
struct CallEvent {
    enum class Op {
        Create,
        Put,
        Call,
        MessageBox,
        InputBox,
        Report,
    };
    enum class Buttons {
        Ok,
        YesNo,
    };

    Op op = Op::Call;
    std::string member;               // Put, Call; the ProgID for Create
    std::optional<Variant> argument;  // the value of a Put, the argument of a Call
    bool byRef = false;
    std::optional<Variant> result;  // Call
    std::optional<RuntimeError> error;
    Text text;  // message or prompt
    Text title;
    Buttons buttons = Buttons::Ok;
    Text answer;  // "ok"/"yes"/"no" or the typed entry
    std::chrono::system_clock::time_point when;
    std::chrono::nanoseconds duration{0};  // how long the server took
};

class CallListener {
public:
    virtual ~CallListener() = default;
    virtual void OnEvent(const CallEvent& event) = 0;
    // The same event, shared: a listener that keeps events keeps this
    // pointer rather than a copy of a value that may be many megabytes.
    virtual void OnSharedEvent(const std::shared_ptr<const CallEvent>& event) { OnEvent(*event); }
    // False when nothing would be done with an event, so that the caller can
    // skip making it: an event copies the value it carries. A seam for
    // bench/run's SET IMAGE figures, where a console without a listener
    // would otherwise copy the 64 MiB packet once more per press.
    virtual bool Listening() const { return true; }
};

// Hands every event to any number of listeners, in the order they were added.
class CallEvents final : public CallListener {
public:
    void Add(CallListener* listener);
    void Remove(CallListener* listener);
    void OnEvent(const CallEvent& event) override;
    void OnSharedEvent(const std::shared_ptr<const CallEvent>& event) override;
    bool Listening() const override { return !listeners_.empty(); }

private:
    std::vector<CallListener*> listeners_;
};

// Wraps a server and reports each put and call, failures included, before the
// failure travels on.
class TracedObject final : public AutomationObject {
public:
    TracedObject(std::unique_ptr<AutomationObject> inner, CallListener& listener);

    void Put(std::string_view member, const Variant& value) override;
    Variant Call(std::string_view member) override;
    Variant Call(std::string_view member, const Variant& argument) override;
    Variant CallByRef(std::string_view member, Variant& argument) override;

    AutomationObject& inner() { return *inner_; }

private:
    template <typename Invoke>
    Variant Traced(CallEvent event, Invoke&& invoke);

    std::unique_ptr<AutomationObject> inner_;
    CallListener& listener_;
};

// Creates by ProgID and reports the creation; the result reports its calls.
std::unique_ptr<AutomationObject> CreateTraced(const ServerRegistry& registry, std::string_view progId,
                                               CallListener& listener);

}  // namespace vantrel
