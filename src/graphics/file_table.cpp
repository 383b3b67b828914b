#include "file_table.h"

#include "server/runtime_error.h"

#include <cerrno>
#include <system_error>

namespace vantrel {

namespace {

RuntimeError BadFileNameOrNumber() { return {52, "Bad file name or number"}; }
RuntimeError DeviceIoError() { return {57, "Device I/O error"}; }
RuntimeError TooManyFiles() { return {67, "Too many files"}; }
RuntimeError PathFileAccessError() { return {75, "Path/File access error"}; }

}  // namespace

int FileTable::OpenForInput(const std::filesystem::path& path) {
    if (OpenCount() >= kMaxFiles) {
        throw TooManyFiles();
    }
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found) {
        throw errors::FileNotFound();
    }
    // A folder opens on some systems and only fails on reading; refuse it
    // here as the platform does.
    if (error || status.type() == std::filesystem::file_type::directory) {
        throw PathFileAccessError();
    }
    auto file = std::make_unique<OpenFile>();
    file->path = path;
    errno = 0;
    file->stream.open(path, std::ios::in | std::ios::binary);
    if (!file->stream.is_open()) {
        // The system's own limit on open files is the console's limit too.
        if (errno == EMFILE || errno == ENFILE) {
            throw TooManyFiles();
        }
        throw PathFileAccessError();
    }
    files_.push_back(std::move(file));
    return OpenCount();
}

FileTable::OpenFile& FileTable::At(int number) const {
    if (number < 1 || number > OpenCount()) {
        throw BadFileNameOrNumber();
    }
    return *files_[static_cast<std::size_t>(number - 1)];
}

std::optional<std::uintmax_t> FileTable::SizeOf(int number) const {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(At(number).path, error);
    if (error) {
        return std::nullopt;
    }
    return size;
}

std::string FileTable::ReadToEnd(int number) {
    std::string data;
    if (const std::optional<std::uintmax_t> size = SizeOf(number)) {
        data.reserve(static_cast<std::size_t>(*size));
    }
    ReadInPieces(number, [&data](std::string_view piece) { data.append(piece); });
    return data;
}

std::size_t FileTable::Read(int number, char* buffer, std::size_t length) {
    OpenFile& file = At(number);
    if (!file.stream) {
        return 0;
    }
    file.stream.read(buffer, static_cast<std::streamsize>(length));
    if (file.stream.bad()) {
        throw DeviceIoError();
    }
    return static_cast<std::size_t>(file.stream.gcount());
}

void FileTable::ReadInPieces(int number, const std::function<void(std::string_view piece)>& take) {
    OpenFile& file = At(number);
    // Large enough that the system calls do not count, small enough to stay
    // in the processor's cache between the read and what the caller makes
    // of the piece.
    constexpr std::size_t kPiece = std::size_t{256} << 10;
    const auto buffer = std::make_unique_for_overwrite<char[]>(kPiece);
    while (file.stream) {
        file.stream.read(buffer.get(), static_cast<std::streamsize>(kPiece));
        const auto got = static_cast<std::size_t>(file.stream.gcount());
        if (got > 0) {
            take(std::string_view(buffer.get(), got));
        }
    }
    if (file.stream.bad()) {
        throw DeviceIoError();
    }
}

}  // namespace vantrel
