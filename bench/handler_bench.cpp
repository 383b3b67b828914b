// A handler's own work: one click against a server that does nothing, beside
// the least that making the same texts costs, plain appends of their lines.

#include "benchmarks.h"
#include "quiet_console.h"
#include "targets.h"

#include <benchmark/benchmark.h>

namespace vantrel::bench {

namespace {

void Click(benchmark::State& state, const SurveyedCommand& command) {
    QuietConsole quiet;
    const Handler& click = quiet.Click(command.form, command.control);
    for (auto _ : state) {
        click(quiet.console());
    }
}

void BuildByAppends(benchmark::State& state, const AppendPlan& plan) {
    for (auto _ : state) {
        for (std::size_t index = 0; index < plan.size(); ++index) {
            const Text text = plan.Build(index);
            benchmark::DoNotOptimize(text.data());
        }
    }
}

void RegisterCommand(const SurveyedCommand& command) {
    benchmark::RegisterBenchmark(ClickName(command).c_str(),
                                 [command](benchmark::State& state) { Click(state, command); });
    benchmark::RegisterBenchmark(
        AppendsName(command).c_str(),
        [plan = AppendPlan(command.texts)](benchmark::State& state) { BuildByAppends(state, plan); });
}

}  // namespace

void RegisterSurveyBenchmarks(const CommandSurvey& survey) {
    for (const SurveyedCommand& command : survey.fixedBlocks) {
        RegisterCommand(command);
    }
    RegisterCommand(survey.preloadedMessages);
    RegisterCommand(survey.priceSet);
    RegisterSimulatorBenchmark(survey);
}

}  // namespace vantrel::bench
