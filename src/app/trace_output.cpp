#include "trace_output.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#include <windows.h>
#else
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace vantrel {

namespace {

std::string Refused(const std::string& path, const std::string& why) {
    return "cannot write the trace " + path + ": " + why;
}

constexpr const char* kHeld = "another run of vantrel-test is writing it";
constexpr const char* kFolder = "it is a folder";
constexpr const char* kNoPermission = "no permission to write it";
constexpr const char* kReadOnly = "the file system is read-only";

bool SameFile(const std::string& a, const std::string& b) {
    std::error_code error;
    return std::filesystem::equivalent(a, b, error) && !error;
}

#if !defined(_WIN32)
std::string WhyNotOpened(int error) {
    switch (error) {
    case ENXIO: return "it is a FIFO that no program reads";
    case EISDIR: return kFolder;
    case EACCES: return kNoPermission;
    case EPERM: return "the file may not be changed (" + std::string(std::strerror(error)) + ")";
    case EROFS: return kReadOnly;
    default: return std::strerror(error);
    }
}
#endif

}  // namespace

OpenedTrace OpenTrace(const std::string& path, const std::optional<std::string>& script) {
    OpenedTrace opened;
    if (script && SameFile(path, *script)) {
        opened.problem = Refused(path, "it is the script itself");
        return opened;
    }
#if defined(_WIN32)
    // Opened by the system's own call, so that its error says which of the
    // reasons it is; shared for reading only: another run cannot write it.
    std::wstring wide(path.size(), L'\0');
    wide.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, path.data(), static_cast<int>(path.size()),
                                                             wide.data(), static_cast<int>(wide.size()))));
    HANDLE handle =
        CreateFileW(wide.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        const DWORD attributes = GetFileAttributesW(wide.c_str());
        std::string why;
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY)) {
            why = kFolder;
        } else if (error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION) {
            why = kHeld;
        } else if (error == ERROR_WRITE_PROTECT) {
            why = kReadOnly;
        } else if (error == ERROR_ACCESS_DENIED && attributes != INVALID_FILE_ATTRIBUTES &&
                   (attributes & FILE_ATTRIBUTE_READONLY)) {
            why = "the file is read-only";
        } else if (error == ERROR_ACCESS_DENIED) {
            why = kNoPermission;
        } else {
            why = "system error " + std::to_string(error);
        }
        opened.problem = Refused(path, why);
        return opened;
    }
    SetEndOfFile(handle);  // ours now: what was there goes
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_WRONLY | _O_BINARY);
    opened.file = descriptor >= 0 ? _fdopen(descriptor, "wb") : nullptr;
    if (!opened.file) {
        opened.problem = Refused(path, std::strerror(errno));
        if (descriptor >= 0) {
            _close(descriptor);
        } else {
            CloseHandle(handle);
        }
    }
#else
    // Not truncated before it is known to be ours; a FIFO opened without
    // waiting for a reader.
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        opened.problem = Refused(path, WhyNotOpened(errno));
        return opened;
    }
    struct stat status {};
    ::fstat(descriptor, &status);
    if (S_ISREG(status.st_mode)) {
        if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
            const int error = errno;
            ::close(descriptor);
            opened.problem = Refused(path, error == EWOULDBLOCK ? kHeld : std::strerror(error));
            return opened;
        }
        if (::ftruncate(descriptor, 0) != 0) {
            const int error = errno;
            ::close(descriptor);
            opened.problem = Refused(path, std::strerror(error));
            return opened;
        }
    }
    // Writes wait for a slow reader, as to any file.
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
    opened.file = ::fdopen(descriptor, "wb");
    if (!opened.file) {
        opened.problem = Refused(path, std::strerror(errno));
        ::close(descriptor);
    }
#endif
    return opened;
}

void RaiseOpenFileLimit() {
#if !defined(_WIN32)
    constexpr rlim_t kWanted = 255 + 256;  // the image files, and the toolkit's own
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY && limit.rlim_cur < kWanted) {
        limit.rlim_cur = limit.rlim_max == RLIM_INFINITY ? kWanted : std::min(kWanted, limit.rlim_max);
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }
#endif
}

void IgnoreBrokenPipes() {
#if !defined(_WIN32)
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

}  // namespace vantrel
