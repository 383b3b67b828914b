// SET IMAGE's work without the server: open the image file, read it whole,
// one byte to one character, and build the packet. Two ratios, so that the
// result reads the same on any machine: the 64 MiB load against the 1 MiB
// one (linear: about 64), and the 64 MiB load against a plain fill and copy
// of a text of the packet's size (the floor any way of loading must pay).

#include "graphics/file_table.h"
#include "graphics/test_functions.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

template <typename Work>
double BestSeconds(int rounds, Work work) {
    double best = 1e30;
    for (int round = 0; round < rounds; ++round) {
        const auto start = Clock::now();
        work();
        best = std::min(best, std::chrono::duration<double>(Clock::now() - start).count());
    }
    return best;
}

double LoadSeconds(const fs::path& file, int rounds) {
    return BestSeconds(rounds, [&] {
        vantrel::FileTable files;
        const int number = files.OpenForInput(file);
        const vantrel::Text packet = vantrel::ImagePacket(u"01", files.ReadToEnd(number));
        if (packet.size() < 106) {
            std::abort();
        }
    });
}

double CopySeconds(std::size_t length, int rounds) {
    return BestSeconds(rounds, [&] {
        const vantrel::Text filled(length, u'F');
        const vantrel::Text copied = filled;
        if (copied.size() != length) {
            std::abort();
        }
    });
}

void WriteHex(const fs::path& file, std::size_t length) {
    const std::string line = std::string(64, 'F') + "\r\n";
    std::ofstream out(file, std::ios::binary);
    for (std::size_t written = 0; written < length; written += line.size()) {
        out.write(line.data(), static_cast<std::streamsize>(std::min(line.size(), length - written)));
    }
}

}  // namespace

int main() {
    const fs::path folder = fs::temp_directory_path() / "vantrel-image-bench";
    fs::create_directories(folder);
    const fs::path small = folder / "small.hex";
    const fs::path large = folder / "large.hex";
    constexpr std::size_t kLarge = std::size_t{64} << 20;
    WriteHex(small, std::size_t{1} << 20);
    WriteHex(large, kLarge);
    const double smallSeconds = LoadSeconds(small, 5);
    const double largeSeconds = LoadSeconds(large, 3);
    const double copySeconds = CopySeconds(kLarge, 3);
    std::printf(
        "image load: 64 MiB / 1 MiB = %.1f (linear: about 64); 64 MiB load / fill and copy of its text = %.1f "
        "(%.0f ms here)\n",
        largeSeconds / smallSeconds, largeSeconds / copySeconds, largeSeconds * 1000);
    fs::remove_all(folder);
    return 0;
}
