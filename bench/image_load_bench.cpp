// SET IMAGE's work without the server: open the image file, read it whole,
// one byte to one character, and build the packet. Equal time per byte at
// 1 MiB and at 64 MiB means linear work; the fill and copy of a text of the
// packet's size beside it is the floor any way of loading must pay.

#include "graphics/file_table.h"
#include "graphics/test_functions.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace vantrel {
namespace {

namespace fs = std::filesystem;

// Hexadecimal text in lines of 64 digits with CR LF, written once per size.
fs::path ImageOfSize(std::size_t length) {
    const fs::path file = fs::temp_directory_path() / ("vantrel-bench-image-" + std::to_string(length) + ".hex");
    if (std::error_code error; fs::file_size(file, error) != length || error) {
        const std::string line = std::string(64, 'F') + "\r\n";
        std::ofstream out(file, std::ios::binary | std::ios::trunc);
        for (std::size_t written = 0; written < length; written += line.size()) {
            out.write(line.data(), static_cast<std::streamsize>(std::min(line.size(), length - written)));
        }
    }
    return file;
}

void ReportPerByte(benchmark::State& state) {
    state.counters["per_byte"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void ImageLoad(benchmark::State& state) {
    const fs::path file = ImageOfSize(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        FileTable files;
        const int number = files.OpenForInput(file);
        const Text packet = ImagePacket(u"01", files.ReadToEnd(number));
        benchmark::DoNotOptimize(packet.data());
    }
    ReportPerByte(state);
}
BENCHMARK(ImageLoad)->Arg(1 << 20)->Arg(64 << 20)->Unit(benchmark::kMillisecond);

void TextFillAndCopy(benchmark::State& state) {
    for (auto _ : state) {
        const Text filled(static_cast<std::size_t>(state.range(0)), u'F');
        const Text copied = filled;
        benchmark::DoNotOptimize(copied.data());
    }
    ReportPerByte(state);
}
BENCHMARK(TextFillAndCopy)->Arg(1 << 20)->Arg(64 << 20)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vantrel
