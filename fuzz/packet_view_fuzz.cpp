// The packet input view over arbitrary answers: whatever the server returns,
// the view shows the header as it stands, then one item per data character
// it could reach, and fails only in the two ways it documents.

#include "fuzz_input.h"
#include "queues/packet_view.h"
#include "server/code_page.h"

#include <cstddef>
#include <cstdint>

namespace {

using vantrel::Text;
using vantrel::fuzz::Require;

constexpr std::size_t kHeaderLength = 47;

bool IsUpperHexDigit(char16_t c) { return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F'); }

// The item shown for one data character: the character itself when its code
// is printable, its code in upper-case hexadecimal otherwise.
Text ExpectedItem(char16_t character) {
    const std::uint8_t code = vantrel::AnsiCode(character);
    if (code >= 33 && code <= 126) {
        return Text(1, character);
    }
    constexpr char16_t kDigits[] = u"0123456789ABCDEF";
    Text hex;
    if (code >= 16) {
        hex.push_back(kDigits[code >> 4]);
    }
    hex.push_back(kDigits[code & 15]);
    return hex;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Text answer = vantrel::fuzz::TextFromBytes(data, size);
    const vantrel::PacketView view = vantrel::ViewPacketInput(answer);

    const Text header = answer.substr(0, kHeaderLength);
    Require(view.text.substr(0, header.size()) == header, "the view begins with the answer's first 47 characters");
    const std::size_t available = answer.size() > kHeaderLength ? answer.size() - kHeaderLength : 0;

    // Every item is a blank and one or two characters; items never contain a
    // blank, since the blank itself is shown as "20".
    std::size_t items = 0;
    std::size_t at = header.size();
    while (at < view.text.size()) {
        Require(view.text[at] == u' ', "each item starts with a blank");
        std::size_t end = at + 1;
        while (end < view.text.size() && view.text[end] != u' ') {
            ++end;
        }
        const Text item = view.text.substr(at + 1, end - at - 1);
        Require(item.size() == 1 || (item.size() == 2 && IsUpperHexDigit(item[0]) && IsUpperHexDigit(item[1])),
                "an item is one character or two upper-case hexadecimal digits");
        Require(items < available, "no more items than data characters");
        Require(item == ExpectedItem(answer[kHeaderLength + items]), "each item shows its own data character");
        ++items;
        at = end;
    }

    if (view.error) {
        const int number = view.error->number();
        Require(number == 5 || number == 6, "the only errors are 5 (answer too short) and 6 (count overflow)");
        if (number == 6) {
            Require(items == 0, "an overflowing count shows the header alone");
        } else {
            Require(items == available, "a short answer shows every data character it has before failing");
        }
    }
    return 0;
}
