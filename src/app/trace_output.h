#pragma once

#include <cstdio>
#include <optional>
#include <string>

namespace vantrel {

// A trace file opened for this run, or why it cannot be: the file is the
// run's own. A trace that would overwrite the script, a file another run is
// writing, and a FIFO that nobody reads are refused; nothing waits.
struct OpenedTrace {
    std::FILE* file = nullptr;
    std::string problem;  // empty when opened
};
OpenedTrace OpenTrace(const std::string& path, const std::optional<std::string>& script);

// A write to a pipe whose reader has left is a failed write, reported as
// such, not a signal that ends the program.
void IgnoreBrokenPipes();

// Room for every file the console may hold open: SET IMAGE keeps up to 255
// image files open until the end, beside the program's own. Raises the soft
// limit on open files towards the hard one where it is lower.
void RaiseOpenFileLimit();

}  // namespace vantrel
