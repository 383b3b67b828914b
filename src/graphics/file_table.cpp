#include "file_table.h"

#include "server/runtime_error.h"

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
    file->stream.open(path, std::ios::in | std::ios::binary);
    if (!file->stream.is_open()) {
        throw PathFileAccessError();
    }
    files_.push_back(std::move(file));
    return OpenCount();
}

std::string FileTable::ReadToEnd(int number) {
    if (number < 1 || number > OpenCount()) {
        throw BadFileNameOrNumber();
    }
    OpenFile& file = *files_[static_cast<std::size_t>(number - 1)];
    constexpr std::size_t kChunk = std::size_t{1} << 20;
    std::string data;
    // One read of the size the system reports. A file that grows meanwhile,
    // or reports no size, is read on in chunks until its end.
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file.path, error);
    std::size_t wanted = kChunk;
    if (!error) {
        wanted = static_cast<std::size_t>(size);
        data.reserve(wanted + kChunk);
    }
    while (file.stream) {
        const std::size_t had = data.size();
        data.resize(had + wanted);
        file.stream.read(data.data() + had, static_cast<std::streamsize>(wanted));
        data.resize(had + static_cast<std::size_t>(file.stream.gcount()));
        wanted = kChunk;
    }
    if (file.stream.bad()) {
        throw DeviceIoError();
    }
    return data;
}

}  // namespace vantrel
