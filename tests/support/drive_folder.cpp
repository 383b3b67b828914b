#include "support/drive_folder.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace vantrel::testing {

DriveFolder::DriveFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vantrel-drive-XXXXXX").string();
    if (!::mkdtemp(pattern.data())) {
        throw std::runtime_error("cannot make a drive folder under " + pattern);
    }
    root_ = pattern;
    ::setenv("VANTREL_DRIVE_C", root_.c_str(), 1);
}

DriveFolder::~DriveFolder() {
    ::unsetenv("VANTREL_DRIVE_C");
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
}

std::filesystem::path DriveFolder::ImageFolder() const {
    return root_ / "Projects" / "Vantrel" / "VantrelTest Utility";
}

std::filesystem::path DriveFolder::ImageFile() const { return ImageFolder() / "FP_blk.hex"; }

void DriveFolder::WriteImage(const std::string& bytes) const {
    std::filesystem::create_directories(ImageFolder());
    std::ofstream(ImageFile(), std::ios::binary | std::ios::trunc) << bytes;
}

std::string HexImageText(std::size_t length) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(length);
    for (std::size_t i = 0; text.size() < length; ++i) {
        text.push_back(i % 66 == 64 ? '\r' : i % 66 == 65 ? '\n' : kDigits[(i * 7) % 16]);
    }
    return text;
}

}  // namespace vantrel::testing
