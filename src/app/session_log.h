#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

namespace vantrel {

// Where interactive runs keep their logs: $XDG_STATE_HOME/vantrel-test/logs,
// else ~/.local/state/vantrel-test/logs; %LOCALAPPDATA%\vantrel-test\logs on
// Windows. Empty when none of these is known.
std::filesystem::path SessionLogFolder();

// A new log for this run, named by its start ("session-2026-11-24T15-30-12
// .jsonl"). Older logs go first so that at most 20 remain, this one
// included, and together at most 100 MB.
struct SessionLog {
    std::FILE* file = nullptr;
    std::string path;
    std::string problem;  // why there is none; empty when opened
};
SessionLog OpenSessionLog(const std::filesystem::path& folder);

}  // namespace vantrel
