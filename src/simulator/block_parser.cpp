#include "block_parser.h"

namespace vantrel::simulation {

namespace {

bool IsKeyCharacter(char16_t c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9');
}

bool AllKeyCharacters(TextView text) {
    for (const char16_t c : text) {
        if (!IsKeyCharacter(c)) {
            return false;
        }
    }
    return !text.empty();
}

void Classify(BlockLine& line) {
    line.key = {};
    line.value = {};
    if (line.text.empty()) {
        line.kind = BlockLine::Kind::Empty;
        return;
    }
    const std::size_t equals = line.text.find(u'=');
    if (equals != TextView::npos && AllKeyCharacters(line.text.substr(0, equals))) {
        line.kind = BlockLine::Kind::Keyed;
        line.key = line.text.substr(0, equals);
        line.value = line.text.substr(equals + 1);
        return;
    }
    if (equals == TextView::npos && AllKeyCharacters(line.text)) {
        line.kind = BlockLine::Kind::Word;
        line.key = line.text;
        return;
    }
    line.kind = BlockLine::Kind::Free;
}

// Reads "KEY=" at offset; on success offset moves past it.
bool TakeLiteral(TextView block, std::size_t& offset, TextView literal) {
    if (block.substr(offset, literal.size()) != literal) {
        return false;
    }
    offset += literal.size();
    return true;
}

}  // namespace

CommandBlockView::Iterator::Iterator(TextView body, std::size_t offset, std::size_t number)
    : body_(body)
    , next_(offset)
    , atEnd_(false) {
    line_.number = number;
    Read();
}

void CommandBlockView::Iterator::Read() {
    if (next_ >= body_.size()) {
        atEnd_ = true;
        next_ = 0;
        return;
    }
    const std::size_t start = next_;
    const std::size_t lf = body_.find(u'\n', start);
    line_.offset = start;
    ++line_.number;
    if (lf == TextView::npos) {
        line_.text = body_.substr(start);
        line_.end = BlockLine::End::None;
        next_ = body_.size();
    } else if (lf > start && body_[lf - 1] == u'\r') {
        line_.text = body_.substr(start, lf - 1 - start);
        line_.end = BlockLine::End::CrLf;
        next_ = lf + 1;
    } else {
        line_.text = body_.substr(start, lf - start);
        line_.end = BlockLine::End::Lf;
        next_ = lf + 1;
    }
    Classify(line_);
}

CommandBlockView::Iterator& CommandBlockView::Iterator::operator++() {
    if (!atEnd_) {
        Read();
    }
    return *this;
}

CommandBlockView::CommandBlockView(TextView block)
    : body_(block) {
    if (!body_.empty() && body_.back() == kNul) {
        terminated_ = true;
        body_.remove_suffix(1);
    }
    if (body_.find(kNul) != TextView::npos) {
        problem_ = "a NUL stands before the end of the block";
    }
}

CommandBlockView::Iterator CommandBlockView::begin() const { return Iterator(body_, 0, 0); }

TextView CommandBlockView::RestFrom(const BlockLine& line) const {
    const std::size_t start = line.offset + line.key.size() + (line.kind == BlockLine::Kind::Keyed ? 1 : 0);
    return start <= body_.size() ? body_.substr(start) : TextView();
}

CommandBlockView ParseCommandBlock(TextView block) { return CommandBlockView(block); }

std::optional<std::int64_t> ParseDigits(TextView text, std::size_t minDigits, std::size_t maxDigits) {
    if (text.size() < minDigits || text.size() > maxDigits || text.empty() || text.size() > 18) {
        return std::nullopt;
    }
    std::int64_t value = 0;
    for (const char16_t c : text) {
        if (c < u'0' || c > u'9') {
            return std::nullopt;
        }
        value = value * 10 + (c - u'0');
    }
    return value;
}

PacketParse ParsePacketBlock(TextView block) {
    PacketParse result;
    std::size_t offset = 0;
    if (!TakeLiteral(block, offset, u"ReaderPosition=")) {
        result.problem = "the packet does not begin with ReaderPosition=";
        return result;
    }
    const std::size_t positionEnd = block.find(u"\r\n", offset);
    if (positionEnd == TextView::npos) {
        result.problem = "the ReaderPosition= line has no CR LF";
        return result;
    }
    result.packet.position = block.substr(offset, positionEnd - offset);
    offset = positionEnd + 2;
    if (!TakeLiteral(block, offset, u"PacketCount=")) {
        result.problem = "PacketCount= does not follow the ReaderPosition= line";
        return result;
    }
    const std::size_t countEnd = block.find(u"\r\n", offset);
    const auto count =
        countEnd == TextView::npos ? std::nullopt : ParseDigits(block.substr(offset, countEnd - offset), 1, 9);
    if (!count) {
        result.problem = "PacketCount= is not a count in digits ended by CR LF";
        return result;
    }
    result.packet.count = static_cast<std::size_t>(*count);
    offset = countEnd + 2;
    if (!TakeLiteral(block, offset, u"PacketData=")) {
        result.problem = "PacketData= does not follow the PacketCount= line";
        return result;
    }
    if (block.size() - offset < result.packet.count) {
        result.problem = "PacketCount=" + std::to_string(result.packet.count) + " but only " +
                         std::to_string(block.size() - offset) + " characters follow PacketData=";
        return result;
    }
    result.packet.data = block.substr(offset, result.packet.count);
    const TextView rest = block.substr(offset + result.packet.count);
    if (rest == TextView(u"\r\n\0", 3)) {
        result.packet.closed = true;
    } else if (!rest.empty()) {
        result.problem = std::to_string(rest.size()) + " characters follow the " + std::to_string(result.packet.count) +
                         " data characters that PacketCount= announces";
    }
    return result;
}

}  // namespace vantrel::simulation
