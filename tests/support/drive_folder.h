#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace vantrel::testing {

// A fresh folder that stands for the C: drive while it lives: its path is in
// VANTREL_DRIVE_C for this process and the programs it starts. Removed, and
// the variable unset, when it goes.
class DriveFolder {
public:
    DriveFolder();
    ~DriveFolder();
    DriveFolder(const DriveFolder&) = delete;
    DriveFolder& operator=(const DriveFolder&) = delete;

    const std::filesystem::path& root() const { return root_; }
    // Where SET IMAGE looks: c:\Projects\Vantrel\VantrelTest Utility\FP_blk.hex
    std::filesystem::path ImageFolder() const;
    std::filesystem::path ImageFile() const;
    // Writes the image file, folders included, byte for byte.
    void WriteImage(const std::string& bytes) const;

private:
    std::filesystem::path root_;
};

// Hexadecimal digits in lines of 64 with CR LF, as the image files are
// written, `length` characters in all.
std::string HexImageText(std::size_t length);

}  // namespace vantrel::testing
