#include "image_drive.h"

#include "graphics/local_path.h"
#include "graphics/test_functions.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <string>
#include <system_error>

namespace vantrel::bench {

namespace fs = std::filesystem;

fs::path ImageIn(const fs::path& drive) {
    return MapWindowsPath(kImageFile, [&drive](const std::string& name) -> std::optional<std::string> {
        if (name == "VANTREL_DRIVE_C") {
            return drive.string();
        }
        return std::nullopt;
    });
}

fs::path DriveWithImage(std::size_t length) {
    const fs::path drive = fs::temp_directory_path() / ("vantrel-bench-drive-" + std::to_string(length));
    const fs::path file = ImageIn(drive);
    if (std::error_code error; fs::file_size(file, error) != length || error) {
        fs::create_directories(file.parent_path());
        const std::string line = std::string(64, 'F') + "\r\n";
        std::ofstream out(file, std::ios::binary | std::ios::trunc);
        for (std::size_t written = 0; written < length; written += line.size()) {
            out.write(line.data(), static_cast<std::streamsize>(std::min(line.size(), length - written)));
        }
    }
    return drive;
}

}  // namespace vantrel::bench
