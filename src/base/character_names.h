#pragma once

#include <string_view>

namespace vantrel {

// The names protocol documents give the codes below 32 and DEL ("NUL", "CR",
// "ESC" ...); an empty view for every other code. The console's boxes and the
// call monitor draw such a character as its name in guillemets («NUL»), which
// reads in any font.
std::string_view CharacterName(char16_t code);

inline constexpr char16_t kNameOpen = u'\u00AB';   // «
inline constexpr char16_t kNameClose = u'\u00BB';  // »

}  // namespace vantrel
