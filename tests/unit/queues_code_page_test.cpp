#include "server/code_page.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

struct CodeCase {
    char16_t character;
    int code;
};

TEST(Windows1252, GivesTheByteOfEveryCharacterItCanWrite) {
    for (const CodeCase& c : {
             CodeCase{0x0000, 0x00},
             CodeCase{0x001B, 0x1B},
             CodeCase{0x0020, 0x20},
             CodeCase{0x0041, 0x41},
             CodeCase{0x007F, 0x7F},
             CodeCase{0x20AC, 0x80},
             CodeCase{0x201A, 0x82},
             CodeCase{0x2026, 0x85},
             CodeCase{0x0160, 0x8A},
             CodeCase{0x017D, 0x8E},
             CodeCase{0x2018, 0x91},
             CodeCase{0x2014, 0x97},
             CodeCase{0x2122, 0x99},
             CodeCase{0x0153, 0x9C},
             CodeCase{0x0178, 0x9F},
             CodeCase{0x00A0, 0xA0},
             CodeCase{0x00E9, 0xE9},
             CodeCase{0x00FF, 0xFF},
             // The five bytes the code page leaves open pass through.
             CodeCase{0x0081, 0x81},
             CodeCase{0x008D, 0x8D},
             CodeCase{0x008F, 0x8F},
             CodeCase{0x0090, 0x90},
             CodeCase{0x009D, 0x9D},
         }) {
        EXPECT_EQ(c.code, Windows1252Code(c.character)) << std::hex << static_cast<int>(c.character);
    }
}

TEST(Windows1252, WritesAQuestionMarkForWhatItCannotWrite) {
    // C1 controls whose bytes hold other characters, letters beyond Latin-1,
    // a lone surrogate, the replacement character.
    for (const char16_t character :
         {u'\u0080', u'\u0085', u'\u009F', u'\u0100', u'\u0401', u'\u3042', char16_t{0xD800}, u'\uFFFD'}) {
        EXPECT_EQ('?', Windows1252Code(character)) << std::hex << static_cast<int>(character);
    }
}

}  // namespace
}  // namespace vantrel
