// The call monitor's real window on the offscreen platform under the stress
// session and the ten-megabyte answer: what the view pays.
#include "monitor_session.h"
#include "ui/call_monitor_window.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTableView>

#include <vector>

namespace {

using vantrel::CallEvent;
using vantrel::bench::kBatch;
using vantrel::bench::kSession;
using vantrel::bench::MonitorSession;
using vantrel::bench::PerEvent;
using vantrel::bench::TenMegabyteAnswer;

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

// The real window, shown and painted after every batch, following the end.
void MonitorWindow(benchmark::State& state) {
    Application();
    const std::vector<CallEvent> session = MonitorSession();
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

}  // namespace
