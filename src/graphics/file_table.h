#pragma once

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace vantrel {

// Files opened for input under file numbers 1 to 255, as the platform's file
// table numbers them. A file is never closed here: it stays open until the
// table goes, and the test functions window's table lives in the window's
// description, which the console keeps for the whole run. So every press of
// SET IMAGE holds one more handle until the program ends.
class FileTable {
public:
    static constexpr int kMaxFiles = 255;

    // Opens the file under the next free number and returns the number.
    // Errors: 53 when the file does not exist, 75 when it cannot be opened
    // (a folder, no permission), 67 when every number is in use.
    int OpenForInput(const std::filesystem::path& path);

    // Reads everything from the current place to the end, the whole file in
    // one read, so the time grows with the size and nothing more. Error 57
    // when the system fails to read; error 52 for a number that is not open.
    std::string ReadToEnd(int number);

    int OpenCount() const { return static_cast<int>(files_.size()); }

private:
    struct OpenFile {
        std::filesystem::path path;
        std::ifstream stream;
    };
    std::vector<std::unique_ptr<OpenFile>> files_;
};

}  // namespace vantrel
