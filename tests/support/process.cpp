#include "support/process.h"

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace vantrel::testing {

std::string Slurp(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream out;
    out << file.rdbuf();
    return out.str();
}

namespace {

std::string Quoted(const std::string& word) {
    std::string out = "'";
    for (const char c : word) {
        if (c == '\'') {
            out += "'\\''";
        } else {
            out.push_back(c);
        }
    }
    return out + "'";
}

}  // namespace

ScriptRun RunScript(const std::string& binary, const std::string& script,
                    const std::vector<std::string>& extraArguments) {
    std::string pattern = (std::filesystem::temp_directory_path() / "vantrel-script-XXXXXX").string();
    ScriptRun run;
    if (!::mkdtemp(pattern.data())) {
        return run;
    }
    const std::filesystem::path directory = pattern;
    run.directory = directory.string();
    std::ofstream(directory / "script.vts", std::ios::binary) << script;
    // timeout ends a run that hangs: 124 after its SIGTERM, or a SIGKILL ten
    // seconds later if that was not enough.
    std::string command = "timeout --kill-after=10 " + std::to_string(kScriptTimeLimitSeconds) + " " + Quoted(binary) +
                          " --script " + Quoted((directory / "script.vts").string()) + " --trace " +
                          Quoted((directory / "trace.jsonl").string());
    for (const std::string& argument : extraArguments) {
        command += " " + Quoted(argument);
    }
    command += " > " + Quoted((directory / "out.txt").string()) + " 2> " + Quoted((directory / "err.txt").string()) +
               " < /dev/null";
    const int status = std::system(command.c_str());
    if (status != -1 && WIFEXITED(status)) {
        run.exitCode = WEXITSTATUS(status);
        run.timedOut = run.exitCode == 124;
        // The shell reports a child killed by a signal as 128 + signal.
        if (run.exitCode > 128 || run.timedOut) {
            run.exitCode = -1;
        }
    }
    run.out = Slurp(directory / "out.txt");
    run.err = Slurp(directory / "err.txt");
    std::istringstream trace(Slurp(directory / "trace.jsonl"));
    for (std::string line; std::getline(trace, line);) {
        run.trace.push_back(line);
    }
    return run;
}

}  // namespace vantrel::testing
