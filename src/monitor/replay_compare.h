#pragma once

#include "server/server_calls.h"
#include "server/trace_json.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// How a replayed event's outcome reads against the record: what changed,
// what a mask hides, and the lines a report shows for it. No toolkit here.
namespace vantrel {

// What a put or call gave.
struct Outcome {
    std::optional<Variant> result;       // a call's answer
    std::optional<Variant> writtenBack;  // a by-reference argument after the call
    std::optional<RuntimeError> error;
    std::optional<std::string> notSent;  // why the event could not be sent
    std::optional<double> serverMs;      // how long the server took
};

// The recorded side of a put or call as an outcome, its answer taken over.
Outcome RecordedOutcome(std::optional<Variant> result, const CallEvent& event, const LineExtras& extras);

// Which differences do not count. One rule a line:
//   MEMBER KEY        the key of a key=value answer of MEMBER
//   MEMBER            the whole answer of MEMBER
//   * KEY             the key in any member's answer
//   pattern "GLOB"    any answer line that matches GLOB as a whole (* for any
//                     characters, ? for one; escapes as in scripts: \r \n
//                     \t \0 \e \xHH \uHHHH)
// Blank lines and lines starting with # are ignored. Members are matched
// ignoring case, as late binding does; keys exactly.
class Mask {
public:
    struct Rule {
        std::size_t line = 0;  // in the mask file
        std::string member;    // "*" for any
        std::optional<std::string> key;
        std::optional<Text> pattern;
    };

    // Nothing, and the line and why in `problem`, when a line is none of
    // the forms above.
    static std::optional<Mask> Parse(const std::string& text, std::string& problem);

    const std::vector<Rule>& rules() const { return rules_; }
    bool MasksAnswer(std::string_view member) const;
    bool MasksKey(std::string_view member, std::string_view key) const;
    bool MasksLine(TextView line) const;
    // The rules that hid something since the start.
    const std::vector<bool>& used() const { return used_; }

private:
    std::vector<Rule> rules_;
    mutable std::vector<bool> used_;
};

enum class Verdict {
    Same,
    Masked,     // differed only where the mask says it may
    Changed,    // the answer, its type, a write-back, an error's number or text, or not sent
    NewError,   // raised now, answered in the record
    ErrorGone,  // raised in the record, answered now
};

// "same", "masked", "changed", "new error", "error gone".
std::string VerdictText(Verdict verdict);

struct Comparison {
    Verdict verdict = Verdict::Same;
    std::vector<std::string> lines;  // what the report shows, old and new side by side
};

// Compares a put's or call's outcome with the record. The lines name
// control characters as the call monitor does («CR», «NUL» ...).
Comparison Compare(const std::string& member, const Outcome& recorded, const Outcome& now, const Mask* mask);

// A value as one short line: `"FP=07«CR»«LF»..."` for a text (at most
// `limit` characters drawn), `i2 7` for a number.
std::string ShortValue(const Variant& value, std::size_t limit = 60);

// An answer of key=value lines (CR LF or LF between them, a final NUL
// allowed): each key with its value, in order; a repeated key as "Hose#2".
// Nothing when the text is not of that shape.
std::optional<std::vector<std::pair<std::string, Text>>> KeyValues(TextView text);

}  // namespace vantrel
