#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vantrel::testing {

// The whole of a file, bytes as they are; empty when it cannot be read.
std::string Slurp(const std::filesystem::path& path);

// The program run once in script mode, with what it left behind.
struct ScriptRun {
    int exitCode = -1;
    std::string out;
    std::string err;
    std::vector<std::string> trace;  // one JSON object per line
    std::string directory;           // where the script, trace and pictures are
    bool timedOut = false;           // stopped after kScriptTimeLimitSeconds
};

// No run may take longer: one that does is stopped and counts as a hang.
inline constexpr int kScriptTimeLimitSeconds = 300;

// Writes the script to a fresh folder, runs vantrel-test --script with a
// trace there, and collects the outcome. The exit code is -1 when the
// program ended through a signal or had to be stopped, which no test accepts.
ScriptRun RunScript(const std::string& binary, const std::string& script,
                    const std::vector<std::string>& extraArguments = {});

}  // namespace vantrel::testing
