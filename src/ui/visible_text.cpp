#include "visible_text.h"

#include "base/character_names.h"

namespace vantrel {

QString ToQString(TextView text) {
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

Text FromQString(const QString& text) {
    return Text(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size()));
}

QString VisibleText(TextView text, LineBreaks breaks) {
    QString out;
    out.reserve(static_cast<qsizetype>(text.size() + text.size() / 8));
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n' && breaks == LineBreaks::AtCrLf) {
            out.append(QChar(u'\n'));
            ++i;
        } else if (c < 0x20 || c == 0x7F) {
            // The character's name in guillemets: «NUL», «ESC», a lone «CR».
            // Fonts rarely carry the control picture symbols.
            out.append(QChar(kNameOpen));
            const std::string_view name = CharacterName(c);
            out.append(QLatin1String(name.data(), static_cast<qsizetype>(name.size())));
            out.append(QChar(kNameClose));
            if (c == u'\n' && breaks == LineBreaks::AtCrLf) {
                out.append(QChar(u'\n'));
            }
        } else {
            out.append(QChar(c));
        }
    }
    return out;
}

}  // namespace vantrel
