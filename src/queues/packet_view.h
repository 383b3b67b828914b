#pragma once

#include "server/runtime_error.h"
#include "server/text.h"

#include <optional>

namespace vantrel {

// A packet answer made visible: the 47-character header as it stands, then
// each data character behind a blank, printable ones (codes 33 to 126) as
// they are and all others as their code in upper-case hexadecimal.
struct PacketView {
    Text text;  // what the data box shows
    // An error that ends the console once the text is shown: a count out of
    // the 16-bit range, or an answer shorter than its count.
    std::optional<RuntimeError> error;
};

// Relies on the fixed offsets of the packet block (count at characters 32 to
// 34, data from character 48) and searches for no key. Linear in the answer.
PacketView ViewPacketInput(TextView answer);

}  // namespace vantrel
