#include "replay_compare.h"

#include "monitor/call_monitor_model.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <unordered_map>

namespace vantrel {

namespace {

constexpr std::size_t kContextBefore = 20;
constexpr std::size_t kContextAfter = 40;

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameMember(std::string_view rule, std::string_view member) {
    if (rule == "*") {
        return true;
    }
    return rule.size() == member.size() &&
           std::equal(rule.begin(), rule.end(), member.begin(), [](char a, char b) { return Lower(a) == Lower(b); });
}

// A whole line against a pattern of * (any run) and ? (any one character);
// the last * is retried, so the time is at most the product of the lengths.
bool Matches(TextView pattern, TextView text) {
    std::size_t p = 0;
    std::size_t t = 0;
    std::size_t star = Text::npos;
    std::size_t resume = 0;
    while (t < text.size()) {
        if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == text[t])) {
            ++p;
            ++t;
        } else if (p < pattern.size() && pattern[p] == u'*') {
            star = p++;
            resume = t;
        } else if (star != Text::npos) {
            p = star + 1;
            t = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == u'*') {
        ++p;
    }
    return p == pattern.size();
}

// The lines of a text, each with its end (CR LF, LF or none).
std::vector<TextView> Lines(TextView text) {
    std::vector<TextView> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t lf = text.find(u'\n', start);
        const std::size_t end = lf == Text::npos ? text.size() : lf + 1;
        lines.push_back(text.substr(start, end - start));
        start = end;
    }
    return lines;
}

TextView WithoutEnd(TextView line) {
    if (!line.empty() && line.back() == u'\n') {
        line.remove_suffix(1);
    }
    if (!line.empty() && line.back() == u'\r') {
        line.remove_suffix(1);
    }
    return line;
}

std::string Drawn(TextView text, std::size_t limit) { return ToUtf8(SymbolText(text, SymbolLines::OneLine, limit)); }

std::string ErrorText(const RuntimeError& error) {
    return "error " + std::to_string(error.number()) + " " +
           WithControlsEscaped(error.description(), ControlEscapes::All);
}

std::string AnswerText(const Outcome& outcome) {
    if (outcome.error) {
        return ErrorText(*outcome.error);
    }
    return outcome.result ? ShortValue(*outcome.result) : std::string("no answer");
}

std::string SideBySide(const std::string& what, const std::string& old, const std::string& now) {
    return what + ": old " + old + "  |  new " + now;
}

// The offset of the first difference, with the characters around it.
std::string FirstDifference(TextView old, TextView now) {
    const std::size_t common = std::min(old.size(), now.size());
    std::size_t at = 0;
    while (at < common && old[at] == now[at]) {
        ++at;
    }
    const std::size_t from = at > kContextBefore ? at - kContextBefore : 0;
    const auto around = [&](TextView text) {
        const TextView part = text.substr(std::min(from, text.size()), at - from + kContextAfter);
        return std::string(from > 0 ? "..." : "") + "\"" + Drawn(part, part.size()) + "\"" +
               (from + part.size() < text.size() ? "..." : "");
    };
    return SideBySide("text differs at offset " + std::to_string(at) + " (lengths " + std::to_string(old.size()) +
                          ", " + std::to_string(now.size()) + ")",
                      around(old), around(now));
}

Text WithoutMaskedLines(TextView text, const Mask& mask) {
    Text kept;
    for (const TextView line : Lines(text)) {
        if (!mask.MasksLine(WithoutEnd(line))) {
            kept += line;
        }
    }
    return kept;
}

