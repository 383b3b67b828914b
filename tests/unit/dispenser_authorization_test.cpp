// Authorization buttons: the blocks assigned to Authorize through
// CommandData, and every path through the input boxes of MHL and "  Auth ".
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

constexpr char16_t kEqualsForm[] = u"<Object>.Authorize = (data)";
constexpr char16_t kPlainForm[] = u"<Object>.Authorize (data)";
constexpr char16_t kNoData[] = u"You entered no data or pressed cancel";

void ExpectAuthorized(TestConsole& test, const Text& block) {
    ExpectOnePut(test, "Authorize", block);
    EXPECT_TEXT(block, test.console().DataBox());
    EXPECT_EQ(Variant::OfText(block), test.console().CommandData);
}

struct FixedCase {
    const char* button;
    int position;
    const char16_t* functionBox;
    Text block;
};

class FixedAuthorization : public ::testing::TestWithParam<FixedCase> {};

TEST_P(FixedAuthorization, SendsItsBlockThroughCommandDataWithoutAsking) {
    const FixedCase& c = GetParam();
    TestConsole test;
    test.Select(c.position);
    test.server().calls.clear();
    test.Click(c.button);
    EXPECT_TEXT(c.functionBox, test.console().FunctionBox());
    ExpectAuthorized(test, c.block);
    EXPECT_TRUE(test.prompter().boxes.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, FixedAuthorization,
    ::testing::Values(
        FixedCase{"Fillup", 7, kEqualsForm, Block(u"FuelingPosition=07\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n")},
        FixedCase{"Fillup", 1, kEqualsForm, Block(u"FuelingPosition=01\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n")},
        FixedCase{"PresetMOP1", 12, kPlainForm, Block(u"FuelingPosition=12\r\nHose=0\r\nMOP=1\r\nLimit=000500\r\n")},
        FixedCase{"PresetMOP2", 32, kPlainForm, Block(u"FuelingPosition=32\r\nHose=0\r\nMOP=2\r\nLimit=000500\r\n")}));

TEST(FixedAuthorization, FillupIsFiftyCharactersEndingInNul) {
    TestConsole test;
    test.Select(7);
    test.Click("Fillup");
    const Text& sent = test.calls().back().text();
    EXPECT_EQ(50u, sent.size());
    EXPECT_EQ(kNul, sent.back());
}

// One path through the boxes of a prompting button: the replies, the boxes
// that must appear in that order, and the block sent (none: nothing changes).
struct PromptCase {
    const char* name;
    const char* button;
    std::function<void(ScriptedPrompter&)> replies;
    std::vector<std::string> dialogue;
    std::optional<Text> block;
    const char16_t* functionBox = nullptr;
};

std::ostream& operator<<(std::ostream& out, const PromptCase& c) { return out << c.name; }

const std::string kAskHose = Input(u"Enter Hose Number (0 - 8)", u"Hose Input");
const std::string kAskMop = Input(u"Enter MOP (1, 2, F)", u"MOP Input");
const std::string kAskLimit = Input(u"Enter Limit - Must be 6 digits", u"Preset amount Input");

PromptCase Rejected(const char* name, const char* button, std::function<void(ScriptedPrompter&)> replies,
                    std::vector<std::string> dialogue) {
    return {name, button, std::move(replies), std::move(dialogue), std::nullopt};
}

PromptCase Sent(const char* name, const char* button, std::function<void(ScriptedPrompter&)> replies,
                std::vector<std::string> asked, const char16_t* functionBox, const char16_t* lines) {
    // The block is shown before it goes out.
    asked.push_back(Message(Block(lines)));
    return {name, button, std::move(replies), std::move(asked), Block(lines), functionBox};
}

class PromptedAuthorization : public ::testing::TestWithParam<PromptCase> {};

TEST_P(PromptedAuthorization, AsksChecksAndSendsOrLeavesEverythingAsItWas) {
    const PromptCase& c = GetParam();
    TestConsole test;
    test.Select(5);
    test.server().calls.clear();
    MarkUntouched(test.console());
    c.replies(test.prompter());
    test.Click(c.button);
    EXPECT_THAT(Dialogue(test.prompter()), ::testing::ElementsAreArray(c.dialogue));
    EXPECT_EQ(0u, test.prompter().pending());
    EXPECT_TRUE(test.report().errors.empty());
    if (c.block) {
        EXPECT_TEXT(c.functionBox, test.console().FunctionBox());
        ExpectAuthorized(test, *c.block);
    } else {
        EXPECT_TRUE(test.calls().empty());
        EXPECT_TEXT(u"function before", test.console().FunctionBox());
        EXPECT_TEXT(u"data before", test.console().DataBox());
        EXPECT_EQ(Variant::OfText(u"command data before"), test.console().CommandData);
    }
}

INSTANTIATE_TEST_SUITE_P(
    MultiHoseLock, PromptedAuthorization,
    ::testing::Values(Rejected("Cancelled", "MultiHoseLock", [](auto& p) { p.Cancel().Ok(); },
                               {kAskMop, Message(kNoData)}),
                      Rejected("Three", "MultiHoseLock", [](auto& p) { p.Enter(u"3").Ok(); },
                               {kAskMop, Message(u"You entered an Invald MOP Type")}),
                      Rejected("BlankBeforeF", "MultiHoseLock", [](auto& p) { p.Enter(u" F").Ok(); },
                               {kAskMop, Message(u"You entered an Invald MOP Type")}),
                      Rejected("BlankAfterOne", "MultiHoseLock", [](auto& p) { p.Enter(u"1 ").Ok(); },
                               {kAskMop, Message(u"You entered an Invald MOP Type")}),
                      Sent(
                          "LowerCaseFGoesAsTyped", "MultiHoseLock", [](auto& p) { p.Enter(u"f").Ok(); }, {kAskMop},
                          kEqualsForm, u"FuelingPosition=05\r\nHose=M00000101\r\nMOP=f\r\nLimit=000100\r\n"),
                      Sent(
                          "UpperCaseF", "MultiHoseLock", [](auto& p) { p.Enter(u"F").Ok(); }, {kAskMop}, kEqualsForm,
                          u"FuelingPosition=05\r\nHose=M00000101\r\nMOP=F\r\nLimit=000100\r\n"),
                      Sent(
                          "Two", "MultiHoseLock", [](auto& p) { p.Enter(u"2").Ok(); }, {kAskMop}, kEqualsForm,
                          u"FuelingPosition=05\r\nHose=M00000101\r\nMOP=2\r\nLimit=000100\r\n")),
    [](const auto& info) { return std::string(info.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Preset, PromptedAuthorization,
    ::testing::Values(
        Rejected("HoseCancelled", "Preset", [](auto& p) { p.Cancel().Ok(); }, {kAskHose, Message(kNoData)}),
        Rejected("HoseNineSortsAfterEight", "Preset", [](auto& p) { p.Enter(u"9").Ok(); },
                 {kAskHose, Message(u"You entered an Invald Hose Number")}),
        Rejected("HoseEightySortsAfterEight", "Preset", [](auto& p) { p.Enter(u"80").Ok(); },
                 {kAskHose, Message(u"You entered an Invald Hose Number")}),
        Rejected("HoseLetter", "Preset", [](auto& p) { p.Enter(u"A").Ok(); },
                 {kAskHose, Message(u"You entered an Invald Hose Number")}),
        Rejected("HoseBelowZero", "Preset", [](auto& p) { p.Enter(u"-1").Ok(); },
                 {kAskHose, Message(u"You entered an Invald Hose Number")}),
        Rejected("MopCancelled", "Preset", [](auto& p) { p.Enter(u"3").Cancel().Ok(); },
                 {kAskHose, kAskMop, Message(kNoData)}),
        Rejected("LimitCancelled", "Preset", [](auto& p) { p.Enter(u"3").Enter(u"1").Cancel().Ok(); },
                 {kAskHose, kAskMop, kAskLimit, Message(kNoData)}),
        Sent(
            "HoseTenSortsBeforeEight", "Preset", [](auto& p) { p.Enter(u"10").Enter(u"1").Enter(u"000200").Ok(); },
            {kAskHose, kAskMop, kAskLimit}, kPlainForm, u"FuelingPosition=05\r\nHose=10\r\nMOP=1\r\nLimit=000200\r\n"),
        Sent(
            "HoseAsTyped", "Preset", [](auto& p) { p.Enter(u"7x").Enter(u"2").Enter(u"5").Ok(); },
            {kAskHose, kAskMop, kAskLimit}, kPlainForm, u"FuelingPosition=05\r\nHose=7x\r\nMOP=2\r\nLimit=5\r\n"),
        Sent(
            "ZeroAndEightPass", "Preset", [](auto& p) { p.Enter(u"0").Enter(u"X").Enter(u"abc").Ok(); },
            {kAskHose, kAskMop, kAskLimit}, kPlainForm, u"FuelingPosition=05\r\nHose=0\r\nMOP=X\r\nLimit=abc\r\n"),
        Sent(
            "LowerCaseFIsAFillup", "Preset", [](auto& p) { p.Enter(u"3").Enter(u"f").Enter(u"12").Ok(); },
            {kAskHose, kAskMop, kAskLimit}, kEqualsForm, u"FuelingPosition=05\r\nHose=3\r\nMOP=F\r\nLimit=999999\r\n"),
        Sent(
            "UpperCaseFIsAFillup", "Preset", [](auto& p) { p.Enter(u"8").Enter(u"F").Enter(u"12").Ok(); },
            {kAskHose, kAskMop, kAskLimit}, kEqualsForm, u"FuelingPosition=05\r\nHose=8\r\nMOP=F\r\nLimit=999999\r\n"),
        Sent(
            "MopOneKeepsTheLimit", "Preset", [](auto& p) { p.Enter(u"3").Enter(u"1").Enter(u"12").Ok(); },
            {kAskHose, kAskMop, kAskLimit}, kPlainForm, u"FuelingPosition=05\r\nHose=3\r\nMOP=1\r\nLimit=12\r\n"),
        Sent(
            "FWithABlankIsNoFillup", "Preset", [](auto& p) { p.Enter(u"3").Enter(u"F ").Enter(u"12").Ok(); },
            {kAskHose, kAskMop, kAskLimit}, kPlainForm, u"FuelingPosition=05\r\nHose=3\r\nMOP=F \r\nLimit=12\r\n")),
    [](const auto& info) { return std::string(info.param.name); });

// The block box is up after the function box is written and before anything
// is sent; whatever CommandData holds when it closes is what goes out, as
// when a stress tick replaces it meanwhile.
TEST(PromptedAuthorization, AssignsCommandDataAsItIsWhenTheBlockBoxCloses) {
    struct Case {
        const char* button;
        std::function<void(ScriptedPrompter&)> entries;
        Text block;
    };
    for (const Case& c : {Case{"MultiHoseLock", [](auto& p) { p.Enter(u"1"); },
                               Block(u"FuelingPosition=01\r\nHose=M00000101\r\nMOP=1\r\nLimit=000100\r\n")},
                          Case{"Preset", [](auto& p) { p.Enter(u"1").Enter(u"2").Enter(u"000300"); },
                               Block(u"FuelingPosition=01\r\nHose=1\r\nMOP=2\r\nLimit=000300\r\n")}}) {
        TestConsole test;
        MarkUntouched(test.console());
        c.entries(test.prompter());
        test.prompter()
            .During([&test] {
                EXPECT_TRUE(test.calls().empty());
                EXPECT_TEXT(u"data before", test.console().DataBox());
                EXPECT_NE(u"function before", test.console().FunctionBox());
                test.console().CommandData = Variant::OfText(u"replaced while the box was up");
            })
            .Ok();
        test.Click(c.button);
        ASSERT_EQ(1u, test.calls().size()) << c.button;
        EXPECT_TEXT(u"replaced while the box was up", test.calls()[0].text());
        // The data box shows the command's own block.
        EXPECT_TEXT(c.block, test.console().DataBox());
    }
}

}  // namespace
}  // namespace vantrel
