#include "display_picture.h"

#include "answer_text.h"

namespace vantrel::simulation {

namespace {

bool Digits(TextView text, std::size_t at, std::size_t count) {
    if (at + count > text.size()) {
        return false;
    }
    for (std::size_t i = at; i < at + count; ++i) {
        if (text[i] < u'0' || text[i] > u'9') {
            return false;
        }
    }
    return true;
}

// Length of a quoted text starting at `at` (the opening quote), quotes
// included, or 0 when there is none.
std::size_t Quoted(TextView text, std::size_t at) {
    if (at >= text.size() || text[at] != u'"') {
        return 0;
    }
    const std::size_t close = text.find(u'"', at + 1);
    return close == TextView::npos ? 0 : close - at + 1;
}

std::size_t DigitRun(TextView text, std::size_t at) {
    std::size_t length = 0;
    while (at + length < text.size() && text[at + length] >= u'0' && text[at + length] <= u'9') {
        ++length;
    }
    return length;
}

// One ESC element at `at` (just after the ESC): its length, or 0 when it is
// malformed, with the reason.
std::size_t Element(TextView text, std::size_t at, std::string& why) {
    if (at >= text.size()) {
        why = "the message ends right after an ESC";
        return 0;
    }
    const char16_t code = text[at];
    switch (code) {
    case u'G': return Digits(text, at + 1, 1) ? 2 : 1;
    case kSub:
        if (Digits(text, at + 1, 3)) {
            return 4;
        }
        why = "ESC SUB needs three digits";
        return 0;
    case u'=':
        if (Digits(text, at + 1, 6)) {
            return 7;
        }
        why = "ESC = needs three digits of column and three of row";
        return 0;
    case u'A':
        if (Digits(text, at + 1, 2)) {
            return 3;
        }
        why = "ESC A needs two digits";
        return 0;
    case u'F': {
        const std::size_t name = Quoted(text, at + 1);
        const std::size_t size = name == 0 ? 0 : DigitRun(text, at + 1 + name);
        if (name > 2 && size > 0) {
            return 1 + name + size;
        }
        why = "ESC F needs a font name in double quotes and a size";
        return 0;
    }
    case u'S': {
        const std::size_t label = Quoted(text, at + 2);
        if (at + 1 < text.size() && text[at + 1] >= u'1' && text[at + 1] <= u'8' && label > 0) {
            return 2 + label;
        }
        why = "ESC S needs a soft key 1 to 8 and a label in double quotes";
        return 0;
    }
    default: break;
    }
    why = "unknown display element ESC " + Readable(text.substr(at, 1));
    return 0;
}

}  // namespace

std::string CheckDisplayMessage(TextView message) {
    for (std::size_t i = message.find(kEsc); i != TextView::npos; i = message.find(kEsc, i)) {
        std::string why;
        const std::size_t length = Element(message, i + 1, why);
        if (length == 0) {
            return "character " + std::to_string(i + 1) + " of the message: " + why;
        }
        i += 1 + length;
    }
    return {};
}

DisplayPicture RenderDisplay(TextView message) {
    DisplayPicture picture;
    while (!message.empty() && (message.back() == u'\n' || message.back() == u'\r')) {
        message.remove_suffix(1);
    }
    Text* line = nullptr;
    const auto newLine = [&]() -> Text& {
        picture.lines.emplace_back();
        line = &picture.lines.back();
        return *line;
    };
    for (std::size_t i = 0; i < message.size();) {
        const char16_t c = message[i];
        if (c == u'\r' && i + 1 < message.size() && message[i + 1] == u'\n') {
            newLine();
            i += 2;
            continue;
        }
        if (c == u'\n') {
            newLine();
            ++i;
            continue;
        }
        if (c != kEsc) {
            (line ? *line : newLine()).push_back(c);
            ++i;
            continue;
        }
        std::string why;
        const std::size_t length = Element(message, i + 1, why);
        if (length == 0) {
            // Shown as it came; CheckDisplayMessage has already said why.
            (line ? *line : newLine()).push_back(c);
            ++i;
            continue;
        }
        const TextView element = message.substr(i + 1, length);
        switch (element[0]) {
        case u'G':
            picture.lines.clear();
            line = nullptr;
            picture.lineCount = length == 2 ? element[1] - u'0' : 0;
            break;
        case u'=': {
            Text& positioned = newLine();
            positioned += u'@';
            positioned.append(element.substr(1, 3));
            positioned += u',';
            positioned.append(element.substr(4, 3));
            positioned += u' ';
            break;
        }
        case u'A':
            picture.align = Text(element.substr(1));
            line = nullptr;
            break;
        case u'F': {
            const std::size_t close = element.find(u'"', 2);
            picture.font = Text(element.substr(2, close - 2)) + u" " + Text(element.substr(close + 1));
            break;
        }
        case u'S': {
            const auto key = static_cast<std::size_t>(element[1] - u'1');
            picture.softKeys[key] = Text(element.substr(3, element.size() - 4));
            break;
        }
        default: break;  // SUB: an attribute reset that shows nothing
        }
        i += 1 + length;
    }
    return picture;
}

}  // namespace vantrel::simulation
