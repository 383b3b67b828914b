#pragma once

#include <string>
#include <variant>
#include <vector>

namespace vantrel {

// The lines of a script file, or why it cannot be read: a folder, a file
// that cannot be opened, or one whose reading fails part-way (never a
// shorter script). A UTF-8 byte order mark before the first line is dropped.
std::variant<std::vector<std::string>, std::string> ReadScriptFile(const std::string& path);

}  // namespace vantrel
