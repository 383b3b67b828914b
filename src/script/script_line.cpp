#include "script_line.h"

#include <charconv>
#include <cstdint>
#include <vector>

namespace vantrel {

namespace {

struct Token {
    bool quoted = false;
    std::string word;  // unquoted
    Text text;         // quoted, escapes resolved
};

int HexValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

// Reads a quoted text starting after the opening quote; i ends after the
// closing quote. An unquoted text runs to the end of the line instead.
std::optional<std::string> ReadQuoted(std::string_view line, std::size_t& i, Text& out, bool quoted = true) {
    std::string pending;  // UTF-8 run not yet converted
    const auto flush = [&] {
        out += FromUtf8(pending);
        pending.clear();
    };
    while (i < line.size()) {
        const char c = line[i++];
        if (c == '"' && quoted) {
            flush();
            return std::nullopt;
        }
        if (c != '\\') {
            pending.push_back(c);
            continue;
        }
        if (i >= line.size()) {
            return "a text ends in the middle of an escape";
        }
        const char e = line[i++];
        char16_t code = 0;
        switch (e) {
        case 'r': code = u'\r'; break;
        case 'n': code = u'\n'; break;
        case 't': code = u'\t'; break;
        case '0': code = 0; break;
        case 'e': code = 27; break;
        case '\\': code = u'\\'; break;
        case '"': code = u'"'; break;
        case 'x':
        case 'u': {
            const std::size_t digits = e == 'x' ? 2 : 4;
            if (i + digits > line.size()) {
                return std::string("\\") + e + " needs " + std::to_string(digits) + " hexadecimal digits";
            }
            unsigned value = 0;
            for (std::size_t k = 0; k < digits; ++k) {
                const int digit = HexValue(line[i + k]);
                if (digit < 0) {
                    return std::string("\\") + e + " needs " + std::to_string(digits) + " hexadecimal digits";
                }
                value = value * 16 + static_cast<unsigned>(digit);
            }
            i += digits;
            code = static_cast<char16_t>(value);
            break;
        }
        default: return std::string("unknown escape \\") + e;
        }
        flush();
        out.push_back(code);
    }
    if (!quoted) {
        flush();
        return std::nullopt;
    }
    return "a text has no closing quote";
}

std::variant<std::vector<Token>, ScriptError> Tokenize(std::string_view line) {
    std::vector<Token> tokens;
    std::size_t i = 0;
    while (true) {
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t' || line[i] == '\r')) {
            ++i;
        }
        if (i >= line.size()) {
            break;
        }
        Token token;
        if (line[i] == '"') {
            token.quoted = true;
            ++i;
            if (auto error = ReadQuoted(line, i, token.text)) {
                return ScriptError{*error};
            }
            if (i < line.size() && line[i] != ' ' && line[i] != '\t' && line[i] != '\r') {
                return ScriptError{"a quoted text must be followed by a blank"};
            }
        } else {
            const std::size_t start = i;
            while (i < line.size() && line[i] != ' ' && line[i] != '\t' && line[i] != '\r') {
                if (line[i] == '"') {
                    return ScriptError{"a quote inside a word"};
                }
                ++i;
            }
            token.word = std::string(line.substr(start, i - start));
        }
        tokens.push_back(std::move(token));
    }
    return tokens;
}

bool ParseInt(const std::string& word, std::int64_t& value) {
    if (word.empty()) {
        return false;
    }
    const char* first = word.data();
    const char* last = word.data() + word.size();
    const auto [end, error] = std::from_chars(first, last, value);
    return error == std::errc() && end == last;
}

ScriptError Usage(std::string_view verb, std::string_view form) {
    return ScriptError{"usage: " + std::string(verb) + " " + std::string(form)};
}

// "+30", "+2.5", "+0.125": seconds, in milliseconds; false for anything else.
bool ParseSeconds(const std::string& word, std::int64_t& milliseconds) {
    if (word.size() < 2 || word[0] != '+') {
        return false;
    }
    const std::size_t point = word.find('.');
    const std::string whole = word.substr(1, point == std::string::npos ? std::string::npos : point - 1);
    std::string fraction = point == std::string::npos ? "" : word.substr(point + 1);
    std::int64_t seconds = 0;
    std::int64_t part = 0;
    if (!ParseInt(whole, seconds) || whole[0] == '-' || whole[0] == '+' || seconds > 31'536'000 ||
        (point != std::string::npos && (fraction.empty() || fraction.size() > 3 || fraction[0] == '-' ||
                                        fraction[0] == '+' || !ParseInt(fraction, part)))) {
        return false;
    }
    fraction.resize(3, '0');
    ParseInt(fraction, part);
    milliseconds = seconds * 1000 + part;
    return true;
}

bool InRange(const Token& token, std::int64_t lowest, std::int64_t highest, std::int64_t& value) {
    return !token.quoted && ParseInt(token.word, value) && value >= lowest && value <= highest;
}

ParsedLine ParseServerLine(const std::vector<Token>& tokens) {
    const auto word = [&](std::size_t k, const char* expected = nullptr) {
        return k < tokens.size() && !tokens[k].quoted && (!expected || tokens[k].word == expected);
    };
    const auto quoted = [&](std::size_t k) { return k < tokens.size() && tokens[k].quoted; };
    ScriptCommand command;
    if (word(1, "answer") && word(2)) {
        command.name = tokens[2].word;
        if (tokens.size() == 4 && quoted(3)) {
            command.verb = ScriptCommand::Verb::ServerAnswerText;
            command.text = tokens[3].text;
            return command;
        }
        if (tokens.size() == 5 && word(3, "number") && InRange(tokens[4], INT32_MIN, INT32_MAX, command.number)) {
            command.verb = ScriptCommand::Verb::ServerAnswerNumber;
            return command;
        }
        if (tokens.size() == 5 && word(3, "huge") && InRange(tokens[4], 0, 64 << 20, command.number)) {
            command.verb = ScriptCommand::Verb::ServerAnswerHuge;
            return command;
        }
        return Usage("server answer",
                     "MEMBER \"text\" | MEMBER number N (a 32-bit whole number) | MEMBER huge N (0 to 67108864 "
                     "characters)");
    }
    if (word(1, "fail") && tokens.size() == 5 && word(2) && quoted(4) &&
        InRange(tokens[3], INT32_MIN, INT32_MAX, command.number)) {
        command.verb = ScriptCommand::Verb::ServerFail;
        command.name = tokens[2].word;
        command.text = tokens[4].text;
        return command;
    }
    if (word(1, "delay")) {
        if (tokens.size() == 4 && word(2) && InRange(tokens[3], 0, 600'000, command.number)) {
            command.verb = ScriptCommand::Verb::ServerDelay;
            command.name = tokens[2].word;
            return command;
        }
        return Usage("server delay", "MEMBER MS (0 to 600000 milliseconds)");
    }
    if (word(1, "time")) {
        if (tokens.size() == 3 && word(2) && ParseSeconds(tokens[2].word, command.number)) {
            command.verb = ScriptCommand::Verb::ServerTime;
            return command;
        }
        return Usage("server time", "+SECONDS (a whole number, or with up to three decimals)");
    }
    if (word(1, "auto")) {
        if (tokens.size() == 3 && (word(2, "on") || word(2, "off"))) {
            command.verb = ScriptCommand::Verb::ServerAuto;
            command.number = tokens[2].word == "on" ? 1 : 0;
            return command;
        }
        return Usage("server auto", "on|off");
    }
    if (word(1, "die") && tokens.size() == 2) {
        command.verb = ScriptCommand::Verb::ServerDie;
        return command;
    }
    return Usage("server",
                 "answer MEMBER \"text\" | answer MEMBER number N | answer MEMBER huge N | fail MEMBER N "
                 "\"description\" | delay MEMBER MS | time +SECONDS | auto on|off | die");
}

ParsedLine ParseForecourtLine(const std::vector<Token>& tokens) {
    static constexpr const char* kForms =
        "lift P hose H | hang P | card P \"track data\" | keys P \"keys\" | cash P \"amount\" | packet P \"data\" | "
        "wash \"code\" (P a position 1 to 32, H a hose 1 to 8)";
    ScriptCommand command;
    const std::string event = tokens.size() > 1 && !tokens[1].quoted ? tokens[1].word : "";
    if (event == "wash") {
        if (tokens.size() != 3 || !tokens[2].quoted) {
            return Usage("forecourt", kForms);
        }
        command.verb = ScriptCommand::Verb::ForecourtWash;
        command.text = tokens[2].text;
        return command;
    }
    std::int64_t position = 0;
    if (tokens.size() < 3 || !InRange(tokens[2], 1, 32, position)) {
        return Usage("forecourt", kForms);
    }
    command.position = static_cast<int>(position);
    if (event == "lift") {
        std::int64_t hose = 0;
        if (tokens.size() != 5 || tokens[3].quoted || tokens[3].word != "hose" || !InRange(tokens[4], 1, 8, hose)) {
            return Usage("forecourt", kForms);
        }
        command.verb = ScriptCommand::Verb::ForecourtLift;
        command.hose = static_cast<int>(hose);
        return command;
    }
    if (event == "hang") {
        if (tokens.size() != 3) {
            return Usage("forecourt", kForms);
        }
        command.verb = ScriptCommand::Verb::ForecourtHang;
        return command;
    }
    using Verb = ScriptCommand::Verb;
    const Verb verb = event == "card"     ? Verb::ForecourtCard
                      : event == "keys"   ? Verb::ForecourtKeys
                      : event == "cash"   ? Verb::ForecourtCash
                      : event == "packet" ? Verb::ForecourtPacket
                                          : Verb::Click;
    if (verb == Verb::Click || tokens.size() != 4 || !tokens[3].quoted) {
        return Usage("forecourt", kForms);
    }
    command.verb = verb;
    command.text = tokens[3].text;
    return command;
}

}  // namespace

ParsedLine ParseScriptLine(std::string_view line) {
    std::size_t first = 0;
    while (first < line.size() && (line[first] == ' ' || line[first] == '\t')) {
        ++first;
    }
    if (first == line.size() || line[first] == '#' || line.substr(first) == "\r") {
        return std::monostate{};
    }
    auto tokenized = Tokenize(line);
    if (auto* error = std::get_if<ScriptError>(&tokenized)) {
        return *error;
    }
    const auto& tokens = std::get<std::vector<Token>>(tokenized);
    if (tokens.empty()) {
        return std::monostate{};
    }
    if (tokens[0].quoted) {
        return ScriptError{"a line must begin with a command word"};
    }
    const std::string& verb = tokens[0].word;
    const auto word = [&](std::size_t k) { return k < tokens.size() && !tokens[k].quoted; };
    const auto quoted = [&](std::size_t k) { return k < tokens.size() && tokens[k].quoted; };
    ScriptCommand command;

    if (verb == "click" || verb == "dblclick" || verb == "print") {
        if (tokens.size() != 2 || !word(1)) {
            return Usage(verb, "NAME");
        }
        command.verb = verb == "click"      ? ScriptCommand::Verb::Click
                       : verb == "dblclick" ? ScriptCommand::Verb::DblClick
                                            : ScriptCommand::Verb::Print;
        command.name = tokens[1].word;
        return command;
    }
    if (verb == "type" || verb == "expect") {
        if (tokens.size() != 3 || !word(1) || !quoted(2)) {
            return Usage(verb, "NAME \"text\"");
        }
        command.verb = verb == "type" ? ScriptCommand::Verb::Type : ScriptCommand::Verb::Expect;
        command.name = tokens[1].word;
        command.text = tokens[2].text;
        return command;
    }
    if (verb == "answer") {
        command.verb = ScriptCommand::Verb::Answer;
        command.count = 0;
        if (quoted(1)) {
            command.reply = ScriptCommand::Reply::Text;
            command.text = tokens[1].text;
        } else if (word(1) && tokens[1].word == "cancel") {
            command.reply = ScriptCommand::Reply::Cancel;
        } else if (word(1) && tokens[1].word == "yes") {
            command.reply = ScriptCommand::Reply::Yes;
        } else if (word(1) && tokens[1].word == "no") {
            command.reply = ScriptCommand::Reply::No;
        } else if (word(1) && tokens[1].word == "ok") {
            command.reply = ScriptCommand::Reply::Ok;
        } else {
            return Usage(verb, "\"text\"|cancel|yes|no|ok [ticks N]");
        }
        if (tokens.size() == 2) {
            return command;
        }
        std::int64_t ticks = 0;
        if (tokens.size() == 4 && word(2) && tokens[2].word == "ticks" && word(3) && ParseInt(tokens[3].word, ticks) &&
            ticks >= 0 && ticks <= 100000) {
            command.count = static_cast<int>(ticks);
            return command;
        }
        return Usage(verb, "\"text\"|cancel|yes|no|ok [ticks N]");
    }
    if (verb == "tick") {
        command.verb = ScriptCommand::Verb::Tick;
        if (tokens.size() == 1) {
            return command;
        }
        std::int64_t count = 0;
        if (tokens.size() == 2 && word(1) && ParseInt(tokens[1].word, count) && count >= 0 && count <= 100000) {
            command.count = static_cast<int>(count);
            return command;
        }
        return Usage(verb, "[N], N from 0 to 100000");
    }
    if (verb == "shot") {
        if (tokens.size() != 3 || !word(1)) {
            return Usage(verb, "WINDOW FILE");
        }
        command.verb = ScriptCommand::Verb::Shot;
        command.name = tokens[1].word;
        command.file = tokens[2].quoted ? ToUtf8(tokens[2].text) : tokens[2].word;
        return command;
    }
    if (verb == "menu") {
        if (tokens.size() != 3 || !quoted(1) || !quoted(2)) {
            return Usage(verb, "\"MENU\" \"ENTRY\"");
        }
        command.verb = ScriptCommand::Verb::Menu;
        command.name = ToUtf8(tokens[1].text);
        command.text = tokens[2].text;
        return command;
    }
    if (verb == "server") {
        return ParseServerLine(tokens);
    }
    if (verb == "forecourt") {
        return ParseForecourtLine(tokens);
    }
    return ScriptError{"unknown command '" + verb + "'"};
}

std::variant<Text, ScriptError> ParseEscapedText(std::string_view text) {
    Text out;
    std::size_t at = 0;
    if (auto error = ReadQuoted(text, at, out, false)) {
        return ScriptError{*error};
    }
    return out;
}

}  // namespace vantrel
