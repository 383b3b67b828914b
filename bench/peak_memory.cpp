#include "peak_memory.h"

#include "image_drive.h"

#include <sys/resource.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace vantrel::bench {

namespace {

namespace fs = std::filesystem;

// The peak resident size of one script run, in bytes; negative when the run
// did not end with 0.
double PeakOf(const std::string& console, const fs::path& folder, const std::string& name, const std::string& script) {
    std::ofstream(folder / (name + ".vts"), std::ios::binary) << script;
    const std::string command = "cd '" + folder.string() + "' && VANTREL_DRIVE_C='" + folder.string() + "' exec '" +
                                console + "' --simulator --script " + name + ".vts --trace " + name +
                                ".jsonl > /dev/null 2>&1 < /dev/null";
    return PeakOfCommand(command, 0);
}

}  // namespace

double PeakOfCommand(const std::string& command, int highestExit) {
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::execl("/bin/sh", "sh", "-c", command.c_str(), static_cast<char*>(nullptr));
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    if (pid < 0 || ::wait4(pid, &status, 0, &usage) != pid || !WIFEXITED(status) || WEXITSTATUS(status) > highestExit) {
        return -1;
    }
    return static_cast<double>(usage.ru_maxrss) * 1024;
}

PeakMemory MeasurePeakMemory(const std::string& console) {
    PeakMemory peak;
    const fs::path folder = DriveWithImage(64u << 20);
    peak.baselineBytes = PeakOf(console, folder, "baseline", "click Button3\n");
    const double image64 =
        PeakOf(console, folder, "image", "click TEST_FUNCTION_BUTTON\nclick SET_IMAGE_BUTTON\nclick EXIT_BUTTON\n");
    const double answer16 =
        PeakOf(console, folder, "answer", "server answer SystemVersions huge 16777216\nclick SystemVersions\n");
    if (peak.baselineBytes < 0 || image64 < 0 || answer16 < 0) {
        peak.problem = "a script run did not end with 0";
        return peak;
    }
    peak.imageBytes = image64 - peak.baselineBytes;
    peak.answerBytes = answer16 - peak.baselineBytes;
    return peak;
}

}  // namespace vantrel::bench
