// Price buttons: the fixed test blocks and the prompted entry with its hose
// loop, all assigned to Price directly, never through CommandData.
#include "unit/dispenser_helpers.h"

#include <gmock/gmock.h>

#include <functional>
#include <optional>

namespace vantrel {
namespace {

using testing::Block;
using testing::Dialogue;
using testing::ExpectOnePut;
using testing::Input;
using testing::MarkUntouched;
using testing::Message;
using testing::ScriptedPrompter;
using testing::TestConsole;

constexpr char16_t kPriceForm[] = u"<Object>.Price = (data)";

void ExpectPriced(TestConsole& test, const Text& block) {
    ExpectOnePut(test, "Price", block);
    EXPECT_TEXT(block, test.console().DataBox());
    EXPECT_EQ(Variant::OfText(u"command data before"), test.console().CommandData);
}

struct FixedCase {
    const char* button;
    Text block;
};

class FixedPrices : public ::testing::TestWithParam<FixedCase> {};

TEST_P(FixedPrices, SendsTheTestPricesOfTheSelectedPosition) {
    TestConsole test;
    test.Select(9);
    test.server().calls.clear();
    MarkUntouched(test.console());
    test.Click(GetParam().button);
    EXPECT_TEXT(kPriceForm, test.console().FunctionBox());
    ExpectPriced(test, GetParam().block);
    EXPECT_TRUE(test.prompter().boxes.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, FixedPrices,
    ::testing::Values(
        FixedCase{"Price1", Block(u"FuelingPosition=09\r\nSlowdownPoint=15\r\nHose=1\r\nTier1=1111\r\nTier2=1111\r\n")},
        FixedCase{"Price2", Block(u"FuelingPosition=09\r\nSlowdownPoint=15\r\n"
                                  u"Hose=1\r\nTier1=1111\r\nTier2=1111\r\nHose=2\r\nTier1=2222\r\nTier2=2222\r\n")},
        FixedCase{"Price3", Block(u"FuelingPosition=09\r\nSlowdownPoint=15\r\n"
                                  u"Hose=1\r\nTier1=1111\r\nTier2=1111\r\nHose=2\r\nTier1=2222\r\nTier2=2222\r\n"
                                  u"Hose=3\r\nTier1=3333\r\nTier2=3333\r\n")},
        FixedCase{"Price4", Block(u"FuelingPosition=09\r\nSlowdownPoint=15\r\n"
                                  u"Hose=1\r\nTier1=1111\r\nTier2=1111\r\nHose=2\r\nTier1=2222\r\nTier2=2222\r\n"
                                  u"Hose=3\r\nTier1=3333\r\nTier2=3333\r\nHose=4\r\nTier1=4444\r\nTier2=4444\r\n")},
        FixedCase{"Price5", Block(u"FuelingPosition=09\r\nSlowdownPoint=15\r\n"
                                  u"Hose=1\r\nTier1=1111\r\nTier2=1111\r\nHose=2\r\nTier1=2222\r\nTier2=2222\r\n"
                                  u"Hose=3\r\nTier1=3333\r\nTier2=3333\r\nHose=4\r\nTier1=4444\r\nTier2=4444\r\n"
                                  u"Hose=5\r\nTier1=5555\r\nTier2=5555\r\n")},
        FixedCase{"Price6", Block(u"FuelingPosition=09\r\nSlowdownPoint=15\r\n"
                                  u"Hose=1\r\nTier1=1111\r\nTier2=1111\r\nHose=2\r\nTier1=2222\r\nTier2=2222\r\n"
                                  u"Hose=3\r\nTier1=3333\r\nTier2=3333\r\nHose=4\r\nTier1=4444\r\nTier2=4444\r\n"
                                  u"Hose=5\r\nTier1=5555\r\nTier2=5555\r\nHose=6\r\nTier1=6666\r\nTier2=6666\r\n")},
        FixedCase{"Price3Blend", Block(u"FuelingPosition=09\r\nSlowdownPoint=15\r\n"
                                       u"Hose=1\r\nTier1=1111\r\nTier2=1111\r\nBlend=100\r\n"
                                       u"Hose=2\r\nTier1=2222\r\nTier2=2222\r\nBlend=050\r\n"
                                       u"Hose=3\r\nTier1=3333\r\nTier2=3333\r\nBlend=000\r\n")}));

TEST(FixedPrices, OneHoseAtPositionOneIsSeventyOneCharacters) {
    TestConsole test;
    test.Click("Price1");
    EXPECT_EQ(71u, test.calls().at(0).text().size());
}

// One path through the prompted entry: the replies, the boxes in order, and
// the block sent (none: nothing sent and nothing changed).
struct PromptCase {
    const char* name;
    std::function<void(ScriptedPrompter&)> replies;
    std::vector<std::string> dialogue;
    std::optional<Text> block;
    bool writesFunctionBox = true;
};

std::ostream& operator<<(std::ostream& out, const PromptCase& c) { return out << c.name; }

const std::string kAskSlowdown = Input(u"Enter Slow Down Point", u"Slow Down Point");
const std::string kAskCount = Input(u"Enter number of hoses", u"Number of Hoses");
const std::string kNoData = Message(u"You entered no data or pressed cancel");

std::string AskTier1(const Text& hose) { return Input(u"Enter Tier1 price", u"Hose = " + hose); }
std::string AskTier2(const Text& hose) { return Input(u"Enter Tier2 price", u"Hose = " + hose); }

class PromptedPrice : public ::testing::TestWithParam<PromptCase> {};

TEST_P(PromptedPrice, AsksAndSendsWhatWasEntered) {
    const PromptCase& c = GetParam();
    TestConsole test;
    test.Select(4);
    test.server().calls.clear();
    MarkUntouched(test.console());
    c.replies(test.prompter());
    test.Click("Price");
    EXPECT_THAT(Dialogue(test.prompter()), ::testing::ElementsAreArray(c.dialogue));
    EXPECT_EQ(0u, test.prompter().pending());
    EXPECT_TRUE(test.report().errors.empty());
    EXPECT_TEXT(c.block && c.writesFunctionBox ? kPriceForm : u"function before", test.console().FunctionBox());
    if (c.block) {
        ExpectPriced(test, *c.block);
    } else {
        EXPECT_TRUE(test.calls().empty());
        EXPECT_TEXT(u"data before", test.console().DataBox());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Entries, PromptedPrice,
    ::testing::Values(
        PromptCase{"SlowdownCancelledSilently", [](auto& p) { p.Cancel(); }, {kAskSlowdown}, std::nullopt},
        PromptCase{"CountCancelledSilently",
                   [](auto& p) { p.Enter(u"20").Cancel(); },
                   {kAskSlowdown, kAskCount},
                   std::nullopt},
        PromptCase{"ZeroSendsTheNulAlone",
                   [](auto& p) { p.Enter(u"20").Enter(u"0"); },
                   {kAskSlowdown, kAskCount},
                   Block(u""),
                   false},
        PromptCase{"UnderAHalfRoundsToZero",
                   [](auto& p) { p.Enter(u"20").Enter(u"0.4"); },
                   {kAskSlowdown, kAskCount},
                   Block(u""),
                   false},
        PromptCase{"OneHose",
                   [](auto& p) { p.Enter(u"20").Enter(u"1").Enter(u"1.999").Enter(u"abc"); },
                   {kAskSlowdown, kAskCount, AskTier1(u"1"), AskTier2(u"1")},
                   Block(u"FuelingPosition=04\r\nSlowdownPoint=20\r\nHose=1\r\nTier1=1.999\r\nTier2=abc\r\n")},
        PromptCase{"OverEightAsksAgain",
                   [](auto& p) { p.Enter(u"x").Enter(u"9").Enter(u"9.5").Enter(u"1").Enter(u"a").Enter(u"b"); },
                   {kAskSlowdown, kAskCount, kAskCount, kAskCount, AskTier1(u"1"), AskTier2(u"1")},
                   Block(u"FuelingPosition=04\r\nSlowdownPoint=x\r\nHose=1\r\nTier1=a\r\nTier2=b\r\n")},
        PromptCase{"CancelWhenAskedAgain",
                   [](auto& p) { p.Enter(u"20").Enter(u"12").Cancel(); },
                   {kAskSlowdown, kAskCount, kAskCount},
                   std::nullopt},
        PromptCase{"NegativeSendsTheHeaderOnly",
                   [](auto& p) { p.Enter(u" 7 ").Enter(u"-2"); },
                   {kAskSlowdown, kAskCount},
                   Block(u"FuelingPosition=04\r\nSlowdownPoint= 7 \r\n")},
        PromptCase{"HalfRoundsToTheEvenNeighbour",
                   [](auto& p) { p.Enter(u"5").Enter(u"2.5").Enter(u"1").Enter(u"2").Enter(u"3").Enter(u"4"); },
                   {kAskSlowdown, kAskCount, AskTier1(u"1"), AskTier2(u"1"), AskTier1(u"2"), AskTier2(u"2")},
                   Block(u"FuelingPosition=04\r\nSlowdownPoint=5\r\n"
                         u"Hose=1\r\nTier1=1\r\nTier2=2\r\nHose=2\r\nTier1=3\r\nTier2=4\r\n")},
        PromptCase{"EightAndAHalfIsEight",
                   [](auto& p) {
                       p.Enter(u"5").Enter(u"8.5");
                       for (int i = 0; i < 8; ++i) {
                           p.Cancel().Ok();  // a cancelled tier 1 skips the tier 2 box
                       }
                   },
                   {kAskSlowdown, kAskCount, AskTier1(u"1"), kNoData, AskTier1(u"2"), kNoData, AskTier1(u"3"), kNoData,
                    AskTier1(u"4"), kNoData, AskTier1(u"5"), kNoData, AskTier1(u"6"), kNoData, AskTier1(u"7"), kNoData,
                    AskTier1(u"8"), kNoData},
                   Block(u"FuelingPosition=04\r\nSlowdownPoint=5\r\n")},
        PromptCase{
            "CancelledTier2SkipsThatHose",
            [](auto& p) { p.Enter(u"15").Enter(u"2").Enter(u"1000").Cancel().Ok().Enter(u"2000").Enter(u"2100"); },
            {kAskSlowdown, kAskCount, AskTier1(u"1"), AskTier2(u"1"), kNoData, AskTier1(u"2"), AskTier2(u"2")},
            Block(u"FuelingPosition=04\r\nSlowdownPoint=15\r\nHose=2\r\nTier1=2000\r\nTier2=2100\r\n")},
        PromptCase{
            "CancelledMiddleHoseUsesUpItsNumber",
            [](auto& p) { p.Enter(u"15").Enter(u"3").Enter(u"a").Enter(u"b").Cancel().Ok().Enter(u"e").Enter(u"f"); },
            {kAskSlowdown, kAskCount, AskTier1(u"1"), AskTier2(u"1"), AskTier1(u"2"), kNoData, AskTier1(u"3"),
             AskTier2(u"3")},
            Block(u"FuelingPosition=04\r\nSlowdownPoint=15\r\n"
                  u"Hose=1\r\nTier1=a\r\nTier2=b\r\nHose=3\r\nTier1=e\r\nTier2=f\r\n")}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(PromptedPrice, EightHosesAskSixteenPricesUnderTheirTitles) {
    TestConsole test;
    test.prompter().Enter(u"15").Enter(u"8");
    std::vector<std::string> dialogue{kAskSlowdown, kAskCount};
    Text expected = u"FuelingPosition=01\r\nSlowdownPoint=15\r\n";
    for (const Text hose : {u"1", u"2", u"3", u"4", u"5", u"6", u"7", u"8"}) {
        test.prompter().Enter(u"T1-" + hose).Enter(u"T2-" + hose);
        dialogue.push_back(AskTier1(hose));
        dialogue.push_back(AskTier2(hose));
        expected += u"Hose=" + hose + u"\r\nTier1=T1-" + hose + u"\r\nTier2=T2-" + hose + u"\r\n";
    }
    test.Click("Price");
    EXPECT_THAT(Dialogue(test.prompter()), ::testing::ElementsAreArray(dialogue));
    ASSERT_EQ(1u, test.calls().size());
    EXPECT_TEXT(expected + kNul, test.calls()[0].text());
}

TEST(PromptedPrice, ACountThatIsNoNumberOrTooLargeEndsThroughTheReport) {
    struct Case {
        const char16_t* count;
        int error;
    };
    for (const Case& c : {Case{u"two", 13}, Case{u"1,5", 13}, Case{u"40000", 6}, Case{u"-32769", 6}}) {
        TestConsole test;
        MarkUntouched(test.console());
        test.prompter().Enter(u"15").Enter(c.count);
        test.Click("Price");
        ASSERT_EQ(1u, test.report().errors.size()) << Escaped(c.count);
        EXPECT_EQ(c.error, test.report().errors[0].number());
        EXPECT_TRUE(test.calls().empty());
        EXPECT_TEXT(u"function before", test.console().FunctionBox());
        EXPECT_TEXT(u"data before", test.console().DataBox());
    }
}

}  // namespace
}  // namespace vantrel
