#include "block_reader.h"

#include "answer_text.h"
#include "fueling_position.h"

namespace vantrel::simulation {

BlockReader::BlockReader(TextView block)
    : view_(ParseCommandBlock(block))
    , next_(view_.begin()) {
    if (view_.problem()) {
        problem_ = view_.problem();
    }
}

const BlockLine* BlockReader::Peek() { return next_ == view_.end() ? nullptr : &*next_; }

void BlockReader::Advance() {
    last_ = *next_;
    ++next_;
}

void BlockReader::Missing(const std::string& what) {
    const BlockLine* line = Peek();
    if (!line) {
        Fail("the block ends where " + what + " was expected");
    } else {
        FailAt(*line, what + " expected, found \"" + Readable(line->text) + "\"");
    }
}

std::optional<TextView> BlockReader::Take(std::string_view key) {
    if (!ok()) {
        return std::nullopt;
    }
    const BlockLine* line = Peek();
    if (!line || line->kind != BlockLine::Kind::Keyed || !SameAscii(line->key, key)) {
        Missing(std::string(key) + "=");
        return std::nullopt;
    }
    Advance();
    return last_.value;
}

std::optional<TextView> BlockReader::TakeIf(std::string_view key) {
    if (!ok() || !NextIs(key)) {
        return std::nullopt;
    }
    Advance();
    return last_.value;
}

bool BlockReader::TakeWord(std::string_view word) {
    if (!ok()) {
        return false;
    }
    const BlockLine* line = Peek();
    if (!line || line->kind != BlockLine::Kind::Word || !SameAscii(line->key, word)) {
        Missing("the word " + std::string(word));
        return false;
    }
    Advance();
    return true;
}

const BlockLine* BlockReader::TakeAny() {
    if (!ok() || !Peek()) {
        return nullptr;
    }
    Advance();
    return &last_;
}

bool BlockReader::NextIs(std::string_view key) {
    const BlockLine* line = Peek();
    return line && line->kind == BlockLine::Kind::Keyed && SameAscii(line->key, key);
}

bool BlockReader::AtEnd() {
    while (const BlockLine* line = Peek()) {
        if (line->kind != BlockLine::Kind::Empty) {
            return false;
        }
        Advance();
    }
    return true;
}

void BlockReader::ExpectEnd() {
    if (ok() && !AtEnd()) {
        FailAt(*Peek(), "nothing more expected, found \"" + Readable(Peek()->text) + "\"");
    }
}

TextView BlockReader::RestFromLastLine() const { return view_.RestFrom(last_); }

void BlockReader::Fail(const std::string& message) {
    if (!ok()) {
        return;
    }
    problem_ = last_.number == 0 ? message : "line " + std::to_string(last_.number) + ": " + message;
}

void BlockReader::FailAt(const BlockLine& line, const std::string& message) {
    if (ok()) {
        problem_ = "line " + std::to_string(line.number) + ": " + message;
    }
}

std::optional<int> BlockReader::Position(std::string_view key) {
    const auto value = Take(key);
    if (!value) {
        return std::nullopt;
    }
    const auto number = ParseDigits(*value, 2, 2);
    if (!number || *number < 1 || *number > kPositions) {
        Fail(std::string(key) + "=" + Readable(*value) + " is not a fueling position (01 to 32)");
        return std::nullopt;
    }
    return static_cast<int>(*number);
}

std::optional<std::int64_t> BlockReader::Number(std::string_view key, std::size_t minDigits, std::size_t maxDigits,
                                                std::int64_t highest) {
    const auto value = Take(key);
    if (!value) {
        return std::nullopt;
    }
    const auto number = ParseDigits(*value, minDigits, maxDigits);
    if (!number || *number > highest) {
        const std::string digits = minDigits != maxDigits
                                       ? std::to_string(minDigits) + " to " + std::to_string(maxDigits) + " digits"
                                   : minDigits == 1 ? std::string("one digit")
                                                    : std::to_string(minDigits) + " digits";
        Fail(std::string(key) + "=" + Readable(*value) + " is not " + digits + " up to " + std::to_string(highest));
        return std::nullopt;
    }
    return number;
}

std::optional<std::int64_t> BlockReader::Price(std::string_view key) {
    const auto value = Take(key);
    if (!value) {
        return std::nullopt;
    }
    const std::size_t point = value->find(u'.');
    const auto whole = ParseDigits(value->substr(0, point), 1, 6);
    const TextView fraction = point == TextView::npos ? TextView() : value->substr(point + 1);
    const auto part = fraction.empty() ? std::optional<std::int64_t>(0) : ParseDigits(fraction, 1, 3);
    if (!whole || !part || (point != TextView::npos && fraction.empty()) || (point != TextView::npos && *whole > 999)) {
        Fail(std::string(key) + "=" + Readable(*value) +
             " is not a price (1 to 6 digits in thousandths, or up to three decimals: 1459, 1.459)");
        return std::nullopt;
    }
    if (point == TextView::npos) {
        return whole;
    }
    std::int64_t thousandths = *part;
    for (std::size_t digits = fraction.size(); digits < 3; ++digits) {
        thousandths *= 10;
    }
    return *whole * 1000 + thousandths;
}

}  // namespace vantrel::simulation
