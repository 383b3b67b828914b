// The core's own work: building a block and converting results.
#include "server/command_block.h"
#include "server/variant.h"

#include <benchmark/benchmark.h>

namespace {

void BlockOfFourLines(benchmark::State& state) {
    for (auto _ : state) {
        vantrel::CommandBlock block;
        block.AddLine(u"FuelingPosition=07").AddLine(u"Hose=0").AddLine(u"MOP=F").AddLine(u"Limit=999999").Terminate();
        benchmark::DoNotOptimize(block.Text().data());
    }
}
BENCHMARK(BlockOfFourLines);

void TextToInt16(benchmark::State& state) {
    const vantrel::Variant answer = vantrel::Variant::OfText(u" 2.5 ");
    for (auto _ : state) {
        benchmark::DoNotOptimize(vantrel::ToInt16(answer));
    }
}
BENCHMARK(TextToInt16);

}  // namespace
