// SET IMAGE against a server that does nothing, beside the least any way of
// loading the file must pay: one read() of the whole file into fresh memory.
// Both are timed per byte at 1 MiB and 64 MiB.

#include "graphics/graphics.h"
#include "graphics/local_path.h"
#include "graphics/test_functions.h"
#include "image_drive.h"
#include "quiet_console.h"
#include "targets.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

namespace vantrel::bench {
namespace {

namespace fs = std::filesystem;

void ReportPerByte(benchmark::State& state) {
    state.counters["per_byte"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void SetImage(benchmark::State& state) {
    const fs::path drive = DriveWithImage(static_cast<std::size_t>(state.range(0)));
    ::setenv("VANTREL_DRIVE_C", drive.c_str(), 1);
    QuietConsole quiet;
    for (auto _ : state) {
        // A fresh window each time: its file table keeps every file it
        // opened, as the console's does, and would run out of numbers.
        const FormDescription window = TestFunctionForm();
        window.Find("SET_IMAGE_BUTTON")->click(quiet.console());
    }
    ::unsetenv("VANTREL_DRIVE_C");
    ReportPerByte(state);
}

void OneRead(benchmark::State& state) {
    const fs::path drive = DriveWithImage(static_cast<std::size_t>(state.range(0)));
    const fs::path file = ImageIn(drive);
    for (auto _ : state) {
        const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
        struct stat status {};
        ::fstat(descriptor, &status);
        const auto size = static_cast<std::size_t>(status.st_size);
        const std::unique_ptr<char[]> data(new char[size]);
        const ssize_t got = ::read(descriptor, data.get(), size);
        ::close(descriptor);
        if (got != static_cast<ssize_t>(size)) {
            state.SkipWithError("short read");
            break;
        }
        benchmark::DoNotOptimize(data.get());
    }
    ReportPerByte(state);
}

void ImageSizes(benchmark::internal::Benchmark* benchmark) {
    for (const long size : kImageSizes) {
        benchmark->Arg(size);
    }
    benchmark->Unit(benchmark::kMillisecond);
}

BENCHMARK(SetImage)->Apply(ImageSizes);
BENCHMARK(OneRead)->Apply(ImageSizes);

}  // namespace
}  // namespace vantrel::bench
