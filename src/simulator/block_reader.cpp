#include "block_reader.h"

#include "answer_text.h"

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

}  // namespace vantrel::simulation
