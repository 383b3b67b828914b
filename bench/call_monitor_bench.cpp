// The call monitor under load: a stress session of 100,000 events and one
// answer of ten megabytes, through the listener (what a command pays), the
// batches and the real window on the offscreen platform (what the view
// pays). The counter "per_event" is the time per event.
#include "server/server_calls.h"
#include "ui/call_monitor_model.h"
#include "ui/call_monitor_window.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTableView>

#include <vector>

namespace {

using vantrel::CallEvent;
using vantrel::Text;
using vantrel::Variant;

constexpr int kSession = 100'000;
constexpr int kBatch = 1'000;  // what 100 ms of heavy traffic brings at most

QApplication& Application() {
    static int argc = 1;
    static char name[] = "vantrel_bench";
    static char* argv[] = {name, nullptr};
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    static QApplication application(argc, argv);
    return application;
}

// Stress ticks and the calls a technician makes between them.
std::vector<CallEvent> Session() {
    const Text key = Text(u"KeyData=123@R456A@789NYL0EHCe\n") + u'\0';
    std::vector<CallEvent> kinds(4);
    kinds[0].op = CallEvent::Op::Put;
    kinds[0].member = "KeyPadConfiguration";
    kinds[0].argument = Variant::OfText(u"ReaderPosition=01\r\n" + key);
    kinds[1] = kinds[0];
    kinds[1].argument = Variant::OfText(u"ReaderPosition=17\r\n" + key);
    kinds[2].op = CallEvent::Op::Call;
    kinds[2].member = "DispenserInformation";
    kinds[2].argument = Variant::OfInt16(7);
    kinds[2].byRef = true;
    kinds[2].result = Variant::OfText(u"FuelingPosition=07\r\nHoses=4\r\nTier1=1111\r\nTier2=1111\r\nBlend=100\r\n");
    kinds[3].op = CallEvent::Op::Call;
    kinds[3].member = "CardQue";
    kinds[3].error = vantrel::RuntimeError(438, "Object doesn't support this property or method");
    for (CallEvent& kind : kinds) {
        kind.when = std::chrono::system_clock::now();
        kind.duration = std::chrono::microseconds(180);
    }
    std::vector<CallEvent> session;
    session.reserve(kSession);
    for (int k = 0; k < kSession; ++k) {
        session.push_back(kinds[static_cast<std::size_t>(k) % kinds.size()]);
    }
    return session;
}

CallEvent TenMegabyteAnswer() {
    CallEvent event;
    event.op = CallEvent::Op::Call;
    event.member = "PacketQueInput";
    Text answer = u"ReaderPosition=01\r\nPacketCount=10485760\r\nPacketData=";
    answer.reserve(answer.size() + 10 * 1024 * 1024);
    for (int k = 0; k < 10 * 1024 * 1024; ++k) {
        answer.push_back(static_cast<char16_t>(k % 251));  // every code below 251, NUL and ESC included
    }
    event.result = Variant::OfText(std::move(answer));
    event.when = std::chrono::system_clock::now();
    return event;
}

void PerEvent(benchmark::State& state, int events) {
    state.counters["per_event"] =
        benchmark::Counter(events, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// What a command pays: the listener copies the event into the queue.
void MonitorListener(benchmark::State& state) {
    const std::vector<CallEvent> session = Session();
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
    const std::vector<CallEvent> session = Session();
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

// The real window, shown and painted after every batch, following the end.
void MonitorWindow(benchmark::State& state) {
    Application();
    const std::vector<CallEvent> session = Session();
    for (auto _ : state) {
        vantrel::CallMonitorFeed feed;
        vantrel::CallMonitorWindow window(feed, vantrel::MonitorLimits{}, nullptr);
        window.show();
        for (int k = 0; k < kSession; ++k) {
            feed.OnEvent(session[static_cast<std::size_t>(k)]);
            if ((k + 1) % kBatch == 0) {
                window.Flush();
                window.repaint();
            }
        }
        benchmark::DoNotOptimize(window.model().size());
    }
    PerEvent(state, kSession);
}
BENCHMARK(MonitorWindow)->Unit(benchmark::kMillisecond)->Iterations(3);

// One answer of ten megabytes: queued, taken, its row drawn, selected so that
// both views show it.
void MonitorTenMegabyteAnswer(benchmark::State& state) {
    Application();
    const CallEvent answer = TenMegabyteAnswer();
    vantrel::CallMonitorFeed feed;
    vantrel::CallMonitorWindow window(feed, vantrel::MonitorLimits{}, nullptr);
    window.show();
    auto* table = window.findChild<QTableView*>(QStringLiteral("CallMonitorTable"));
    for (auto _ : state) {
        feed.OnEvent(answer);
        window.Flush();
        table->selectRow(table->model()->rowCount() - 1);
        window.repaint();
    }
    PerEvent(state, 1);
}
BENCHMARK(MonitorTenMegabyteAnswer)->Unit(benchmark::kMillisecond)->Iterations(5);

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
