// One stress tick as the running console takes it: the timer's event, the
// dispatch, the handler and its two assignments, on the real windows
// (offscreen) against a server that does nothing.

#include "app/all_forms.h"
#include "base/console.h"
#include "quiet_console.h"
#include "targets.h"
#include "ui/console_window.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QCoreApplication>
#include <QTimer>
#include <QTimerEvent>

#include <memory>

namespace vantrel::bench {
namespace {

// One application for the whole run; it is never destroyed, so nothing
// depends on the order of static destruction.
void EnsureApplication() {
    if (QCoreApplication::instance()) {
        return;
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    static int argc = 1;
    static char name[] = "vantrel_bench";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv);
}

// Does nothing but count, so the tick's assignments can be checked after.
class CountingServer final : public AutomationObject {
public:
    explicit CountingServer(long& puts)
        : puts_(puts) {}
    void Put(std::string_view, const Variant&) override { ++puts_; }
    Variant Call(std::string_view) override { return {}; }
    Variant Call(std::string_view, const Variant&) override { return {}; }
    Variant CallByRef(std::string_view, Variant&) override { return {}; }

private:
    long& puts_;
};

class CountingReport final : public ErrorReport {
public:
    void Report(const RuntimeError&) override { ++reports; }
    int reports = 0;
};

void StressTick(benchmark::State& state) {
    EnsureApplication();
    long puts = 0;
    ServerRegistry servers;
    servers.Register(std::string(kServerProgId), [&puts] { return std::make_unique<CountingServer>(puts); });
    CallEvents events;
    QuietBoxes boxes;
    CountingReport report;
    ConsoleApp app(AllForms(), servers, events, boxes, report);
    app.Load();
    app.Show();
    app.Dispatch(app.console().Description(kConsoleForm).Find("STRESS_BUTTON")->click);
    auto* timer = app.window().view().findChild<QTimer*>(QStringLiteral("Timer1"));
    if (!timer || !timer->isActive() || app.console().StressActive != 1) {
        state.SkipWithError("no running Timer1 with stress on");
        return;
    }
    puts = 0;
    for (auto _ : state) {
        QTimerEvent tick(timer->timerId());
        QCoreApplication::sendEvent(timer, &tick);
    }
    if (report.reports != 0 || puts != 2 * static_cast<long>(state.iterations())) {
        state.SkipWithError("the ticks did not make two assignments each");
    }
}
BENCHMARK(StressTick);

}  // namespace
}  // namespace vantrel::bench
