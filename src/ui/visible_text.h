#pragma once

#include "base/shown_text.h"
#include "server/text.h"

#include <QString>

namespace vantrel {

// The box's view of an exact text (see ShownText), as a QString.
QString VisibleText(TextView text, LineBreaks breaks);

QString ToQString(TextView text);
Text FromQString(const QString& text);

}  // namespace vantrel
