#pragma once

#include "server/text.h"

#include <QString>

#include <cstddef>

namespace vantrel {

enum class LineBreaks {
    AtCrLf,  // multi-line boxes: CR LF breaks the line
    None,    // single-line boxes
};

// How a box shows an exact text: control characters by their names in
// guillemets («NUL», «ESC», «SUB», «ETX», a lone «CR» or «LF» ...), so the
// technician sees what was sent. The text itself is never changed.
//
// What a widget lays out is bounded, since a line of many megabytes costs the
// toolkit tens of bytes a character: a line beyond kShownLine characters and
// a text beyond kShownText are shown in part, with a note of how long they
// are. The model keeps the whole text.
inline constexpr std::size_t kShownLine = 16 * 1024;
inline constexpr std::size_t kShownText = 1024 * 1024;
QString VisibleText(TextView text, LineBreaks breaks);

QString ToQString(TextView text);
Text FromQString(const QString& text);

}  // namespace vantrel
