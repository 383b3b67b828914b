#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
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

    // Reads everything from the current place to the end. Error 57 when the
    // system fails to read; error 52 for a number that is not open.
    std::string ReadToEnd(int number);
    // Reads up to `length` bytes into the buffer, in one read but for a
    // system that hands out less; fewer only at the end of the file.
    std::size_t Read(int number, char* buffer, std::size_t length);
    // The same in pieces of at most 256 KiB, each handed over as it is read,
    // so that a large file is never held whole as bytes.
    void ReadInPieces(int number, const std::function<void(std::string_view piece)>& take);
    // The size the system reports for the file, if it reports one.
    std::optional<std::uintmax_t> SizeOf(int number) const;

    int OpenCount() const { return static_cast<int>(files_.size()); }

private:
    struct OpenFile;
    OpenFile& At(int number) const;

    struct OpenFile {
        std::filesystem::path path;
        std::ifstream stream;
    };
    std::vector<std::unique_ptr<OpenFile>> files_;
};

}  // namespace vantrel
