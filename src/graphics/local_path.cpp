#include "local_path.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <system_error>
#include <vector>

namespace vantrel {

namespace {

std::optional<std::string> NonEmpty(const EnvironmentLookup& environment, const std::string& name) {
    std::optional<std::string> value = environment(name);
    if (value && value->empty()) {
        return std::nullopt;
    }
    return value;
}

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }
char Upper(char c) { return static_cast<char>(std::toupper(static_cast<unsigned char>(c))); }

// $XDG_DATA_DIRS, absolute entries only, else /usr/local/share and /usr/share.
std::vector<std::filesystem::path> DataFolders(const EnvironmentLookup& environment) {
    std::vector<std::filesystem::path> folders;
    const std::string list = NonEmpty(environment, "XDG_DATA_DIRS").value_or("/usr/local/share:/usr/share");
    std::size_t start = 0;
    while (start <= list.size()) {
        const std::size_t end = std::min(list.find(':', start), list.size());
        const std::filesystem::path folder = list.substr(start, end - start);
        if (folder.is_absolute()) {
            folders.push_back(folder);
        }
        start = end + 1;
    }
    return folders;
}

std::filesystem::path DriveFolder(char drive, const EnvironmentLookup& environment) {
    const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(drive)));
    const char upper = static_cast<char>(std::toupper(static_cast<unsigned char>(drive)));
    if (const auto moved = NonEmpty(environment, std::string("VANTREL_DRIVE_") + upper)) {
        return *moved;
    }
    const std::filesystem::path below = std::filesystem::path("vantrel-test") / std::string(1, lower);
    // A relative XDG_DATA_HOME is invalid and is to be ignored.
    if (const auto data = NonEmpty(environment, "XDG_DATA_HOME"); data && std::filesystem::path(*data).is_absolute()) {
        return std::filesystem::path(*data) / below;
    }
    if (const auto home = NonEmpty(environment, "HOME")) {
        return std::filesystem::path(*home) / ".local" / "share" / below;
    }
    return below;
}

}  // namespace

std::optional<std::string> ProcessEnvironment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    if (!value) {
        return std::nullopt;
    }
    return std::string(value);
}

std::filesystem::path MapWindowsPath(std::string_view windowsPath, const EnvironmentLookup& environment) {
    std::filesystem::path folder;
    char drive = 0;
    if (windowsPath.size() >= 2 && windowsPath[1] == ':' && std::isalpha(static_cast<unsigned char>(windowsPath[0]))) {
        drive = windowsPath[0];
        folder = DriveFolder(drive, environment);
        windowsPath.remove_prefix(2);
    }
    // Each piece between backslashes is one name; empty pieces ("\\", a
    // leading "\") add nothing.
    std::filesystem::path below;
    while (!windowsPath.empty()) {
        const std::size_t end = windowsPath.find('\\');
        const std::string_view name = windowsPath.substr(0, end);
        if (!name.empty()) {
            below /= std::string(name);
        }
        if (end == std::string_view::npos) {
            break;
        }
        windowsPath.remove_prefix(end + 1);
    }
    std::filesystem::path local = folder / below;
    // A drive of the user's own lacks a file that an installed copy of the
    // console brought (the sample image): the system's data folders are
    // looked in, in their order, unless the drive was named outright.
    if (drive != 0 && !below.empty() && !NonEmpty(environment, std::string("VANTREL_DRIVE_") + Upper(drive))) {
        std::error_code error;
        if (!std::filesystem::exists(local, error)) {
            for (const std::filesystem::path& data : DataFolders(environment)) {
                const std::filesystem::path installed = data / "vantrel-test" / std::string(1, Lower(drive)) / below;
                if (std::filesystem::exists(installed, error)) {
                    return installed;
                }
            }
        }
    }
    return local;
}

std::filesystem::path LocalPath(std::string_view windowsPath, const EnvironmentLookup& environment) {
#if defined(_WIN32)
    (void)environment;
    return std::filesystem::path(std::string(windowsPath));
#else
    return MapWindowsPath(windowsPath, environment);
#endif
}

}  // namespace vantrel
