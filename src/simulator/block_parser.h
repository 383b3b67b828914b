#pragma once

#include "server/text.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace vantrel::simulation {

// One line of a command block, as views into the block: nothing is copied.
struct BlockLine {
    enum class Kind {
        Keyed,  // KEY=value, the key letters and digits only
        Word,   // a bare request word: letters and digits only
        Empty,  // only the separator
        Free,   // anything else: a continuation of a message, a receipt line
    };
    enum class End {
        CrLf,
        Lf,
        None,  // the block stops inside this line
    };

    Kind kind = Kind::Empty;
    End end = End::None;
    TextView text;           // the line without its separator
    TextView key;            // Keyed: before the first "="; Word: the word
    TextView value;          // Keyed: after the first "="
    std::size_t number = 0;  // 1 for the first line
    std::size_t offset = 0;  // where the line starts in the body
};

// A command block taken apart lazily: the frame is checked at once, the lines
// are found one at a time while iterating. The view must not outlive the
// text it was made from.
class CommandBlockView {
public:
    class Iterator {
    public:
        Iterator() = default;
        Iterator(TextView body, std::size_t offset, std::size_t number);
        const BlockLine& operator*() const { return line_; }
        const BlockLine* operator->() const { return &line_; }
        Iterator& operator++();
        bool operator==(const Iterator& other) const { return atEnd_ == other.atEnd_ && next_ == other.next_; }

    private:
        void Read();
        TextView body_;
        std::size_t next_ = 0;
        bool atEnd_ = true;
        BlockLine line_;
    };

    explicit CommandBlockView(TextView block);

    // The block without its closing NUL.
    TextView body() const { return body_; }
    // Whether the block ended with a NUL.
    bool terminated() const { return terminated_; }
    // Why the frame cannot be read (a NUL before the end), or nullptr.
    const char* problem() const { return problem_; }

    Iterator begin() const;
    Iterator end() const { return Iterator(); }

    // Everything from a keyed line's value to the end of the body: a message
    // with its continuation lines.
    TextView RestFrom(const BlockLine& line) const;

private:
    TextView body_;
    bool terminated_ = false;
    const char* problem_ = nullptr;
};

// The block parser: splits a block into lines without copying it. Any text is
// accepted; what a member makes of the lines is the member's business.
CommandBlockView ParseCommandBlock(TextView block);

// A packet block: "ReaderPosition=NN" CR LF "PacketCount=NNN" CR LF
// "PacketData=" and exactly that many characters of data, which may hold any
// character, then CR LF NUL or nothing at all.
struct PacketBlock {
    TextView position;  // the text after "ReaderPosition="
    std::size_t count = 0;
    TextView data;
    bool closed = false;  // ends with CR LF NUL
};

struct PacketParse {
    PacketBlock packet;
    std::string problem;  // empty when the block is a sound packet
};

PacketParse ParsePacketBlock(TextView block);

// Digits only, from minDigits to maxDigits of them; the value, or nothing.
std::optional<std::int64_t> ParseDigits(TextView text, std::size_t minDigits, std::size_t maxDigits);

}  // namespace vantrel::simulation
