#include "local_path.h"

#include <cctype>
#include <cstdlib>

namespace vantrel {

namespace {

std::optional<std::string> NonEmpty(const EnvironmentLookup& environment, const std::string& name) {
    std::optional<std::string> value = environment(name);
    if (value && value->empty()) {
        return std::nullopt;
    }
    return value;
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
    std::filesystem::path local;
    if (windowsPath.size() >= 2 && windowsPath[1] == ':' && std::isalpha(static_cast<unsigned char>(windowsPath[0]))) {
        local = DriveFolder(windowsPath[0], environment);
        windowsPath.remove_prefix(2);
    }
    // Each piece between backslashes is one name; empty pieces ("\\", a
    // leading "\") add nothing.
    while (!windowsPath.empty()) {
        const std::size_t end = windowsPath.find('\\');
        const std::string_view name = windowsPath.substr(0, end);
        if (!name.empty()) {
            local /= std::string(name);
        }
        if (end == std::string_view::npos) {
            break;
        }
        windowsPath.remove_prefix(end + 1);
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
