// The packet input view: the whole click of PacketQue against a server that
// answers a packet of 3, 999 and 30000 data characters, and the view alone.
// Equal time per data character at every size means linear work.

#include "queues/packet_view.h"
#include "quiet_console.h"
#include "server/command_block.h"
#include "targets.h"

#include <benchmark/benchmark.h>

namespace vantrel::bench {
namespace {

// A packet answer with `count` data characters of every 8-bit code, its
// count field written as the server would ("003", "999", "3E4").
Text PacketAnswer(std::int64_t count) {
    Text answer =
        u"ReaderPosition=05\r\nPacketCount=" + (count == 30000 ? Text(u"3E4") : ZeroPad(count, 3)) + u"\r\nPacketData=";
    for (std::int64_t i = 0; i < count; ++i) {
        answer.push_back(static_cast<char16_t>(i % 256));
    }
    answer.append(u"\r\n");
    answer.push_back(kNul);
    return answer;
}

void ReportPerCharacter(benchmark::State& state) {
    state.counters["per_char"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void PacketCounts(benchmark::internal::Benchmark* benchmark) {
    for (const int count : kPacketCounts) {
        benchmark->Arg(count);
    }
}

void PacketInputView(benchmark::State& state) {
    const Text answer = PacketAnswer(state.range(0));
    for (auto _ : state) {
        PacketView view = ViewPacketInput(answer);
        benchmark::DoNotOptimize(view.text.data());
    }
    ReportPerCharacter(state);
}
BENCHMARK(PacketInputView)->Apply(PacketCounts);

void PacketQueClick(benchmark::State& state) {
    QuietConsole quiet(Variant::OfText(PacketAnswer(state.range(0))));
    const Handler& click = quiet.Click(kConsoleForm, "PacketQue");
    for (auto _ : state) {
        click(quiet.console());
        benchmark::DoNotOptimize(quiet.console().DataBox().data());
    }
    ReportPerCharacter(state);
}
BENCHMARK(PacketQueClick)->Apply(PacketCounts);

}  // namespace
}  // namespace vantrel::bench
