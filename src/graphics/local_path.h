#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

// Reads one environment variable; empty when it is not set.
using EnvironmentLookup = std::function<std::optional<std::string>(const std::string& name)>;
std::optional<std::string> ProcessEnvironment(const std::string& name);

// The console's fixed file names are Windows paths ("c:\Projects\..."). On
// other systems a drive letter X stands for a folder of its own:
//   $VANTREL_DRIVE_X when set and not empty, else
//   $XDG_DATA_HOME/vantrel-test/x when XDG_DATA_HOME is an absolute path, else
//   $HOME/.local/share/vantrel-test/x, else
//   vantrel-test/x under the current folder.
// Where that folder lacks the file and no $VANTREL_DRIVE_X is set, the same
// path under vantrel-test/x of the system's data folders ($XDG_DATA_DIRS,
// else /usr/local/share and /usr/share) is used when it exists there: an
// installed console finds its sample image so.
// Backslashes become slashes; a path without a drive stays relative.
std::filesystem::path MapWindowsPath(std::string_view windowsPath, const EnvironmentLookup& environment);

// The path as this system opens it: unchanged on Windows, mapped elsewhere.
std::filesystem::path LocalPath(std::string_view windowsPath,
                                const EnvironmentLookup& environment = ProcessEnvironment);

}  // namespace vantrel
