#pragma once

#include "block_parser.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel::simulation {

// Walks a block line by line in the order a member expects its lines, and
// keeps the first thing that does not fit as a readable problem. Once a
// problem is found every further step fails quietly, so a handler reads its
// lines top to bottom and looks at ok() once before it changes anything.
class BlockReader {
public:
    explicit BlockReader(TextView block);

    // The next line must be KEY=value: its value; otherwise a problem.
    std::optional<TextView> Take(std::string_view key);
    // The next line's value when it has this key; nothing, and no problem,
    // when it has another.
    std::optional<TextView> TakeIf(std::string_view key);
    // The next line must be the bare word.
    bool TakeWord(std::string_view word);
    // The next line whatever it is, or nullptr at the end.
    const BlockLine* TakeAny();
    // Whether the next line is KEY=...
    bool NextIs(std::string_view key);
    // Nothing but empty lines may follow.
    void ExpectEnd();
    bool AtEnd();

    // Everything from the value of the line just taken to the end of the body.
    TextView RestFromLastLine() const;

    // Typed lines; each records its problem and gives nothing when the line
    // does not fit.
    // "FuelingPosition=07" or "ReaderPosition=07": two digits 01 to 32.
    std::optional<int> Position(std::string_view key);
    // minDigits to maxDigits decimal digits, at most highest.
    std::optional<std::int64_t> Number(std::string_view key, std::size_t minDigits, std::size_t maxDigits,
                                       std::int64_t highest);
    // A unit price in thousandths of the currency a litre: "1459" as the
    // fixed blocks write it, or "1.459" as a technician may type it.
    std::optional<std::int64_t> Price(std::string_view key);

    // Records a problem about the line just taken (the first one sticks).
    void Fail(const std::string& message);
    void FailAt(const BlockLine& line, const std::string& message);

    bool ok() const { return problem_.empty(); }
    const std::string& problem() const { return problem_; }

private:
    const BlockLine* Peek();
    void Advance();
    void Missing(const std::string& what);

    CommandBlockView view_;
    CommandBlockView::Iterator next_;
    BlockLine last_;
    std::string problem_;
};

}  // namespace vantrel::simulation
