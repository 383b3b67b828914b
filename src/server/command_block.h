#pragma once

#include "text.h"

#include <cstdint>
#include <utility>

namespace vantrel {

// The command data block: the one text value a command hands to the server.
// It validates nothing and never reorders, trims or changes case.
class CommandBlock {
public:
    CommandBlock();
    CommandBlock& Clear();
    CommandBlock& AddLine(TextView line);    // line, CR LF
    CommandBlock& AddLineLf(TextView line);  // line, LF alone
    // The key ("Hose=") and its value make the line, appended in place.
    CommandBlock& AddLine(TextView key, TextView value);
    CommandBlock& AddLineLf(TextView key, TextView value);
    CommandBlock& Append(TextView text);  // no separator
    CommandBlock& Append(char16_t character);
    CommandBlock& Terminate();  // one NUL
    const vantrel::Text& Text() const& { return text_; }
    // A finished block that is not kept gives its text up rather than a copy.
    vantrel::Text Text() && { return std::move(text_); }

private:
    vantrel::Text text_;
};

// "01" .. "32": two digits of a fueling position.
Text PositionText(int position);

// Decimal digits left-padded with "0" to the width; never cut.
Text ZeroPad(std::int64_t number, int width);

}  // namespace vantrel
