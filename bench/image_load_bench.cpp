// SET IMAGE's work without the server: open the image file, read it whole,
// one byte to one character, and build the packet. Linear means the 64 MiB
// file takes about 64 times as long as the 1 MiB one.

#include "graphics/file_table.h"
#include "graphics/local_path.h"
#include "graphics/test_functions.h"
#include "server/text.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;

double LoadSeconds(const fs::path& file, int rounds) {
    double best = 1e30;
    for (int round = 0; round < rounds; ++round) {
        vantrel::FileTable files;
        const auto start = std::chrono::steady_clock::now();
        const int number = files.OpenForInput(file);
        const vantrel::Text packet = vantrel::ImagePacket(u"01", vantrel::FromBytes(files.ReadToEnd(number)));
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        if (packet.size() < 106) {
            std::abort();
        }
        best = std::min(best, took.count());
    }
    return best;
}

void WriteHex(const fs::path& file, std::size_t length) {
    std::string line = std::string(64, 'F') + "\r\n";
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
    WriteHex(small, std::size_t{1} << 20);
    WriteHex(large, std::size_t{64} << 20);
    const double smallSeconds = LoadSeconds(small, 5);
    const double largeSeconds = LoadSeconds(large, 3);
    std::printf("image load: 64 MiB / 1 MiB time ratio %.1f (linear: about 64); 64 MiB in %.0f ms\n",
                largeSeconds / smallSeconds, largeSeconds * 1000);
    fs::remove_all(folder);
    return 0;
}
