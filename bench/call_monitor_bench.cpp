// The call monitor's model under load: a stress session of 100,000 events
// and one answer of ten megabytes, through the listener (what a command
// pays) and the batches the window takes. The counter "per_event" is the
// time per event.
#include "monitor_session.h"
#include "monitor/call_monitor_model.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace {

using vantrel::CallEvent;
using vantrel::bench::kBatch;
using vantrel::bench::kSession;
using vantrel::bench::MonitorSession;
using vantrel::bench::PerEvent;
using vantrel::bench::TenMegabyteAnswer;

// What a command pays: the listener copies the event into the queue.
void MonitorListener(benchmark::State& state) {
    const std::vector<CallEvent> session = MonitorSession();
    for (auto _ : state) {
        vantrel::CallMonitorFeed feed;
        for (const CallEvent& event : session) {
            feed.OnEvent(event);
        }
        benchmark::DoNotOptimize(feed.Take().entries.size());
    }
    PerEvent(state, kSession);
}
BENCHMARK(MonitorListener)->Unit(benchmark::kMillisecond);

// The model taking the session in batches, the row limit dropping half.
void MonitorModelBatches(benchmark::State& state) {
    const std::vector<CallEvent> session = MonitorSession();
    for (auto _ : state) {
        vantrel::CallMonitorFeed feed;
        vantrel::CallMonitorModel model;
        for (int k = 0; k < kSession; ++k) {
            feed.OnEvent(session[static_cast<std::size_t>(k)]);
            if ((k + 1) % kBatch == 0) {
                model.Append(feed.Take());
            }
        }
        benchmark::DoNotOptimize(model.size());
    }
    PerEvent(state, kSession);
}
BENCHMARK(MonitorModelBatches)->Unit(benchmark::kMillisecond);

// What the listener alone pays for the ten megabytes: one copy.
void MonitorListenerTenMegabytes(benchmark::State& state) {
    const CallEvent answer = TenMegabyteAnswer();
    vantrel::CallMonitorFeed feed;
    for (auto _ : state) {
        feed.OnEvent(answer);
        benchmark::DoNotOptimize(feed.Take().entries.size());
    }
}
BENCHMARK(MonitorListenerTenMegabytes)->Unit(benchmark::kMillisecond);

}  // namespace
