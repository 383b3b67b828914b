#pragma once

#include "server/text.h"

#include <QString>

namespace vantrel {

enum class LineBreaks {
    AtCrLf,  // multi-line boxes: CR LF breaks the line
    None,    // single-line boxes
};

// How a box shows an exact text: control characters by their names in
// guillemets («NUL», «ESC», «SUB», «ETX», a lone «CR» or «LF» ...), so the
// technician sees what was sent. The text itself is never changed.
QString VisibleText(TextView text, LineBreaks breaks);

QString ToQString(TextView text);
Text FromQString(const QString& text);

}  // namespace vantrel
