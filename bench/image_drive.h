#pragma once

#include <cstddef>
#include <filesystem>

namespace vantrel::bench {

// Where the console finds its image file when drive C: is the folder.
std::filesystem::path ImageIn(const std::filesystem::path& drive);

// A drive folder per size, holding the image file as the console names it:
// hexadecimal text in lines of 64 digits with CR LF, written once.
std::filesystem::path DriveWithImage(std::size_t length);

}  // namespace vantrel::bench
