#pragma once

#include "com/com_automation.h"
#include "server/server_calls.h"

#include <memory>
#include <string_view>

#include <windows.h>
#include <oaidl.h>

namespace vantrel::com {

// COM initialised on the calling thread as a single-threaded apartment, for as
// long as the object lives. A thread already in an apartment keeps it.
class Apartment {
public:
    Apartment();  // throws 429 when COM cannot start
    ~Apartment();
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

private:
    bool initialised_ = false;
};

// A server object behind its IDispatch. Every call looks the member up by
// name and invokes it in one of the console's styles, the way late binding
// does; nothing is cached between calls.
class ComObject final : public AutomationObject {
public:
    // Where the object may live: wherever its registration says (an
    // in-process server first), or only in a process of its own (a local
    // server, or a DLL server in the system's surrogate process).
    enum class Host { Registered, OwnProcess };
    // Creates the object from its ProgID. Throws 429 (or 430 when it has no
    // dispatch interface).
    static std::unique_ptr<ComObject> Create(std::string_view progId, Host host = Host::Registered);
    // Wraps an object already at hand; takes a reference of its own.
    explicit ComObject(IDispatch* dispatch);
    ~ComObject() override;
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    void Put(std::string_view member, const Variant& value) override;
    Variant Call(std::string_view member) override;
    Variant Call(std::string_view member, const Variant& argument) override;
    // The argument goes as VT_BYREF | VT_VARIANT to a VARIANT that holds it;
    // what the server leaves there comes back into the argument.
    Variant CallByRef(std::string_view member, Variant& argument) override;

    IDispatch* dispatch() const { return dispatch_; }

private:
    ComObject() = default;
    DISPID Lookup(std::string_view member);
    void Invoke(std::string_view member, WORD flags, DISPPARAMS& parameters, VARIANT* result);

    Apartment apartment_;  // first in, last out: the object is released inside it
    IDispatch* dispatch_ = nullptr;
};

}  // namespace vantrel::com
