#include "clock.h"

#include <thread>

namespace vantrel::simulation {

RealClock::RealClock()
    : start_(std::chrono::steady_clock::now()) {}

Milliseconds RealClock::Now() const {
    return std::chrono::duration_cast<Milliseconds>(std::chrono::steady_clock::now() - start_);
}

void RealClock::Wait(Milliseconds delay) {
    if (delay.count() > 0) {
        std::this_thread::sleep_for(delay);
    }
}

ManualClock::ManualClock(Waits waits)
    : waits_(waits) {}

void ManualClock::Wait(Milliseconds delay) {
    if (delay.count() <= 0) {
        return;
    }
    waited_ += delay;
    if (waits_ == Waits::Slept) {
        std::this_thread::sleep_for(delay);
    }
}

void ManualClock::Advance(Milliseconds step) {
    if (step.count() > 0) {
        now_ += step;
    }
}

}  // namespace vantrel::simulation
