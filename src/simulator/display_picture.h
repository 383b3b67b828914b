#pragma once

#include "server/text.h"

#include <array>
#include <string>
#include <vector>

namespace vantrel::simulation {

// What a terminal's display shows after a message: its lines, and the
// settings that the ESC elements of the message made.
struct DisplayPicture {
    int lineCount = 0;  // the digit of ESC "G", 0 without one
    std::vector<Text> lines;
    Text font;   // "Aerial 14"
    Text align;  // "12"
    std::array<Text, 8> softKeys;
};

// Why a display message cannot be shown (an unknown element, an element
// without its digits), or an empty text. Elements: ESC "G" [digit], ESC SUB
// and three digits, ESC "=" with three digits of column and three of row,
// ESC "A" and two digits, ESC "F" with a quoted font name and a size, ESC "S"
// with a soft key digit 1 to 8 and a quoted label.
std::string CheckDisplayMessage(TextView message);

// Lines break at CR LF or LF; a positioned text starts a line of its own,
// written "@ccc,rrr text". Trailing line breaks show nothing.
DisplayPicture RenderDisplay(TextView message);

}  // namespace vantrel::simulation