// The differences of two texts, masked ones left out and counted.
void CompareTexts(const std::string& member, TextView oldText, TextView newText, const Mask* mask,
                  Comparison& comparison) {
    Text oldKept;
    Text newKept;
    if (mask && std::any_of(mask->rules().begin(), mask->rules().end(),
                            [](const Mask::Rule& r) { return r.pattern.has_value(); })) {
        oldKept = WithoutMaskedLines(oldText, *mask);
        newKept = WithoutMaskedLines(newText, *mask);
        if (oldKept == newKept) {
            comparison.verdict = Verdict::Masked;
            return;
        }
        oldText = oldKept;
        newText = newKept;
    }
    if (mask && mask->MasksAnswer(member)) {
        comparison.verdict = Verdict::Masked;
        return;
    }
    const auto oldKeys = KeyValues(oldText);
    const auto newKeys = KeyValues(newText);
    if (oldKeys && newKeys) {
        bool masked = false;
        std::vector<std::string> lines;
        // By name, so that answers of many thousand keys compare in linear time.
        std::unordered_map<std::string_view, const Text*> oldByKey;
        std::unordered_map<std::string_view, const Text*> newByKey;
        for (const auto& [key, value] : *oldKeys) {
            oldByKey.emplace(key, &value);
        }
        for (const auto& [key, value] : *newKeys) {
            newByKey.emplace(key, &value);
        }
        const auto note = [&](const std::string& key, std::string line) {
            if (mask && mask->MasksKey(member, key.substr(0, key.find('#')))) {
                masked = true;
            } else {
                lines.push_back(std::move(line));
            }
        };
        for (const auto& [key, value] : *oldKeys) {
            const auto other = newByKey.find(key);
            if (other == newByKey.end()) {
                note(key, "key " + key + " removed: old \"" + Drawn(value, 60) + "\"");
            } else if (*other->second != value) {
                note(key, SideBySide("key " + key + " changed", "\"" + Drawn(value, 60) + "\"",
                                     "\"" + Drawn(*other->second, 60) + "\""));
            }
        }
        for (const auto& [key, value] : *newKeys) {
            if (!oldByKey.contains(key)) {
                note(key, "key " + key + " added: new \"" + Drawn(value, 60) + "\"");
            }
        }
        if (!lines.empty()) {
            comparison.verdict = Verdict::Changed;
            comparison.lines = std::move(lines);
            return;
        }
        if (masked) {
            comparison.verdict = Verdict::Masked;
            return;
        }
        // The same keys and values, yet not the same text: the order or the
        // line ends changed. Shown by offset below.
    }
    comparison.verdict = Verdict::Changed;
    comparison.lines.push_back(FirstDifference(oldText, newText));
}

}  // namespace

Outcome RecordedOutcome(std::optional<Variant> result, const CallEvent& event, const LineExtras& extras) {
    Outcome outcome;
    outcome.result = std::move(result);
    outcome.error = event.error;
    outcome.serverMs = extras.serverMs;
    if (event.op == CallEvent::Op::Call && event.byRef) {
        // A plain trace keeps the argument as it went out; a replay's own
        // record also keeps what the server wrote back.
        outcome.writtenBack = extras.writtenBack ? extras.writtenBack : event.argument;
    }
    return outcome;
}

std::optional<Mask> Mask::Parse(const std::string& text, std::string& problem) {
    Mask mask;
    std::size_t start = 0;
    std::size_t number = 0;
    while (start < text.size()) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        std::string line = text.substr(start, end - start);
        start = end + 1;
        ++number;
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        const std::size_t first = line.find_first_not_of(" \t");
        if (first == std::string::npos || line[first] == '#') {
            continue;
        }
        line = line.substr(first, line.find_last_not_of(" \t") + 1 - first);
        Rule rule;
        rule.line = number;
        const auto bad = [&](const std::string& why) {
            problem = "line " + std::to_string(number) + ": " + why;
            return std::nullopt;
        };
        if (line.rfind("pattern", 0) == 0 && (line.size() == 7 || line[7] == ' ' || line[7] == '\t')) {
            const std::size_t open = line.find('"');
            const std::size_t close = line.rfind('"');
            if (open == std::string::npos || close == open || line.find_first_not_of(" \t", 7) != open ||
                close != line.size() - 1) {
                return bad("a pattern is written in double quotes: pattern \"Time=*\"");
            }
            rule.member = "*";
            rule.pattern = Unescaped(FromUtf8(line.substr(open + 1, close - open - 1)));
        } else {
            const std::size_t blank = line.find_first_of(" \t");
            rule.member = line.substr(0, blank);
            if (blank != std::string::npos) {
                const std::size_t keyStart = line.find_first_not_of(" \t", blank);
                const std::string key = line.substr(keyStart);
                if (key.find_first_of(" \t") != std::string::npos) {
                    return bad("more than a member and a key: \"" + WithControlsEscaped(line, ControlEscapes::All) +
                               "\"");
                }
                rule.key = key;
            } else if (rule.member == "*") {
                return bad("\"*\" alone would hide every answer: name a key after it");
            }
        }
        mask.rules_.push_back(std::move(rule));
    }
    mask.used_.assign(mask.rules_.size(), false);
    return mask;
}

bool Mask::MasksAnswer(std::string_view member) const {
    for (std::size_t i = 0; i < rules_.size(); ++i) {
        if (!rules_[i].key && !rules_[i].pattern && SameMember(rules_[i].member, member)) {
            used_[i] = true;
            return true;
        }
    }
    return false;
}

bool Mask::MasksKey(std::string_view member, std::string_view key) const {
    for (std::size_t i = 0; i < rules_.size(); ++i) {
        if (rules_[i].key && *rules_[i].key == key && SameMember(rules_[i].member, member)) {
            used_[i] = true;
            return true;
        }
    }
    return false;
}

