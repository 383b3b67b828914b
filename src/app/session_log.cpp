#include "session_log.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <system_error>
#include <vector>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#include <windows.h>
#endif

namespace vantrel {

namespace {

constexpr std::size_t kKeptLogs = 20;
constexpr std::uintmax_t kKeptBytes = 100u * 1000 * 1000;

std::filesystem::path FromVariable(const char* name) {
    const char* value = std::getenv(name);
    return value && *value ? std::filesystem::path(value) : std::filesystem::path();
}

// Leaves room for one more log: the oldest go while more than kKeptLogs - 1
// remain or they hold more than kKeptBytes.
void Prune(const std::filesystem::path& folder) {
    std::error_code error;
    std::vector<std::filesystem::path> logs;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        const std::string name = entry.path().filename().string();
        if (entry.is_regular_file(error) && name.starts_with("session-") && name.ends_with(".jsonl")) {
            logs.push_back(entry.path());
        }
    }
    std::sort(logs.begin(), logs.end());  // the names sort by their start
    std::uintmax_t bytes = 0;
    for (const auto& log : logs) {
        bytes += std::filesystem::file_size(log, error);
    }
    for (std::size_t first = 0; first < logs.size(); ++first) {
        if (logs.size() - first < kKeptLogs && bytes <= kKeptBytes) {
            break;
        }
        bytes -= std::min(bytes, std::filesystem::file_size(logs[first], error));
        std::filesystem::remove(logs[first], error);
    }
}

// A file made new for this run, never one that exists: the system makes it
// and refuses a name already taken in one step, so that two runs started in
// the same second cannot both have one log. The C runtime that MinGW links
// on Windows (msvcrt.dll) ignores fopen's "x" and would open, and empty,
// another run's log; the system's own call does not. Null with errno set
// (EEXIST for a name taken) when it cannot be made.
std::FILE* CreateNew(const std::filesystem::path& path) {
#if defined(_WIN32)
    HANDLE handle = CreateFileW(path.wstring().c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        errno = error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS ? EEXIST
                : error == ERROR_ACCESS_DENIED                              ? EACCES
                                                                            : EIO;
        return nullptr;
    }
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_WRONLY | _O_BINARY);
    if (descriptor < 0) {
        CloseHandle(handle);
        return nullptr;
    }
    std::FILE* file = _fdopen(descriptor, "wb");
    if (!file) {
        _close(descriptor);
    }
    return file;
#else
    return std::fopen(path.string().c_str(), "wbx");
#endif
}

}  // namespace

std::filesystem::path SessionLogFolder() {
#if defined(_WIN32)
    const std::filesystem::path base = FromVariable("LOCALAPPDATA");
    return base.empty() ? base : base / "vantrel-test" / "logs";
#else
    if (const auto state = FromVariable("XDG_STATE_HOME"); !state.empty()) {
        return state / "vantrel-test" / "logs";
    }
    const auto home = FromVariable("HOME");
    return home.empty() ? home : home / ".local" / "state" / "vantrel-test" / "logs";
#endif
}

SessionLog OpenSessionLog(const std::filesystem::path& folder) {
    SessionLog log;
    if (folder.empty()) {
        log.problem = "no folder for session logs (neither XDG_STATE_HOME nor HOME is set)";
        return log;
    }
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        log.problem = "cannot make " + folder.string() + ": " + error.message();
        return log;
    }
    Prune(folder);
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#if defined(_WIN32)
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%Y-%m-%dT%H-%M-%S", &local);
    // Two runs started in the same second get a number behind the time.
    for (int attempt = 1; attempt <= 100 && !log.file; ++attempt) {
        const std::string name =
            std::string("session-") + stamp + (attempt > 1 ? "-" + std::to_string(attempt) : std::string()) + ".jsonl";
        const std::filesystem::path path = folder / name;
        log.file = CreateNew(path);  // never another run's log
        if (log.file) {
            log.path = path.string();
        } else if (errno != EEXIST) {
            log.problem = "cannot write " + path.string() + ": " + std::strerror(errno);
            return log;
        }
    }
    if (!log.file) {
        log.problem = "cannot name a new log in " + folder.string();
    }
    return log;
}

}  // namespace vantrel
