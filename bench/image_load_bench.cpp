// SET IMAGE against a server that does nothing, beside the least any way of
// making its packet must do: the file read and widened into fresh room of
// the packet's size. Both are timed per byte at 1 MiB and 64 MiB.

#include "graphics/graphics.h"
#include "graphics/large_text.h"
#include "graphics/local_path.h"
#include "graphics/test_functions.h"
#include "image_drive.h"
#include "quiet_console.h"
#include "targets.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <benchmark/benchmark.h>

#include <algorithm>
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

// The least that any program must do for the same result: open the file,
// learn its size, take fresh room for one 16-bit character per byte, read
// the bytes and make each one a character, close. The bytes pass through a
// buffer of 256 KiB, each piece widened while it is still in the processor's
// cache: measured on this machine, that is less work than one read of the
// whole file at both sizes (at 64 MiB by far: the whole file in fresh memory
// is 64 MiB more to touch). The room is taken as the console takes a
// packet's (operator new, then the same large-page advice, which neither
// side gets at 1 MiB), so that both pay the same for touching it first;
// nothing is kept from one repetition to the next.
void ReadAndWiden(benchmark::State& state) {
    const fs::path file = ImageIn(DriveWithImage(static_cast<std::size_t>(state.range(0))));
    constexpr std::size_t kPiece = std::size_t{256} << 10;
    for (auto _ : state) {
        const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
        struct stat status {};
        ::fstat(descriptor, &status);
        const auto size = static_cast<std::size_t>(status.st_size);
        const auto text = std::make_unique_for_overwrite<char16_t[]>(size);
        AdviseLargePages(text.get(), size * sizeof(char16_t));
        const auto piece = std::make_unique_for_overwrite<unsigned char[]>(kPiece);
        std::size_t done = 0;
        while (done < size) {
            const ssize_t got = ::read(descriptor, piece.get(), std::min(size - done, kPiece));
            if (got <= 0) {
                break;
            }
            std::copy(piece.get(), piece.get() + got, text.get() + done);
            done += static_cast<std::size_t>(got);
        }
        ::close(descriptor);
        if (done != size) {
            state.SkipWithError("short read");
            break;
        }
        benchmark::DoNotOptimize(text.get());
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
BENCHMARK(ReadAndWiden)->Apply(ImageSizes);

}  // namespace
}  // namespace vantrel::bench