bool Mask::MasksLine(TextView line) const {
    for (std::size_t i = 0; i < rules_.size(); ++i) {
        if (rules_[i].pattern && Matches(*rules_[i].pattern, line)) {
            used_[i] = true;
            return true;
        }
    }
    return false;
}

std::optional<std::vector<std::pair<std::string, Text>>> KeyValues(TextView text) {
    if (!text.empty() && text.back() == 0) {
        text.remove_suffix(1);
    }
    std::vector<std::pair<std::string, Text>> keys;
    std::unordered_map<std::string, std::size_t> counts;
    for (const TextView whole : Lines(text)) {
        const TextView line = WithoutEnd(whole);
        if (line.empty()) {
            continue;
        }
        const std::size_t equals = line.find(u'=');
        if (equals == 0 || equals == Text::npos) {
            return std::nullopt;
        }
        std::string key = ToUtf8(line.substr(0, equals));
        const std::size_t seen = counts[key]++;
        if (seen > 0) {
            key += "#" + std::to_string(seen + 1);
        }
        keys.emplace_back(std::move(key), Text(line.substr(equals + 1)));
    }
    if (keys.empty()) {
        return std::nullopt;
    }
    return keys;
}

std::string ShortValue(const Variant& value, std::size_t limit) {
    char number[48];
    switch (value.kind()) {
    case Variant::Kind::Empty: return "empty";
    case Variant::Kind::Null: return "null";
    case Variant::Kind::Text: return "\"" + Drawn(value.text(), limit) + "\"";
    case Variant::Kind::Int16: return "i2 " + std::to_string(value.int16());
    case Variant::Kind::Int32: return "i4 " + std::to_string(value.int32());
    case Variant::Kind::Double: std::snprintf(number, sizeof number, "r8 %.17g", value.real()); return number;
    case Variant::Kind::Single:
        std::snprintf(number, sizeof number, "r4 %.9g", static_cast<double>(value.single()));
        return number;
    case Variant::Kind::Boolean: return value.boolean() ? "bool true" : "bool false";
    case Variant::Kind::Currency: return "cy " + ToUtf8(ToText(value));
    case Variant::Kind::Date: return "date " + ToUtf8(value.dateText());
    }
    return {};
}

std::string VerdictText(Verdict verdict) {
    switch (verdict) {
    case Verdict::Same: return "same";
    case Verdict::Masked: return "masked";
    case Verdict::Changed: return "changed";
    case Verdict::NewError: return "new error";
    case Verdict::ErrorGone: return "error gone";
    }
    return {};
}

Comparison Compare(const std::string& member, const Outcome& recorded, const Outcome& now, const Mask* mask) {
    Comparison comparison;
    if (now.notSent) {
        comparison.verdict = Verdict::Changed;
        comparison.lines.push_back("not sent: " + *now.notSent);
        return comparison;
    }
    if (recorded.error && !now.error) {
        comparison.verdict = Verdict::ErrorGone;
        comparison.lines.push_back(SideBySide("error gone", ErrorText(*recorded.error), AnswerText(now)));
        return comparison;
    }
    if (!recorded.error && now.error) {
        comparison.verdict = Verdict::NewError;
        comparison.lines.push_back(SideBySide("new error", AnswerText(recorded), ErrorText(*now.error)));
        return comparison;
    }
    if (recorded.error && now.error) {
        if (recorded.error->number() != now.error->number() ||
            recorded.error->description() != now.error->description()) {
            comparison.verdict = Verdict::Changed;
            comparison.lines.push_back(SideBySide("error changed", ErrorText(*recorded.error), ErrorText(*now.error)));
        }
        return comparison;
    }
    if (recorded.result != now.result) {
        if (!recorded.result || !now.result || recorded.result->kind() != now.result->kind()) {
            comparison.verdict = Verdict::Changed;
            comparison.lines.push_back(SideBySide("answer type changed", AnswerText(recorded), AnswerText(now)));
        } else if (recorded.result->is(Variant::Kind::Text)) {
            CompareTexts(member, recorded.result->text(), now.result->text(), mask, comparison);
        } else if (mask && mask->MasksAnswer(member)) {
            comparison.verdict = Verdict::Masked;
        } else {
            comparison.verdict = Verdict::Changed;
            comparison.lines.push_back(SideBySide("answer changed", AnswerText(recorded), AnswerText(now)));
        }
    }
    if (recorded.writtenBack && now.writtenBack && *recorded.writtenBack != *now.writtenBack) {
        comparison.verdict = Verdict::Changed;
        comparison.lines.push_back(
            SideBySide("written back", ShortValue(*recorded.writtenBack), ShortValue(*now.writtenBack)));
    }
    return comparison;
}

}  // namespace vantrel
