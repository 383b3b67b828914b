// The script lines that drive the simulator: what each one parses to, and the
// usage a mistaken one answers with.
#include "script/script_line.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using Verb = ScriptCommand::Verb;

struct Good {
    const char* line;
    Verb verb;
    std::string name;
    Text text;
    std::int64_t number;
    int position;
    int hose;
};

class GoodLineTest : public ::testing::TestWithParam<Good> {};

TEST_P(GoodLineTest, Parses) {
    const Good& c = GetParam();
    const ParsedLine parsed = ParseScriptLine(c.line);
    const auto* command = std::get_if<ScriptCommand>(&parsed);
    ASSERT_NE(nullptr, command) << c.line;
    EXPECT_EQ(c.verb, command->verb);
    EXPECT_EQ(c.name, command->name);
    EXPECT_TEXT(c.text, command->text);
    EXPECT_EQ(c.number, command->number);
    EXPECT_EQ(c.position, command->position);
    EXPECT_EQ(c.hose, command->hose);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, GoodLineTest,
    ::testing::Values(Good{"forecourt lift 7 hose 2", Verb::ForecourtLift, "", u"", 0, 7, 2},
                      Good{"forecourt hang 32", Verb::ForecourtHang, "", u"", 0, 32, 0},
                      Good{"forecourt card 1 \";4000=2512?\"", Verb::ForecourtCard, "", u";4000=2512?", 0, 1, 0},
                      Good{"forecourt keys 7 \"1234\"", Verb::ForecourtKeys, "", u"1234", 0, 7, 0},
                      Good{"forecourt cash 7 \"20.00\"", Verb::ForecourtCash, "", u"20.00", 0, 7, 0},
                      Good{"forecourt packet 7 \"C\\x10\\x07\"", Verb::ForecourtPacket, "", u"C\x10\x07", 0, 7, 0},
                      Good{"forecourt wash \"14271\"", Verb::ForecourtWash, "", u"14271", 0, 0, 0},
                      Good{"server time +30", Verb::ServerTime, "", u"", 30000, 0, 0},
                      Good{"server time +2.5", Verb::ServerTime, "", u"", 2500, 0, 0},
                      Good{"server time +0.125", Verb::ServerTime, "", u"", 125, 0, 0},
                      Good{"server answer TankMonitorReport huge 16777216", Verb::ServerAnswerHuge, "TankMonitorReport",
                           u"", 16777216, 0, 0},
                      Good{"server delay CardQue 1500", Verb::ServerDelay, "CardQue", u"", 1500, 0, 0},
                      Good{"server auto on", Verb::ServerAuto, "", u"", 1, 0, 0},
                      Good{"server auto off", Verb::ServerAuto, "", u"", 0, 0, 0}));

struct Bad {
    const char* line;
    const char* message;
};

class BadLineTest : public ::testing::TestWithParam<Bad> {};

TEST_P(BadLineTest, AnswersWithItsUsage) {
    const ParsedLine parsed = ParseScriptLine(GetParam().line);
    const auto* error = std::get_if<ScriptError>(&parsed);
    ASSERT_NE(nullptr, error) << GetParam().line;
    EXPECT_EQ(0u, error->message.rfind(GetParam().message, 0)) << error->message;
}

INSTANTIATE_TEST_SUITE_P(
    Lines, BadLineTest,
    ::testing::Values(Bad{"forecourt lift 33 hose 1", "usage: forecourt lift P hose H"},
                      Bad{"forecourt lift 7 hose 9", "usage: forecourt"}, Bad{"forecourt lift 7 2", "usage: forecourt"},
                      Bad{"forecourt hang", "usage: forecourt"}, Bad{"forecourt card 7 1234", "usage: forecourt"},
                      Bad{"forecourt fly 7 \"x\"", "usage: forecourt"}, Bad{"forecourt wash 123", "usage: forecourt"},
                      Bad{"server time 30", "usage: server time +SECONDS"},
                      Bad{"server time +1.2345", "usage: server time"}, Bad{"server time +-3", "usage: server time"},
                      Bad{"server answer Card huge -1", "usage: server answer"},
                      Bad{"server answer Card huge 67108865", "usage: server answer"},
                      Bad{"server delay CardQue", "usage: server delay MEMBER MS"},
                      Bad{"server delay CardQue 600001", "usage: server delay"},
                      Bad{"server auto maybe", "usage: server auto on|off"},
                      Bad{"server reboot", "usage: server answer"}));

TEST(EscapedText, ResolvesTheEscapesOfAQuotedTextWithoutTheQuotes) {
    const auto parsed = ParseEscapedText("C\\x10\\x07 \"quoted\" \\r\\n\\0");
    ASSERT_TRUE(std::holds_alternative<Text>(parsed));
    EXPECT_TEXT(Text(u"C\x10\x07 \"quoted\" \r\n") + Text(1, u'\0'), std::get<Text>(parsed));
    const auto broken = ParseEscapedText("abc\\x1");
    ASSERT_TRUE(std::holds_alternative<ScriptError>(broken));
    EXPECT_EQ("\\x needs 2 hexadecimal digits", std::get<ScriptError>(broken).message);
}

}  // namespace
}  // namespace vantrel
