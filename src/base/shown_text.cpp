#include "shown_text.h"

#include "base/character_names.h"

#include <algorithm>
#include <string>

namespace vantrel {

namespace {

void AppendAscii(Text& out, std::string_view ascii) { out.append(ascii.begin(), ascii.end()); }

}  // namespace

Text ShownText(TextView text, LineBreaks breaks) {
    Text out;
    out.reserve(std::min(text.size(), kShownText) + std::min(text.size(), kShownText) / 8);
    std::size_t line = 0;  // characters of the current line shown so far
    bool lineCut = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (out.size() >= kShownText) {
            out += u"\n\u2026 shown in part: ";
            AppendAscii(out, std::to_string(text.size()));
            out += u" characters in all";
            break;
        }
        const char16_t c = text[i];
        const bool lineBreak =
            breaks == LineBreaks::AtCrLf && ((c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') || c == u'\n');
        if (!lineBreak && line >= kShownLine) {
            if (!lineCut) {
                out += u" \u2026 (a longer line, shown in part)";
                lineCut = true;
            }
            continue;
        }
        if (c == u'\r' && lineBreak) {
            out += u'\n';
            ++i;
            line = 0;
            lineCut = false;
        } else if (c < 0x20 || c == 0x7F) {
            // The character's name in guillemets: «NUL», «ESC», a lone «CR».
            // Fonts rarely carry the control picture symbols.
            out += kNameOpen;
            AppendAscii(out, CharacterName(c));
            out += kNameClose;
            if (lineBreak) {
                out += u'\n';
                line = 0;
                lineCut = false;
            } else {
                ++line;
            }
        } else {
            out += c;
            ++line;
        }
    }
    return out;
}

}  // namespace vantrel
