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

}  // namespace vantrel::testing
