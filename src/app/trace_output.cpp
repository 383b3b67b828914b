#include "trace_output.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#if defined(_WIN32)
#include <share.h>
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

bool SameFile(const std::string& a, const std::string& b) {
    std::error_code error;
    return std::filesystem::equivalent(a, b, error) && !error;
}

}  // namespace

OpenedTrace OpenTrace(const std::string& path, const std::optional<std::string>& script) {
    OpenedTrace opened;
    if (script && SameFile(path, *script)) {
        opened.problem = Refused(path, "it is the script itself");
        return opened;
    }
#if defined(_WIN32)
    // Shared for reading only: another run cannot open it for writing.
    opened.file = _fsopen(path.c_str(), "wb", _SH_DENYWR);
    if (!opened.file) {
        opened.problem = Refused(path, errno == EACCES ? "another program is writing it" : std::strerror(errno));
    }
#else
    // Not truncated before it is known to be ours; a FIFO opened without
    // waiting for a reader.
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        opened.problem = Refused(path, errno == ENXIO ? "it is a FIFO that no program reads" : std::strerror(errno));
        return opened;
    }
    struct stat status {};
    ::fstat(descriptor, &status);
    if (S_ISREG(status.st_mode)) {
        if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
            const int error = errno;
            ::close(descriptor);
            opened.problem = Refused(
                path, error == EWOULDBLOCK ? "another run of vantrel-test is writing it" : std::strerror(error));
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
