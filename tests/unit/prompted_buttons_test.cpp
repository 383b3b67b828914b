// The buttons that ask first: every path through their boxes (cancelled,
// empty, rejected, accepted), the boxes in order, and the one block sent or
// nothing changed at all.
#include "support/test_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <variant>
#include <string>
#include <vector>

namespace vantrel {
namespace {

using testing::kCommandDataBefore;
using testing::kDataBefore;
using testing::kFunctionBefore;
using testing::ScriptedPrompter;
using testing::TestConsole;
// The replies to the boxes in order, as a technician gives them: a typed
// text (empty for Cancel), or a button.
using Reply = std::variant<Answer, Text>;
using Replies = std::vector<Reply>;
const Reply kOk = Answer::Ok;
const Reply kYes = Answer::Yes;
const Reply kNo = Answer::No;
const Reply kCancel = Text();

void Queue(ScriptedPrompter& prompter, const Replies& replies) {
    for (const Reply& reply : replies) {
        if (const auto* answer = std::get_if<Answer>(&reply)) {
            *answer == Answer::Ok ? prompter.Ok() : *answer == Answer::Yes ? prompter.Yes() : prompter.No();
        } else {
            prompter.Enter(std::get<Text>(reply));
        }
    }
}

Text Block(const char16_t* lines) { return Text(lines) + kNul; }

// The boxes a click opened, one readable line each, so that a failing
// comparison shows the whole dialogue in order.
std::string Box(const char* kind, const Text& text, const Text& title) {
    return std::string(kind) + " \"" + Escaped(text) + "\" titled \"" + Escaped(title) + "\"";
}
std::string Input(const Text& prompt, const Text& title) { return Box("input", prompt, title); }
std::string Message(const Text& text) { return Box("message", text, kApplicationTitle); }

std::vector<std::string> Dialogue(const ScriptedPrompter& prompter) {
    std::vector<std::string> lines;
    for (const ScriptedPrompter::Box& box : prompter.boxes) {
        using Kind = ScriptedPrompter::Box::Kind;
        lines.push_back(Box(box.kind == Kind::Input      ? "input"
                            : box.kind == Kind::Question ? "question"
                                                         : "message",
                            box.text, box.title));
    }
    return lines;
}

struct PromptCase {
    const char* name;
    const char* button;
    Replies replies;
    std::vector<std::string> dialogue;
    const char* member = nullptr;  // none: nothing is sent and nothing changes
    Text block = {};
    const char16_t* functionBox = nullptr;  // none: left as it was
    bool showsBlock = true;
    bool throughCommandData = true;
};

void PrintTo(const PromptCase& c, std::ostream* out) { *out << c.name; }

constexpr char16_t kEqualsForm[] = u"<Object>.Authorize = (data)";
constexpr char16_t kPlainForm[] = u"<Object>.Authorize (data)";
constexpr char16_t kPriceForm[] = u"<Object>.Price = (data)";
const std::string kNoData = Message(u"You entered no data or pressed cancel");
const std::string kBadHose = Message(u"You entered an Invald Hose Number");
const std::string kBadMop = Message(u"You entered an Invald MOP Type");
const std::string kAskHose = Input(u"Enter Hose Number (0 - 8)", u"Hose Input");
const std::string kAskMop = Input(u"Enter MOP (1, 2, F)", u"MOP Input");
const std::string kAskLimit = Input(u"Enter Limit - Must be 6 digits", u"Preset amount Input");
const std::string kAskSlowdown = Input(u"Enter Slow Down Point", u"Slow Down Point");
const std::string kAskCount = Input(u"Enter number of hoses", u"Number of Hoses");
const std::string kAskConfig = Box("question", u"Do you want to set your on config?", u"Key Pad Configuration Select");
const std::string kAskKeys = Input(u"Enter Keypad Config Data", u"Keypad Configuration");
const std::string kAskVisible = Box("question", u"Do you want Vantrel visible?", u"WindowControl Select");

const std::vector<std::string> kAskAll = {kAskHose, kAskMop, kAskLimit};

std::string AskTier1(const Text& hose) { return Input(u"Enter Tier1 price", u"Hose = " + hose); }
std::string AskTier2(const Text& hose) { return Input(u"Enter Tier2 price", u"Hose = " + hose); }

PromptCase Refused(const char* name, const char* button, Replies replies, std::vector<std::string> dialogue) {
    return {name, button, std::move(replies), std::move(dialogue)};
}

// The authorization shows its block before it goes out.
PromptCase Authorized(const char* name, const char* button, Replies replies, std::vector<std::string> asked,
                      const char16_t* functionBox, const char16_t* lines) {
    asked.push_back(Message(Block(lines)));
    return {name, button, std::move(replies), std::move(asked), "Authorize", Block(lines), functionBox};
}

// Prices go to Price directly, never through CommandData.
PromptCase Priced(const char* name, Replies replies, std::vector<std::string> asked, const char16_t* lines,
                  const char16_t* functionBox = kPriceForm) {
    return {name, "Price", std::move(replies), std::move(asked), "Price", Block(lines), functionBox, true, false};
}

PromptCase Visibility(const char* name, Reply answer, const char16_t* line) {
    return {name,
            "WindowControl",
            {answer},
            {kAskVisible},
            "WindowControl",
            Block(line),
            u"<Object>.WindowControl = (data)",
            false};
}

PromptCase KeyPad(const char* name, Replies replies, std::vector<std::string> asked, const char16_t* lines) {
    return {name,
            "KeyPad",
            std::move(replies),
            std::move(asked),
            "KeyPadConfiguration",
            Block(lines),
            u"<Object>.KeyPadData (data)"};
}

class Prompted : public ::testing::TestWithParam<PromptCase> {};

TEST_P(Prompted, AsksInOrderThenSendsOrLeavesEverythingAsItWas) {
    const PromptCase& c = GetParam();
    TestConsole test;
    test.Select(5);
    test.server().calls.clear();
    testing::MarkUntouched(test.console());
    Queue(test.prompter(), c.replies);
    test.Click(c.button);

    EXPECT_THAT(Dialogue(test.prompter()), ::testing::ElementsAreArray(c.dialogue));
    EXPECT_EQ(0u, test.prompter().pending());
    EXPECT_TRUE(test.report().errors.empty());
    EXPECT_TEXT(c.functionBox ? c.functionBox : kFunctionBefore, test.console().FunctionBox());
    if (c.member) {
        EXPECT_TRUE(testing::SinglePut(test.calls(), c.member, c.block));
    } else {
        EXPECT_TRUE(test.calls().empty());
    }
    EXPECT_TEXT(c.member && c.showsBlock ? c.block : Text(kDataBefore), test.console().DataBox());
    EXPECT_EQ(Variant::OfText(c.member && c.throughCommandData ? c.block : Text(kCommandDataBefore)),
              test.console().CommandData);
}

std::string Name(const ::testing::TestParamInfo<PromptCase>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(
    MultiHoseLock, Prompted,
    ::testing::Values(Refused("Cancelled", "MultiHoseLock", {kCancel, kOk}, {kAskMop, kNoData}),
                      Refused("Three", "MultiHoseLock", {u"3", kOk}, {kAskMop, kBadMop}),
                      Refused("BlankBeforeF", "MultiHoseLock", {u" F", kOk}, {kAskMop, kBadMop}),
                      Refused("BlankAfterOne", "MultiHoseLock", {u"1 ", kOk}, {kAskMop, kBadMop}),
                      Authorized("LowerCaseFGoesAsTyped", "MultiHoseLock", {u"f", kOk}, {kAskMop}, kEqualsForm,
                                 u"FuelingPosition=05\r\nHose=M00000101\r\nMOP=f\r\nLimit=000100\r\n"),
                      Authorized("UpperCaseF", "MultiHoseLock", {u"F", kOk}, {kAskMop}, kEqualsForm,
                                 u"FuelingPosition=05\r\nHose=M00000101\r\nMOP=F\r\nLimit=000100\r\n"),
                      Authorized("Two", "MultiHoseLock", {u"2", kOk}, {kAskMop}, kEqualsForm,
                                 u"FuelingPosition=05\r\nHose=M00000101\r\nMOP=2\r\nLimit=000100\r\n")),
    Name);

// A hose is checked as text: "10" sorts before "8", "80" after it.
INSTANTIATE_TEST_SUITE_P(
    Preset, Prompted,
    ::testing::Values(Refused("HoseCancelled", "Preset", {kCancel, kOk}, {kAskHose, kNoData}),
                      Refused("HoseNine", "Preset", {u"9", kOk}, {kAskHose, kBadHose}),
                      Refused("HoseEighty", "Preset", {u"80", kOk}, {kAskHose, kBadHose}),
                      Refused("HoseLetter", "Preset", {u"A", kOk}, {kAskHose, kBadHose}),
                      Refused("HoseBelowZero", "Preset", {u"-1", kOk}, {kAskHose, kBadHose}),
                      Refused("MopCancelled", "Preset", {u"3", kCancel, kOk}, {kAskHose, kAskMop, kNoData}),
                      Refused("LimitCancelled", "Preset", {u"3", u"1", kCancel, kOk},
                              {kAskHose, kAskMop, kAskLimit, kNoData}),
                      Authorized("HoseTen", "Preset", {u"10", u"1", u"000200", kOk}, kAskAll, kPlainForm,
                                 u"FuelingPosition=05\r\nHose=10\r\nMOP=1\r\nLimit=000200\r\n"),
                      Authorized("HoseAsTyped", "Preset", {u"7x", u"2", u"5", kOk}, kAskAll, kPlainForm,
                                 u"FuelingPosition=05\r\nHose=7x\r\nMOP=2\r\nLimit=5\r\n"),
                      Authorized("ZeroPasses", "Preset", {u"0", u"X", u"abc", kOk}, kAskAll, kPlainForm,
                                 u"FuelingPosition=05\r\nHose=0\r\nMOP=X\r\nLimit=abc\r\n"),
                      Authorized("LowerCaseFIsAFillup", "Preset", {u"3", u"f", u"12", kOk}, kAskAll, kEqualsForm,
                                 u"FuelingPosition=05\r\nHose=3\r\nMOP=F\r\nLimit=999999\r\n"),
                      Authorized("UpperCaseFIsAFillup", "Preset", {u"8", u"F", u"12", kOk}, kAskAll, kEqualsForm,
                                 u"FuelingPosition=05\r\nHose=8\r\nMOP=F\r\nLimit=999999\r\n"),
                      Authorized("FWithABlankIsNoFillup", "Preset", {u"3", u"F ", u"12", kOk}, kAskAll, kPlainForm,
                                 u"FuelingPosition=05\r\nHose=3\r\nMOP=F \r\nLimit=12\r\n")),
    Name);

// A cancelled slow-down point or count ends silently; a count over 8 is asked
// again; a cancelled tier shows the no-data box and skips that hose.
INSTANTIATE_TEST_SUITE_P(
    Price, Prompted,
    ::testing::Values(
        Refused("SlowdownCancelled", "Price", {kCancel}, {kAskSlowdown}),
        Refused("CountCancelled", "Price", {u"20", kCancel}, {kAskSlowdown, kAskCount}),
        Refused("CancelWhenAskedAgain", "Price", {u"20", u"12", kCancel}, {kAskSlowdown, kAskCount, kAskCount}),
        Priced("ZeroSendsTheNulAlone", {u"20", u"0"}, {kAskSlowdown, kAskCount}, u"", nullptr),
        Priced("UnderAHalfRoundsToZero", {u"20", u"0.4"}, {kAskSlowdown, kAskCount}, u"", nullptr),
        Priced("OneHose", {u"20", u"1", u"1.999", u"abc"}, {kAskSlowdown, kAskCount, AskTier1(u"1"), AskTier2(u"1")},
               u"FuelingPosition=05\r\nSlowdownPoint=20\r\nHose=1\r\nTier1=1.999\r\nTier2=abc\r\n"),
        Priced("OverEightAsksAgain", {u"x", u"9", u"9.5", u"1", u"a", u"b"},
               {kAskSlowdown, kAskCount, kAskCount, kAskCount, AskTier1(u"1"), AskTier2(u"1")},
               u"FuelingPosition=05\r\nSlowdownPoint=x\r\nHose=1\r\nTier1=a\r\nTier2=b\r\n"),
        Priced("NegativeSendsTheHeaderOnly", {u" 7 ", u"-2"}, {kAskSlowdown, kAskCount},
               u"FuelingPosition=05\r\nSlowdownPoint= 7 \r\n"),
        Priced("HalfRoundsToTheEvenNeighbour", {u"5", u"2.5", u"1", u"2", u"3", u"4"},
               {kAskSlowdown, kAskCount, AskTier1(u"1"), AskTier2(u"1"), AskTier1(u"2"), AskTier2(u"2")},
               u"FuelingPosition=05\r\nSlowdownPoint=5\r\nHose=1\r\nTier1=1\r\nTier2=2\r\n"
               u"Hose=2\r\nTier1=3\r\nTier2=4\r\n"),
        Priced("EightAndAHalfIsEight",
               {u"5", u"8.5", kCancel, kOk, kCancel, kOk, kCancel, kOk, kCancel, kOk, kCancel, kOk, kCancel, kOk,
                kCancel, kOk, kCancel, kOk},
               {kAskSlowdown, kAskCount, AskTier1(u"1"), kNoData, AskTier1(u"2"), kNoData, AskTier1(u"3"), kNoData,
                AskTier1(u"4"), kNoData, AskTier1(u"5"), kNoData, AskTier1(u"6"), kNoData, AskTier1(u"7"), kNoData,
                AskTier1(u"8"), kNoData},
               u"FuelingPosition=05\r\nSlowdownPoint=5\r\n"),
        Priced("CancelledTier2SkipsThatHose", {u"15", u"2", u"1000", kCancel, kOk, u"2000", u"2100"},
               {kAskSlowdown, kAskCount, AskTier1(u"1"), AskTier2(u"1"), kNoData, AskTier1(u"2"), AskTier2(u"2")},
               u"FuelingPosition=05\r\nSlowdownPoint=15\r\nHose=2\r\nTier1=2000\r\nTier2=2100\r\n"),
        Priced("CancelledMiddleHoseUsesUpItsNumber", {u"15", u"3", u"a", u"b", kCancel, kOk, u"e", u"f"},
               {kAskSlowdown, kAskCount, AskTier1(u"1"), AskTier2(u"1"), AskTier1(u"2"), kNoData, AskTier1(u"3"),
                AskTier2(u"3")},
               u"FuelingPosition=05\r\nSlowdownPoint=15\r\nHose=1\r\nTier1=a\r\nTier2=b\r\n"
               u"Hose=3\r\nTier1=e\r\nTier2=f\r\n")),
    Name);

// The key pad's three paths: No sends the default without an input box, Yes
// sends what was typed, an empty entry sends and shows nothing at all. The
// window control keeps the data box as it was.
INSTANTIATE_TEST_SUITE_P(KeyPadAndWindowControl, Prompted,
                         ::testing::Values(KeyPad("NoSendsTheDefault", {kNo}, {kAskConfig},
                                                  u"ReaderPosition=05\r\nKeyData=123@R456A@789NYL0EHCe\n"),
                                           KeyPad("YesSendsWhatWasTyped", {kYes, u" a=b  "}, {kAskConfig, kAskKeys},
                                                  u"ReaderPosition=05\r\nKeyData= a=b  \n"),
                                           PromptCase{"YesThenCancel",
                                                      "KeyPad",
                                                      {kYes, kCancel},
                                                      {kAskConfig, kAskKeys},
                                                      nullptr,
                                                      {},
                                                      u"<Object>.KeyPadConfiguration = (data)"},
                                           Visibility("VisibleOnYes", kYes, u"Visible\r\n"),
                                           Visibility("HiddenOnNo", kNo, u"Hide\r\n")),
                         Name);

// The block box is up after the function box is written and before anything
// is sent; whatever CommandData holds when it closes is what goes out, as
// when a stress tick replaces it meanwhile.
TEST(Prompted, AssignsCommandDataAsItIsWhenTheLastBoxCloses) {
    struct Case {
        const char* button;
        Replies entries;
        Text shown;
    };
    for (const Case& c :
         {Case{"MultiHoseLock", {u"1"}, Block(u"FuelingPosition=01\r\nHose=M00000101\r\nMOP=1\r\nLimit=000100\r\n")},
          Case{"Preset",
               {u"1", u"2", u"000300"},
               Block(u"FuelingPosition=01\r\nHose=1\r\nMOP=2\r\nLimit=000300\r\n")}}) {
        TestConsole test;
        testing::MarkUntouched(test.console());
        Queue(test.prompter(), c.entries);
        test.prompter()
            .During([&test] {
                EXPECT_TRUE(test.calls().empty());
                EXPECT_TEXT(kDataBefore, test.console().DataBox());
                EXPECT_NE(kFunctionBefore, test.console().FunctionBox());
                test.console().CommandData = Variant::OfText(u"replaced while the box was up");
            })
            .Ok();
        test.Click(c.button);
        EXPECT_TRUE(testing::SinglePut(test.calls(), "Authorize", u"replaced while the box was up")) << c.button;
        EXPECT_TEXT(c.shown, test.console().DataBox());  // the command's own block
    }
}

TEST(Prompted, AHoseCountThatIsNoNumberOrTooLargeEndsThroughTheReport) {
    struct Case {
        const char16_t* count;
        int error;
    };
    for (const Case& c : {Case{u"two", 13}, Case{u"(5", 13}, Case{u"40000", 6}, Case{u"-32769", 6}}) {
        TestConsole test;
        testing::MarkUntouched(test.console());
        test.prompter().Enter(u"15").Enter(c.count);
        test.Click("Price");
        ASSERT_EQ(1u, test.report().errors.size()) << Escaped(c.count);
        EXPECT_EQ(c.error, test.report().errors[0].number());
        EXPECT_TRUE(test.calls().empty());
        EXPECT_TEXT(kFunctionBefore, test.console().FunctionBox());
        EXPECT_TEXT(kDataBefore, test.console().DataBox());
    }
}

}  // namespace
}  // namespace vantrel
