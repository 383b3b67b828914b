// The script encodings read before any line runs: what each reads as, and
// the first byte of one that is refused.
#include "script/script_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace vantrel {
namespace {

// What each script's bytes read as; the expected UTF-8 written out by hand.
TEST(ScriptEncodings, AcceptedOnesReadAsTheirCharacters) {
    const struct {
        std::string bytes;
        std::string utf8;
    } cases[] = {
        {"click A\n", "click A\n"},
        {"\xEF\xBB\xBF"
         "click A",
         "click A"},
        {std::string("\xFF\xFE"
                     "a\0\xE9\0\xAC\x20",
                     8),
         "a\xC3\xA9\xE2\x82\xAC"},
        {std::string("\xFE\xFF\0a\0\xE9\x20\xAC", 8), "a\xC3\xA9\xE2\x82\xAC"},
        // A character beyond the 16-bit plane: a surrogate pair, U+1F600.
        {std::string("\xFF\xFE\x3D\xD8\x00\xDE", 6), "\xF0\x9F\x98\x80"},
        {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"},
        {"", ""},
    };
    for (const auto& script : cases) {
        const auto decoded = DecodeScript(script.bytes);
        ASSERT_EQ(0u, decoded.index()) << std::get<1>(decoded);
        EXPECT_EQ(script.utf8, std::get<0>(decoded));
    }
}

TEST(ScriptEncodings, MalformedUtf8IsRefusedAtItsFirstBadByte) {
    const struct {
        std::string bytes;
        const char* where;
    } cases[] = {
        {"ab\xC0\xAF", "line 1, byte offset 2: the byte 0xC0"},         // an overlong "/"
        {"a\n\n\xED\xA0\x80", "line 3, byte offset 3: the byte 0xED"},  // a surrogate written in UTF-8
        {"\xF4\x90\x80\x80", "line 1, byte offset 0: the byte 0xF4"},   // above U+10FFFF
        {"x\xE2\x82", "line 1, byte offset 1: the byte 0xE2"},          // cut at the end
        {"\x80", "line 1, byte offset 0: the byte 0x80"},               // a lone continuation
        {"ok \xC3\xA9\n\xA4", "line 2, byte offset 6: the byte 0xA4"},  // after a good one
    };
    for (const auto& script : cases) {
        const auto decoded = DecodeScript(script.bytes);
        ASSERT_EQ(1u, decoded.index()) << script.where;
        EXPECT_THAT(std::get<1>(decoded), ::testing::HasSubstr(script.where));
    }
}

}  // namespace
}  // namespace vantrel
