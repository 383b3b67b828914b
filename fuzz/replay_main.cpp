// Replays a corpus through a fuzz target's entry point, as libFuzzer does
// with files given on its command line: every file of each folder named (in
// name order), or each file named. Where libFuzzer is not built, this runs
// the seeds with the tests. Exits with 1 when it found nothing to replay, so
// that a corpus gone missing fails rather than passes.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> InputsIn(const fs::path& place) {
    std::vector<fs::path> inputs;
    std::error_code error;
    if (fs::is_directory(place, error)) {
        for (const fs::directory_entry& entry : fs::directory_iterator(place, error)) {
            if (entry.is_regular_file(error)) {
                inputs.push_back(entry.path());
            }
        }
        std::sort(inputs.begin(), inputs.end());
    } else if (fs::is_regular_file(place, error)) {
        inputs.push_back(place);
    }
    return inputs;
}

}  // namespace

int main(int argc, char* argv[]) {
    std::size_t replayed = 0;
    for (int i = 1; i < argc; ++i) {
        for (const fs::path& input : InputsIn(argv[i])) {
            std::ifstream file(input, std::ios::binary);
            const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
            std::printf("%s\n", input.filename().string().c_str());
            std::fflush(stdout);  // the input that stops a run is the last name shown
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++replayed;
        }
    }
    std::printf("%zu inputs replayed\n", replayed);
    return replayed == 0 ? 1 : 0;
}
