// The simulator's block parser: lines as views into the block, in every
// separator and terminator form the console sends, and the packet layout.
#include "simulator/block_parser.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string>
#include <vector>

namespace vantrel::simulation {
namespace {

using namespace std::string_literals;
using Kind = BlockLine::Kind;
using End = BlockLine::End;

// One line as "kind:key|value|end" or "kind:text|end", for readable tables.
std::string Describe(const BlockLine& line) {
    static const char* kKinds[] = {"keyed", "word", "empty", "free"};
    static const char* kEnds[] = {"crlf", "lf", "none"};
    std::string text = std::string(kKinds[static_cast<int>(line.kind)]) + ":";
    text += line.kind == Kind::Keyed ? Escaped(line.key) + "|" + Escaped(line.value) : Escaped(line.text);
    return text + "|" + kEnds[static_cast<int>(line.end)];
}

std::vector<std::string> Lines(TextView block) {
    std::vector<std::string> lines;
    for (const BlockLine& line : ParseCommandBlock(block)) {
        lines.push_back(Describe(line));
    }
    return lines;
}

struct Case {
    const char* form;
    Text block;
    bool terminated;
    std::vector<std::string> lines;
};

class BlockFormTest : public ::testing::TestWithParam<Case> {};

TEST_P(BlockFormTest, SplitsIntoLines) {
    const Case& c = GetParam();
    const CommandBlockView view = ParseCommandBlock(c.block);
    EXPECT_EQ(nullptr, view.problem());
    EXPECT_EQ(c.terminated, view.terminated());
    EXPECT_EQ(c.lines, Lines(c.block));
}

INSTANTIATE_TEST_SUITE_P(
    Forms, BlockFormTest,
    ::testing::Values(
        Case{"standard",
             u"FuelingPosition=07\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n\0"s,
             true,
             {"keyed:FuelingPosition|07|crlf", "keyed:Hose|0|crlf", "keyed:MOP|F|crlf", "keyed:Limit|999999|crlf"}},
        Case{"line feed only",
             u"ReaderPosition=05\nBeepCounts=03\n\0"s,
             true,
             {"keyed:ReaderPosition|05|lf", "keyed:BeepCounts|03|lf"}},
        Case{"mixed",
             u"ReaderPosition=01\r\nKeyData=123@R456A@789NYL0EHCe\n\0"s,
             true,
             {"keyed:ReaderPosition|01|crlf", "keyed:KeyData|123@R456A@789NYL0EHCe|lf"}},
        Case{"open end",
             Text(u"ReaderPosition=03\r\nMessage=\x1bGThe First Line\nThe Second Line\r\n\n"),
             false,
             {"keyed:ReaderPosition|03|crlf", "keyed:Message|\\eGThe First Line|lf", "free:The Second Line|crlf",
              "empty:|lf"}},
        Case{"padded end",
             u"SetPriceData\r\nProgramCount=03\r\n\r\n\r\n\0"s,
             true,
             {"word:SetPriceData|crlf", "keyed:ProgramCount|03|crlf", "empty:|crlf", "empty:|crlf"}},
        Case{"unterminated",
             Text(u"ReaderPosition=03\r\nMessage=\x1b"
                  u"A12Select A Key"),
             false,
             {"keyed:ReaderPosition|03|crlf", "keyed:Message|\\eA12Select A Key|none"}},
        Case{"bare value", Text(u"07"), false, {"word:07|none"}}, Case{"only a NUL", Text(1, u'\0'), true, {}},
        Case{"continuation",
             u"ReaderPosition=07\r\nMessage=Display Msg 1\r\nLine 2 Displayed\r\n\0"s,
             true,
             {"keyed:ReaderPosition|07|crlf", "keyed:Message|Display Msg 1|crlf", "free:Line 2 Displayed|crlf"}},
        Case{"odd keys and values",
             Text(u"KeyData=a=b\r\n100BaudRate=9600\r\nLine 1=x\r\nCode=1\r2\r\n"),
             false,
             {"keyed:KeyData|a=b|crlf", "keyed:100BaudRate|9600|crlf", "free:Line 1=x|crlf", "keyed:Code|1\\r2|crlf"}}),
    [](const ::testing::TestParamInfo<Case>& info) {
        std::string name = info.param.form;
        for (char& c : name) {
            c = c == ' ' ? '_' : c;
        }
        return name;
    });

TEST(BlockParser, AMessageRunsFromItsValueToTheEndOfTheBody) {
    const Text block = u"ReaderPosition=07\r\nJob=Receipt\r\nMessage=Vantrel\r\nLine 1\r\n\r\n\0"s;
    const CommandBlockView view = ParseCommandBlock(block);
    for (const BlockLine& line : view) {
        if (line.key == u"Message") {
            EXPECT_TEXT(u"Vantrel\r\nLine 1\r\n\r\n", Text(view.RestFrom(line)));
        }
    }
}

TEST(BlockParser, ANulBeforeTheEndIsAProblemOfTheFrame) {
    EXPECT_STREQ("a NUL stands before the end of the block", ParseCommandBlock(u"Hose=0\0\r\n\0"s).problem());
    EXPECT_EQ(nullptr, ParseCommandBlock(u"Hose=0\r\n\0"s).problem());
}

// Whatever the text, the lines and their separators put back together give
// the body again: nothing is lost, nothing is read twice.
TEST(BlockParser, LinesAndSeparatorsRebuildAnyBody) {
    std::mt19937 random(29);
    const char16_t alphabet[] = {u'A', u'=', u'\r', u'\n', u'\0', u'1', u' ', u'\x1b'};
    for (int round = 0; round < 2000; ++round) {
        Text block(random() % 24, u' ');
        for (char16_t& c : block) {
            c = alphabet[random() % std::size(alphabet)];
        }
        const CommandBlockView view = ParseCommandBlock(block);
        Text rebuilt;
        for (const BlockLine& line : view) {
            EXPECT_EQ(rebuilt.size(), line.offset);
            rebuilt += line.text;
            rebuilt += line.end == End::CrLf ? u"\r\n" : line.end == End::Lf ? u"\n" : u"";
        }
        EXPECT_TEXT(Text(view.body()), rebuilt);
        EXPECT_EQ(block.size(), view.body().size() + (view.terminated() ? 1 : 0));
    }
}

struct PacketCase {
    const char* name;
    Text block;
    std::size_t count;
    Text data;
    bool closed;
    std::string problem;
};

class PacketBlockTest : public ::testing::TestWithParam<PacketCase> {};

TEST_P(PacketBlockTest, ReadsTheLayout) {
    const PacketCase& c = GetParam();
    const PacketParse parsed = ParsePacketBlock(c.block);
    EXPECT_EQ(c.problem, parsed.problem);
    if (c.problem.empty()) {
        EXPECT_TEXT(u"07", Text(parsed.packet.position));
        EXPECT_EQ(c.count, parsed.packet.count);
        EXPECT_TEXT(c.data, Text(parsed.packet.data));
        EXPECT_EQ(c.closed, parsed.packet.closed);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Packets, PacketBlockTest,
    ::testing::Values(PacketCase{"test_packet", u"ReaderPosition=07\r\nPacketCount=003\r\nPacketData=C\x10\x07\r\n\0"s,
                                 3, u"C\x10\x07", true, ""},
                      PacketCase{"des_lead_in",
                                 Text(u"ReaderPosition=07\r\nPacketCount=017\r\nPacketData=44$*1234567890123"), 17,
                                 u"44$*1234567890123", false, ""},
                      PacketCase{"five_digit_count", u"ReaderPosition=07\r\nPacketCount=00004\r\nPacketData=\r\n\0x"s,
                                 4, u"\r\n\0x"s, false, ""},
                      PacketCase{"data_with_line_ends",
                                 u"ReaderPosition=07\r\nPacketCount=002\r\nPacketData=\r\n\r\n\0"s, 2, u"\r\n", true,
                                 ""},
                      PacketCase{"no_header", Text(u"PacketCount=003\r\n"), 0, u"", false,
                                 "the packet does not begin with ReaderPosition="},
                      PacketCase{"count_not_digits", Text(u"ReaderPosition=07\r\nPacketCount=3E4\r\nPacketData=x"), 0,
                                 u"", false, "PacketCount= is not a count in digits ended by CR LF"},
                      PacketCase{"short_data", Text(u"ReaderPosition=07\r\nPacketCount=010\r\nPacketData=abc"), 0, u"",
                                 false, "PacketCount=10 but only 3 characters follow PacketData="},
                      PacketCase{"long_data", u"ReaderPosition=07\r\nPacketCount=001\r\nPacketData=abc\r\n\0"s, 0, u"",
                                 false, "5 characters follow the 1 data characters that PacketCount= announces"}),
    [](const ::testing::TestParamInfo<PacketCase>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace vantrel::simulation
