#pragma once

#include "server/text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vantrel::simulation {

// An answer of key=value lines, each closed by CR LF.
class AnswerText {
public:
    AnswerText& Add(std::string_view key, TextView value);
    AnswerText& Add(std::string_view key, std::string_view value);
    AnswerText& Add(std::string_view key, const char* value) { return Add(key, std::string_view(value)); }
    AnswerText& Add(std::string_view key, std::int64_t number);
    AnswerText& Add(std::string_view key, int number) { return Add(key, static_cast<std::int64_t>(number)); }
    Text Take() { return std::move(text_); }

private:
    void Key(std::string_view key);
    Text text_;
};

Text Ascii(std::string_view text);
bool SameAscii(TextView text, std::string_view ascii);

// 12345678 microlitres as "12.345" litres (cut, not rounded: a pump shows
// what has passed).
Text Litres(std::int64_t microlitres);
// 1801 cents as "18.01".
Text Money(std::int64_t cents);
// 1459 thousandths as "1.459".
Text UnitPrice(std::int64_t thousandths);

// A text made fit for one line of an answer or an error entry: printable
// characters as they are, CR as <CR>, LF as <LF>, NUL as <NUL>, ESC as <ESC>,
// other control characters as <xHH>; longer texts are cut with "...".
Text OneLine(TextView text, std::size_t limit);
std::string Readable(TextView text, std::size_t limit = 40);
// The same between double quotes, for a value that may be empty or blank.
std::string Quoted(TextView text, std::size_t limit = 40);

}  // namespace vantrel::simulation
