// A script is read in the encodings a Windows or Linux editor saves, and
// any other byte is refused with its place, never sent as a different
// character; a trace that cannot be the run's own is refused with its real
// reason. Both run through ProgramUnderTest, so the Windows stage holds the
// Windows program to the same outcomes.
#include "e2e.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

namespace vantrel::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

// Types two characters above 127 (e acute and the euro sign) into the code
// box and sends them: a replaced character would show in the put.
const std::u16string kTyping =
    u"click OTHERDEVICESBUTTON\r\ntype CodeBox \"\u00e9\u20ac\"\r\n"
    u"click CODESTATUS_BUTTON\r\nclick EXIT_CMD\r\n";
const std::string kSent = R"({"op":"put","member":"CarWashInformationRequest","value":{"text":)"
                          R"("CarWashCodeStatus\r\nCarWashCode=\u00e9\u20ac\r\n\u0000"}})";

enum class Order { Little, Big };

// The code units as bytes, after the byte order mark; each unit written out
// here, not by the program's own conversion.
std::string Utf16(const std::u16string& text, Order order) {
    std::string bytes = order == Order::Little ? "\xFF\xFE" : "\xFE\xFF";
    for (const char16_t unit : text) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += order == Order::Little ? std::string{low, high} : std::string{high, low};
    }
    return bytes;
}

// The same script in UTF-8, the two characters as their bytes.
const std::string kUtf8 =
    "click OTHERDEVICESBUTTON\r\ntype CodeBox \"\xC3\xA9\xE2\x82\xAC\"\r\nclick CODESTATUS_BUTTON\r\nclick "
    "EXIT_CMD\r\n";

TEST(ScriptEncoding, EachAcceptedEncodingSendsTheCharactersAsWritten) {
    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {
        {"UTF-8", kUtf8},
        {"UTF-8 with its byte order mark", "\xEF\xBB\xBF" + kUtf8},
        {"UTF-16 LE", Utf16(kTyping, Order::Little)},
        {"UTF-16 BE", Utf16(kTyping, Order::Big)},
    };
    for (const auto& script : cases) {
        SCOPED_TRACE(script.name);
        const ScriptRun run = RunConsole(script.bytes);
        ASSERT_EQ(0, run.exitCode) << run.err;
        const std::vector<std::string> calls = Calls(run);
        ASSERT_EQ(1u, calls.size());
        EXPECT_EQ(kSent, calls[0]);
    }
}

TEST(ScriptEncoding, BytesItCannotReadAreRefusedWithTheirPlaceAndNothingIsSent) {
    const struct {
        const char* name;
        std::string bytes;
        const char* message;
    } cases[] = {
        // "click OTHERDEVICESBUTTON\n" is 25 bytes, `type CodeBox "` 14 more.
        {"Windows-1252", "click OTHERDEVICESBUTTON\ntype CodeBox \"\xE9\x80\"\nclick CODESTATUS_BUTTON\n",
         "line 2, byte offset 39: the byte 0xE9 is not UTF-8"},
        {"Latin-1 after a UTF-8 byte order mark", "\xEF\xBB\xBF# caf\xE9\n", "line 1, byte offset 8: the byte 0xE9"},
        {"a UTF-16 text cut in the middle of a character", Utf16(u"click Button7\n", Order::Little) + "c",
         "a UTF-16 script has an even number of bytes, this one 31"},
        // The lone surrogate is the 2nd unit of line 2: 2 + 2 * 15 + 2.
        {"a lone surrogate in UTF-16", Utf16(u"click Button7\r\n#\xD800\n", Order::Little),
         "line 2, byte offset 34: a lone UTF-16 surrogate 0xD800"},
        {"a UTF-16 text without its byte order mark", std::string("c\0l\0i\0c\0k\0 \0\xE9\0", 14),
         "line 1, byte offset 12: the byte 0xE9 is not UTF-8"},
    };
    for (const auto& script : cases) {
        SCOPED_TRACE(script.name);
        const ScriptRun run = RunConsole(script.bytes);
        EXPECT_EQ(2, run.exitCode);
        EXPECT_THAT(run.err, HasSubstr(script.message));
        EXPECT_THAT(run.err, HasSubstr("UTF-16 with its byte order mark"));  // and says what is read
        EXPECT_THAT(run.trace, IsEmpty());
    }
}

TEST(TraceRefused, AFolderIsNamedAsAFolder) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "vantrel-trace-folder";
    std::filesystem::create_directories(folder);
    const ScriptRun run = RunConsole("click Button7\n", {"--trace", folder.string()});
    EXPECT_EQ(2, run.exitCode);
    EXPECT_THAT(run.err, HasSubstr(": it is a folder"));
    EXPECT_THAT(run.trace, IsEmpty());
}

}  // namespace
}  // namespace vantrel::testing
