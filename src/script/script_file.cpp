#include "script_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace vantrel {

std::variant<std::vector<std::string>, std::string> ReadScriptFile(const std::string& path) {
    const std::string cannot = "cannot read the script " + path + ": ";
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        return cannot + "it is a folder";
    }
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) {
        return cannot + std::strerror(errno);
    }
    std::string text;
    char buffer[64 * 1024];
    std::size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0) {
        text.append(buffer, got);
    }
    const bool failed = std::ferror(file) != 0;
    const int reason = errno;
    std::fclose(file);
    if (failed) {
        return cannot + (reason != 0 ? std::strerror(reason) : "the read failed") + " (after " +
               std::to_string(text.size()) + " bytes)";
    }
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.erase(0, 3);
    }
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find('\n', start);
        if (end == std::string::npos) {
            lines.push_back(text.substr(start));
            break;
        }
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

}  // namespace vantrel
