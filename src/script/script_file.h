#pragma once

#include <string>
#include <variant>
#include <vector>

namespace vantrel {

// The lines of a script file, or why it cannot be read: a folder, a file
// that cannot be opened, one whose reading fails part-way (never a shorter
// script), or one in an encoding it is not read in.
std::variant<std::vector<std::string>, std::string> ReadScriptFile(const std::string& path);

// A script's bytes as UTF-8 (index 0), or why they are refused (index 1).
// UTF-8 with or without its byte order mark, and UTF-16 LE or BE after its
// byte order mark, are read; any other byte is refused with its line and
// its offset in the file, never replaced, so that no character reaches the
// server other than as written.
std::variant<std::string, std::string> DecodeScript(std::string bytes);

}  // namespace vantrel
