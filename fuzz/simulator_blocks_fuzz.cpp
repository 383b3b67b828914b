// The simulator's block parser over arbitrary blocks: the lines it finds lie
// inside the block and put it back together exactly, the frame (the closing
// NUL, a NUL too early) is read as documented, a packet's data is exactly as
// long as its count says, the digit reader agrees with a plain decimal
// reading, and a whole simulator takes any block at any assigned member
// without throwing, reporting what it cannot act on in its error queue.

#include "fuzz_input.h"
#include "server/runtime_error.h"
#include "server/variant.h"
#include "simulator/block_parser.h"
#include "simulator/clock.h"
#include "simulator/simulator.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace {

using vantrel::Text;
using vantrel::TextView;
using vantrel::fuzz::Require;
using vantrel::simulation::BlockLine;
using vantrel::simulation::CommandBlockView;
using vantrel::simulation::ParseDigits;

bool IsKeyCharacter(char16_t c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9');
}

bool IsKey(TextView text) {
    if (text.empty()) {
        return false;
    }
    for (const char16_t c : text) {
        if (!IsKeyCharacter(c)) {
            return false;
        }
    }
    return true;
}

// Whether the view starts at this very character of the body: lines are
// views into the block, never copies.
bool StartsAt(TextView part, TextView body, std::size_t offset) { return part.data() == body.data() + offset; }

// A reading of decimal digits that shares nothing with the parser's: more
// than 18 digits may not fit in 64 bits and count as no number.
std::optional<std::int64_t> PlainDecimal(TextView text) {
    if (text.empty() || text.size() > 18) {
        return std::nullopt;
    }
    std::string ascii;
    for (const char16_t c : text) {
        if (c < u'0' || c > u'9') {
            return std::nullopt;
        }
        ascii.push_back(static_cast<char>(c));
    }
    return std::stoll(ascii);
}

void CheckDigits(TextView text) {
    const std::optional<std::int64_t> plain = PlainDecimal(text);
    const std::size_t length = text.size();
    Require(ParseDigits(text, 1, 18) == plain, "ParseDigits reads digits as a plain decimal number");
    Require(ParseDigits(text, length, length) == plain, "ParseDigits takes exactly as many digits as allowed");
    if (length > 0) {
        Require(!ParseDigits(text, length + 1, 18), "ParseDigits refuses fewer digits than the least allowed");
        Require(!ParseDigits(text, 0, length - 1), "ParseDigits refuses more digits than the most allowed");
    }
}

void CheckFrame(TextView block, const CommandBlockView& view) {
    const bool terminated = !block.empty() && block.back() == vantrel::kNul;
    Require(view.terminated() == terminated, "terminated() says whether the block ends with a NUL");
    Require(StartsAt(view.body(), block, 0) && view.body().size() == block.size() - (terminated ? 1 : 0),
            "the body is the block without its closing NUL");
    Require((view.problem() != nullptr) == (view.body().find(vantrel::kNul) != TextView::npos),
            "a NUL before the end, and only that, is a problem");
    Require((view.begin() == view.end()) == view.body().empty(), "only an empty body has no lines");
    Require(view.RestFrom(BlockLine{}) == view.body(), "the rest from before the first line is the whole body");
}

void CheckKind(const BlockLine& line) {
    const TextView text = line.text;
    const std::size_t equals = text.find(u'=');
    switch (line.kind) {
    case BlockLine::Kind::Empty:
        Require(text.empty() && line.key.empty() && line.value.empty(), "an empty line is empty");
        break;
    case BlockLine::Kind::Keyed:
        Require(equals != TextView::npos && IsKey(text.substr(0, equals)), "a keyed line starts with letters and =");
        Require(line.key.data() == text.data() && line.key.size() == equals, "the key ends at the first =");
        Require(line.value.data() == text.data() + equals + 1 && line.value.size() == text.size() - equals - 1,
                "the value is everything after the first =");
        break;
    case BlockLine::Kind::Word:
        Require(equals == TextView::npos && IsKey(text), "a word is letters and digits only");
        Require(line.key.data() == text.data() && line.key.size() == text.size() && line.value.empty(),
                "a word is its own key");
        break;
    case BlockLine::Kind::Free:
        Require(!text.empty() && !IsKey(text.substr(0, equals)), "a free line is neither KEY=value nor a word");
        Require(line.key.empty() && line.value.empty(), "a free line has no key and no value");
        break;
    }
}

void CheckRest(const CommandBlockView& view, const BlockLine& line) {
    const TextView body = view.body();
    const TextView rest = view.RestFrom(line);
    Require(rest.data() + rest.size() == body.data() + body.size(), "the rest of a block runs to the body's end");
    const char16_t* start = line.kind == BlockLine::Kind::Keyed  ? line.value.data()
                            : line.kind == BlockLine::Kind::Word ? line.text.data() + line.text.size()
                                                                 : line.text.data();
    Require(rest.data() == start, "the rest starts at the value, after a word, or at the line");
}

