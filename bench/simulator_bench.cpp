// The built-in simulator's assignments in-process, reached only through the
// automation interface: the blocks the console's commands send, replayed.

#include "benchmarks.h"
#include "simulator/simulator.h"
#include "targets.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace vantrel::bench {

namespace {

using Assignment = std::pair<std::string, Variant>;

std::unique_ptr<AutomationObject> NewSimulator() { return std::make_unique<Simulator>(); }

}  // namespace

void RegisterSimulatorBenchmark(const CommandSurvey& survey) {
    std::vector<Assignment> assignments;
    for (const SurveyedCommand& command : survey.fixedBlocks) {
        assignments.insert(assignments.end(), command.assignments.begin(), command.assignments.end());
    }
    for (const SurveyedCommand* command : {&survey.preloadedMessages, &survey.priceSet}) {
        assignments.insert(assignments.end(), command->assignments.begin(), command->assignments.end());
    }
    // A session of a few thousand assignments, then a fresh server, so that
    // what a server keeps of its session stays of a session's size.
    constexpr std::size_t kSession = 10000;
    benchmark::RegisterBenchmark(
        kSimulatorPut,
        [assignments](benchmark::State& state) {
            if (assignments.empty()) {
                state.SkipWithError("the survey found no assignments");
                return;
            }
            std::unique_ptr<AutomationObject> server = NewSimulator();
            std::size_t next = 0;
            std::size_t inSession = 0;
            try {
                for (auto _ : state) {
                    const auto& [member, value] = assignments[next];
                    server->Put(member, value);
                    next = next + 1 == assignments.size() ? 0 : next + 1;
                    if (++inSession == kSession) {
                        server = NewSimulator();
                        inSession = 0;
                    }
                }
            } catch (const RuntimeError& error) {
                state.SkipWithError(("the simulator refused " + assignments[next].first + ": " + error.what()).c_str());
            }
            state.SetItemsProcessed(state.iterations());
        })
        // Whole sessions in every repetition, whatever a first trial would
        // choose: one slowed by a neighbour chose 100 assignments, all on a
        // fresh server, whose first assignments are the slowest, and the
        // rate came out at a third.
        ->Iterations(4 * kSession);
}

}  // namespace vantrel::bench
