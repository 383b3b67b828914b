#include "fuzz_input.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace vantrel::fuzz {

Text TextFromBytes(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return {};
    }
    const std::uint8_t* rest = data + 1;
    const std::size_t length = size - 1;
    if ((data[0] & 1) == 0) {
        return FromUtf8(std::string_view(reinterpret_cast<const char*>(rest), length));
    }
    Text text;
    text.reserve(length / 2);
    for (std::size_t at = 0; at + 1 < length; at += 2) {
        text.push_back(static_cast<char16_t>(rest[at] | (rest[at + 1] << 8)));
    }
    return text;
}

void Require(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "property broken: %s\n", property);
        std::abort();
    }
}

}  // namespace vantrel::fuzz
