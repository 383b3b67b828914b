#include "visible_text.h"

#include "base/character_names.h"

#include <algorithm>

namespace vantrel {

QString ToQString(TextView text) {
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

Text FromQString(const QString& text) {
    return Text(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size()));
}

QString VisibleText(TextView text, LineBreaks breaks) {
    QString out;
    out.reserve(static_cast<qsizetype>(std::min(text.size(), kShownText) + std::min(text.size(), kShownText) / 8));
    std::size_t line = 0;  // characters of the current line shown so far
    bool lineCut = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (static_cast<std::size_t>(out.size()) >= kShownText) {
            out.append(QStringLiteral("\n\u2026 shown in part: %1 characters in all").arg(text.size()));
            break;
        }
        const char16_t c = text[i];
        const bool lineBreak =
            breaks == LineBreaks::AtCrLf && ((c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') || c == u'\n');
        if (!lineBreak && line >= kShownLine) {
            if (!lineCut) {
                out.append(QStringLiteral(" \u2026 (a longer line, shown in part)"));
                lineCut = true;
            }
            continue;
        }
        if (c == u'\r' && lineBreak) {
            out.append(QChar(u'\n'));
            ++i;
            line = 0;
            lineCut = false;
        } else if (c < 0x20 || c == 0x7F) {
            // The character's name in guillemets: «NUL», «ESC», a lone «CR».
            // Fonts rarely carry the control picture symbols.
            out.append(QChar(kNameOpen));
            const std::string_view name = CharacterName(c);
            out.append(QLatin1String(name.data(), static_cast<qsizetype>(name.size())));
            out.append(QChar(kNameClose));
            if (lineBreak) {
                out.append(QChar(u'\n'));
                line = 0;
                lineCut = false;
            } else {
                ++line;
            }
        } else {
            out.append(QChar(c));
            ++line;
        }
    }
    return out;
}

}  // namespace vantrel
