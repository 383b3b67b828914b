#include "visible_text.h"

namespace vantrel {

QString ToQString(TextView text) {
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

Text FromQString(const QString& text) {
    return Text(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size()));
}

QString VisibleText(TextView text, LineBreaks breaks) { return ToQString(ShownText(text, breaks)); }

}  // namespace vantrel
