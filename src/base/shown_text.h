#pragma once

#include "server/text.h"

#include <cstddef>

namespace vantrel {

enum class LineBreaks {
    AtCrLf,  // multi-line boxes: CR LF breaks the line
    None,    // single-line boxes
};

// How a box shows an exact text, on any front-end: control characters by
// their names in guillemets («NUL», «ESC», «SUB», «ETX», a lone «CR» or «LF»
// ...), so the technician sees what was sent, and a line break as one LF.
// The text itself is never changed.
//
// What a widget lays out is bounded, since a line of many megabytes costs a
// toolkit tens of bytes a character: a line beyond kShownLine characters and
// a text beyond kShownText are shown in part, with a note of how long they
// are. The model keeps the whole text.
inline constexpr std::size_t kShownLine = 16 * 1024;
inline constexpr std::size_t kShownText = 1024 * 1024;
Text ShownText(TextView text, LineBreaks breaks);

}  // namespace vantrel
