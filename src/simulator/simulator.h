#pragma once

#include "server/fault_injection.h"
#include "server/server_calls.h"
#include "simulator/clock.h"
#include "simulator/fault_queue.h"
#include "simulator/forecourt.h"
#include "simulator/members.h"
#include "simulator/release_changes.h"

#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantrel {

// The built-in stand-in for "Vantrel.Application": a model of a filling
// station's controller with 32 fueling positions and their reader terminals,
// the event queues, a car wash, a price sign and a tank monitor. It knows
// every member the console uses, with the way each one is invoked; a member
// it does not know, or one used in another way, raises error 438 as the real
// server's dispatch would. A block it cannot act on is not thrown back: it
// adds a readable entry to the error queue, as a controller on a serial link
// would report it.
class Simulator final : public AutomationObject, public FaultInjection {
public:
    using Style = simulation::MemberStyle;

    // On the wall clock.
    Simulator();
    explicit Simulator(std::unique_ptr<simulation::Clock> clock);
    ~Simulator() override;
    Simulator(const Simulator&) = delete;
    Simulator& operator=(const Simulator&) = delete;

    void Put(std::string_view member, const Variant& value) override;
    Variant Call(std::string_view member) override;
    Variant Call(std::string_view member, const Variant& argument) override;
    Variant CallByRef(std::string_view member, Variant& argument) override;

    // A server whose process has died, as a client sees it: every put and
    // call fails with the RPC "server unavailable" error until it is made
    // again. For trying the way back (Tools > Reconnect to the server).
    void SetGone(bool gone) { gone_ = gone; }

    bool Knows(std::string_view member) const override;
    // An answer queued for an assigned member is used up by its next
    // assignment and changes nothing.
    void QueueAnswer(std::string_view member, Variant answer) override;
    void QueueFailure(std::string_view member, RuntimeError error) override;
    // The next call or assignment of the member is held back this long
    // before it is carried out. False for a member the simulator lacks.
    bool QueueDelay(std::string_view member, std::chrono::milliseconds delay);
    std::optional<Style> StyleOf(std::string_view member) const;

    // Plays another release of the server from now on (docs/simulator.md).
    void PlayRelease(simulation::ReleaseChanges changes) { release_ = changes; }

    void SetAutomatic(bool on);
    bool automatic() const { return forecourt_->traffic.on(); }

    // Moves a manual clock on; false when the simulator runs on the wall
    // clock.
    bool AdvanceTime(std::chrono::milliseconds step);
    simulation::ManualClock* manualClock() const { return manual_; }
    // Starts over on a clock that only AdvanceTime moves, late answers
    // really waited: a simulator created elsewhere (the COM server) made
    // ready for a script, before the script's first line.
    void RestartOnScriptClock();
    std::chrono::milliseconds now() const { return clock_->Now(); }

    // The model brought up to the present: for views, and for the events
    // from the forecourt side (a nozzle lifted, a card swiped ...).
    simulation::Forecourt& forecourt();
    std::vector<std::string> PendingFaults() const { return faults_.Describe(); }
    // The newest assignments first: member and value as one readable line.
    std::vector<std::pair<std::string, Text>> RecentAssignments() const;

    // Every member it knows and how it is invoked, ordered by name regardless
    // of case: the name table of its dispatch interface.
    std::vector<std::pair<std::string, Style>> Members() const;
    // The newest assignment as it came, member and value (a text of more
    // than a million characters by its first million); nothing before the
    // first.
    std::optional<std::pair<std::string, Variant>> LastAssignment() const;

private:
    using MemberId = simulation::MemberId;

    MemberId Lookup(std::string_view member, Style style) const;
    bool Faulted(MemberId member, Variant& answer);
    // The answer as the release played gives it: later, changed, or an error.
    Variant Released(MemberId member, Variant answer);
    void Update() { forecourt_->AdvanceTo(clock_->Now()); }
    void Remember(MemberId member, const Variant& value);
    void Report(MemberId member, const std::string& problem);

    std::unique_ptr<simulation::Clock> clock_;
    simulation::ManualClock* manual_ = nullptr;
    std::unique_ptr<simulation::Forecourt> forecourt_;
    simulation::FaultQueue faults_;
    simulation::ReleaseChanges release_;

    struct Assignment {
        MemberId member = 0;
        Variant value;
    };
    static constexpr std::size_t kRecent = 16;
    static constexpr std::size_t kRememberedWhole = 1024 * 1024;
    std::array<Assignment, kRecent> recent_;
    std::size_t recentCount_ = 0;
    bool gone_ = false;
};

}  // namespace vantrel
