#pragma once

#include "server/server_calls.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace vantrel::bench {

inline constexpr int kSession = 100'000;
inline constexpr int kBatch = 1'000;  // what 100 ms of heavy traffic brings at most

// Stress ticks and the calls a technician makes between them: kSession events.
std::vector<CallEvent> MonitorSession();
// A packet read of ten megabytes, every code below 251 in its data.
CallEvent TenMegabyteAnswer();

// The counter "per_event": the time per event.
inline void PerEvent(benchmark::State& state, int events) {
    state.counters["per_event"] =
        benchmark::Counter(events, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

}  // namespace vantrel::bench