void CheckLines(const CommandBlockView& view) {
    const TextView body = view.body();
    Text joined;
    std::size_t number = 0;
    std::size_t at = 0;
    for (const BlockLine& line : view) {
        Require(line.number == ++number, "lines are numbered 1, 2, 3 ...");
        Require(line.offset == at && StartsAt(line.text, body, at), "each line starts where the one before it ended");
        Require(line.text.find(u'\n') == TextView::npos, "a line holds no LF");
        const TextView separator = line.end == BlockLine::End::CrLf ? TextView(u"\r\n")
                                   : line.end == BlockLine::End::Lf ? TextView(u"\n")
                                                                    : TextView();
        const std::size_t end = at + line.text.size();
        Require(body.substr(end, separator.size()) == separator, "the separator follows the line's text");
        Require(line.end != BlockLine::End::Lf || line.text.empty() || line.text.back() != u'\r',
                "a CR just before the LF belongs to the separator");
        Require(line.end != BlockLine::End::None || end == body.size(), "only the last line may lack a separator");
        CheckKind(line);
        CheckRest(view, line);
        CheckDigits(line.text);
        CheckDigits(line.value);
        joined.append(line.text).append(separator);
        at = end + separator.size();
    }
    Require(joined == body, "the lines with their separators make the body again");
}

Text PacketBlock(TextView data, std::size_t count, bool closed) {
    // Nine digits, leading zeros included: the count is read as digits, not
    // by its length.
    std::string digits = std::to_string(count);
    digits.insert(0, 9 - digits.size(), '0');
    Text block = u"ReaderPosition=07\r\nPacketCount=" + vantrel::FromUtf8(digits) + u"\r\nPacketData=";
    block.append(data);
    if (closed) {
        block.append(TextView(u"\r\n\0", 3));
    }
    return block;
}

// Whether the block is a sound packet; when it is, it must read back from its
// parts exactly.
bool CheckPacket(TextView block) {
    const vantrel::simulation::PacketParse parsed = vantrel::simulation::ParsePacketBlock(block);
    if (!parsed.problem.empty()) {
        return false;
    }
    const vantrel::simulation::PacketBlock& packet = parsed.packet;
    Require(packet.data.size() == packet.count, "a sound packet has as many data characters as its count");
    Require(packet.position.find(u"\r\n") == TextView::npos, "the position is one line");
    const Text head = u"ReaderPosition=" + Text(packet.position) + u"\r\nPacketCount=";
    Require(block.starts_with(head), "a sound packet starts with its position line");
    TextView rest = block.substr(head.size());
    const std::size_t countEnd = rest.find(u"\r\n");
    Require(countEnd != TextView::npos && ParseDigits(rest.substr(0, countEnd), 1, 9) == packet.count,
            "the count line holds the count in digits");
    rest.remove_prefix(countEnd + 2);
    Require(rest.starts_with(u"PacketData=") && rest.data() + 11 == packet.data.data(), "the data follows PacketData=");
    rest.remove_prefix(11 + packet.count);
    Require(rest == (packet.closed ? TextView(u"\r\n\0", 3) : TextView()),
            "only CR LF NUL, or nothing, follows the data");
    return true;
}

// Any text can be a packet's data, CR LF and NUL included.
void CheckPacketRoundTrip(TextView data) {
    if (data.size() > 999999999) {
        return;
    }
    for (const bool closed : {false, true}) {
        const Text block = PacketBlock(data, data.size(), closed);
        const vantrel::simulation::PacketParse parsed = vantrel::simulation::ParsePacketBlock(block);
        Require(parsed.problem.empty() && parsed.packet.data == data && parsed.packet.closed == closed &&
                    parsed.packet.position == u"07",
                "a packet made of any data reads back as that data");
    }
    Require(!vantrel::simulation::ParsePacketBlock(PacketBlock(data, data.size() + 1, true)).problem.empty(),
            "a packet with fewer data characters than its count is a problem");
    if (!data.empty()) {
        Require(!vantrel::simulation::ParsePacketBlock(PacketBlock(data, data.size() - 1, false)).problem.empty(),
                "a packet with more data characters than its count is a problem");
    }
}

// Each assigned member once, on a fresh simulator whose clock stands still,
// so that a run is repeatable.
void CheckSimulator(const Text& block, bool unreadable, bool soundPacket) {
    vantrel::Simulator simulator(std::make_unique<vantrel::simulation::ManualClock>());
    for (const auto& [name, style] : simulator.Members()) {
        if (style != vantrel::Simulator::Style::Assignment) {
            continue;
        }
        const std::size_t before = simulator.forecourt().queues.errors();
        try {
            simulator.Put(name, vantrel::Variant::OfText(block));
        } catch (const vantrel::RuntimeError&) {
            Require(false, "a block the simulator cannot act on is reported, never thrown back");
        }
        const auto& errors = simulator.forecourt().queues.errorEntries();
        Require(errors.size() == before || errors.size() == before + 1, "an assignment reports at most one problem");
        if (errors.size() > before) {
            Require(errors.back().starts_with(vantrel::FromUtf8(name + ": ")), "a problem names its member");
        }
        const bool mustReport = name == "PacketQueOutput" ? !soundPacket : unreadable;
        Require(!mustReport || errors.size() == before + 1, "a block that cannot be read is reported");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Text block = vantrel::fuzz::TextFromBytes(data, size);
    const CommandBlockView view = vantrel::simulation::ParseCommandBlock(block);
    CheckFrame(block, view);
    CheckLines(view);
    const bool soundPacket = CheckPacket(block);
    CheckPacketRoundTrip(block);
    CheckSimulator(block, view.problem() != nullptr, soundPacket);
    return 0;
}
