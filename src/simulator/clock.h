#pragma once

#include <chrono>

namespace vantrel::simulation {

using Milliseconds = std::chrono::milliseconds;

// The simulator's sense of time. Sales flow, reports finish and automatic
// traffic happens as this clock moves; tests and script mode move it by hand.
class Clock {
public:
    virtual ~Clock() = default;
    // Time since an arbitrary start; never goes back.
    virtual Milliseconds Now() const = 0;
    // Holds a late answer back for the given time.
    virtual void Wait(Milliseconds delay) = 0;
};

// The wall clock: what a technician at the bench lives in.
class RealClock final : public Clock {
public:
    RealClock();
    Milliseconds Now() const override;
    void Wait(Milliseconds delay) override;

private:
    std::chrono::steady_clock::time_point start_;
};

// A clock that moves only when told to, so a run is repeatable.
class ManualClock final : public Clock {
public:
    enum class Waits {
        Counted,  // a late answer only adds to waited(): unit tests
        Slept,    // a late answer really takes that long: script mode
    };

    explicit ManualClock(Waits waits = Waits::Counted);

    Milliseconds Now() const override { return now_; }
    void Wait(Milliseconds delay) override;

    // Moves the time on; a negative step is ignored.
    void Advance(Milliseconds step);
    Milliseconds waited() const { return waited_; }

private:
    Waits waits_;
    Milliseconds now_{0};
    Milliseconds waited_{0};
};

}  // namespace vantrel::simulation
