#include "character_names.h"

namespace vantrel {

std::string_view CharacterName(char16_t code) {
    static constexpr std::string_view kNames[32] = {
        "NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL", "BS",  "TAB", "LF",  "VT",  "FF", "CR", "SO", "SI",
        "DLE", "DC1", "DC2", "DC3", "DC4", "NAK", "SYN", "ETB", "CAN", "EM",  "SUB", "ESC", "FS", "GS", "RS", "US",
    };
    if (code < 32) {
        return kNames[code];
    }
    return code == 0x7F ? "DEL" : std::string_view();
}

}  // namespace vantrel
