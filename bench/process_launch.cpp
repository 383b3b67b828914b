#include "process_launch.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstring>

extern char** environ;

namespace vantrel::bench {

namespace {

using Clock = std::chrono::steady_clock;

// Closes a descriptor when it goes out of scope.
class Descriptor {
public:
    explicit Descriptor(int fd = -1)
        : fd_(fd) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return fd_; }
    void Close() {
        if (fd_ >= 0) {
            ::close(fd_);
            fd_ = -1;
        }
    }

private:
    int fd_;
};

double SecondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

// "shown 41236 KiB": true for a line that starts with the word, with the
// size when the line has one.
bool ShownLine(const std::string& line, double& residentBytes) {
    if (line.rfind("shown", 0) != 0 || (line.size() > 5 && line[5] != ' ')) {
        return false;
    }
    unsigned long long kibibytes = 0;
    char unit[8] = {};
    if (std::sscanf(line.c_str() + 5, " %llu %7s", &kibibytes, unit) == 2 && std::string(unit) == "KiB") {
        residentBytes = static_cast<double>(kibibytes) * 1024.0;
    }
    return true;
}

}  // namespace

Launch LaunchUntilShown(const std::vector<std::string>& command, double timeoutSeconds) {
    Launch launch;
    if (command.empty()) {
        launch.problem = "no program given";
        return launch;
    }
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        launch.problem = std::string("pipe: ") + std::strerror(errno);
        return launch;
    }
    Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, writing.get(), STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::vector<char*> arguments;
    for (const std::string& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);

    const Clock::time_point start = Clock::now();
    pid_t pid = 0;
    const int spawned = ::posix_spawn(&pid, command[0].c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    writing.Close();
    if (spawned != 0) {
        launch.problem = command[0] + ": " + std::strerror(spawned);
        return launch;
    }

    // Read until the program closes its end, noting when the line came.
    std::string output;
    bool timedOut = false;
    for (;;) {
        const double left = timeoutSeconds - SecondsSince(start);
        if (left <= 0) {
            timedOut = true;
            break;
        }
        pollfd watch{reading.get(), POLLIN, 0};
        const int ready = ::poll(&watch, 1, static_cast<int>(left * 1000) + 1);
        if (ready < 0 && errno == EINTR) {
            continue;
        }
        if (ready <= 0) {
            continue;  // the time-out is checked above
        }
        char buffer[256];
        const ssize_t got = ::read(reading.get(), buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            break;
        }
        output.append(buffer, static_cast<std::size_t>(got));
        for (std::size_t end; !launch.shown && (end = output.find('\n')) != std::string::npos;) {
            if (ShownLine(output.substr(0, end), launch.residentBytes)) {
                launch.shown = true;
                launch.secondsToShown = SecondsSince(start);
            }
            output.erase(0, end + 1);
        }
    }
    if (timedOut) {
        ::kill(pid, SIGKILL);
    }
    int status = 0;
    rusage usage{};
    while (::wait4(pid, &status, 0, &usage) < 0 && errno == EINTR) {
    }
    const auto seconds = [](const timeval& time) { return static_cast<double>(time.tv_sec) + time.tv_usec / 1e6; };
    launch.cpuSeconds = seconds(usage.ru_utime) + seconds(usage.ru_stime);
    launch.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    if (timedOut) {
        launch.problem = command[0] + " did not end within " + std::to_string(timeoutSeconds) + " s";
    } else if (!launch.shown) {
        launch.problem = command[0] + " ended (exit code " + std::to_string(launch.exitCode) + ") without showing";
    } else if (launch.exitCode != 0) {
        launch.problem = command[0] + " showed but ended with exit code " + std::to_string(launch.exitCode);
    } else if (launch.residentBytes <= 0) {
        launch.problem = command[0] + " showed without its resident size";
    }
    return launch;
}

}  // namespace vantrel::bench
