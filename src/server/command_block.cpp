#include "command_block.h"

#include <string>

namespace vantrel {

// Room for all but the largest blocks at once, rather than a reallocation
// every few lines while one grows.
CommandBlock::CommandBlock() { text_.reserve(256); }

CommandBlock& CommandBlock::Clear() {
    text_.clear();
    return *this;
}

CommandBlock& CommandBlock::AddLine(TextView line) {
    text_.append(line);
    text_.append(u"\r\n");
    return *this;
}

CommandBlock& CommandBlock::AddLineLf(TextView line) {
    text_.append(line);
    text_.push_back(kLf);
    return *this;
}

CommandBlock& CommandBlock::AddLine(TextView key, TextView value) {
    text_.append(key);
    return AddLine(value);
}

CommandBlock& CommandBlock::AddLineLf(TextView key, TextView value) {
    text_.append(key);
    return AddLineLf(value);
}

CommandBlock& CommandBlock::Append(TextView text) {
    text_.append(text);
    return *this;
}

CommandBlock& CommandBlock::Append(char16_t character) {
    text_.push_back(character);
    return *this;
}

CommandBlock& CommandBlock::Terminate() {
    text_.push_back(kNul);
    return *this;
}

Text PositionText(int position) { return ZeroPad(position, 2); }

Text ZeroPad(std::int64_t number, int width) {
    const bool negative = number < 0;
    const std::string digits =
        std::to_string(negative ? -(number + 1) + 1ULL : static_cast<unsigned long long>(number));
    Text out;
    if (negative) {
        out.push_back(u'-');
    }
    for (int pad = width - static_cast<int>(digits.size()); pad > 0; --pad) {
        out.push_back(u'0');
    }
    out.append(FromUtf8(digits));
    return out;
}

}  // namespace vantrel
