// Bad entries at every input box of the console, through the program in
// script mode: nothing typed, Cancel, blanks alone, a megabyte of text,
// control characters, text that is no number, numbers out of range. Each
// gets the reaction its command documents: a message and nothing sent, a
// silent stop, the entry sent exactly as typed, the question asked again, or
// the end through the error report. The trace shows every box asked, every
// message shown and every block sent.
#include "e2e/reliability.h"
#include "server/trace_json.h"

#include <gmock/gmock.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vantrel::testing {
namespace {

using ::testing::ElementsAreArray;

constexpr char16_t kNoData[] = u"You entered no data or pressed cancel";
constexpr char16_t kBadHose[] = u"You entered an Invald Hose Number";
constexpr char16_t kBadMop[] = u"You entered an Invald MOP Type";

constexpr char16_t kAskHose[] = u"Enter Hose Number (0 - 8)";
constexpr char16_t kAskMop[] = u"Enter MOP (1, 2, F)";
constexpr char16_t kAskLimit[] = u"Enter Limit - Must be 6 digits";
constexpr char16_t kAskSlowdown[] = u"Enter Slow Down Point";
constexpr char16_t kAskHoses[] = u"Enter number of hoses";
constexpr char16_t kAskTier1[] = u"Enter Tier1 price";
constexpr char16_t kAskTier2[] = u"Enter Tier2 price";
constexpr char16_t kAskKeyPad[] = u"Enter Keypad Config Data";

// A mebibyte of text that begins with the given character, blanks and
// punctuation among the rest.
Text Megabyte(char16_t first) {
    static constexpr char16_t kPattern[] = u"Abc 123, xyz-";
    Text text(1, first);
    text.reserve(std::size_t{1} << 20);
    for (std::size_t i = 0; text.size() < (std::size_t{1} << 20); ++i) {
        text.push_back(kPattern[i % 13]);
    }
    return text;
}

const Text kControls(u"3\x01\t\x1b\r\n\0\x7f", 8);

Text Authorization(TextView hose, TextView mop, TextView limit) {
    return u"FuelingPosition=01\r\nHose=" + Text(hose) + u"\r\nMOP=" + Text(mop) + u"\r\nLimit=" + Text(limit) +
           Text(u"\r\n\0", 3);
}

// The price block with at most one hose group.
Text Prices(TextView slowdown, std::optional<std::pair<Text, Text>> hose1 = std::nullopt) {
    Text block = u"FuelingPosition=01\r\nSlowdownPoint=" + Text(slowdown) + u"\r\n";
    if (hose1) {
        block += u"Hose=1\r\nTier1=" + hose1->first + u"\r\nTier2=" + hose1->second + u"\r\n";
    }
    return block + Text(1, u'\0');
}

Text KeyPadBlock(TextView config) { return u"ReaderPosition=01\r\nKeyData=" + Text(config) + Text(u"\n\0", 2); }

// The entry typed into the box under test; nullopt is Cancel.
using Entry = std::optional<Text>;

std::string Answer(const Entry& entry) { return entry ? "answer " + ScriptQuoted(*entry) + "\n" : "answer cancel\n"; }

struct Reaction {
    std::vector<Text> asked;                           // the prompts of the input boxes, in order
    std::vector<Text> messages;                        // the texts of the OK boxes, in order
    std::optional<std::pair<std::string, Text>> sent;  // member and block
    std::optional<std::pair<int, std::string>> ends;   // the error report
};

// A script and the reaction it must get. Replies are queued before the
// click that opens the first box.
struct Scripted {
    std::string script;
    Reaction reaction;
};

// Made when the case runs, so that megabyte entries are built only then.
struct Case {
    std::string name;
    std::function<Scripted()> make;
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

// The Auth button asks for hose, MOP and limit, then shows the block before
// it goes. `at` is the box under test (0 hose, 1 MOP, 2 limit); the other
// boxes get entries that pass.
const Text kPresetPrompts[] = {kAskHose, kAskMop, kAskLimit};

// An entry that passes its box and is sent as typed.
Scripted PresetSends(int at, const Text& typed) {
    Text entries[] = {u"3", u"1", u"000100"};
    entries[at] = typed;
    std::string script;
    for (const Text& entry : entries) {
        script += Answer(entry);
    }
    const Text block = Authorization(entries[0], entries[1], entries[2]);
    return {script + "answer ok\nclick Preset\n",
            {{kAskHose, kAskMop, kAskLimit}, {block}, {{"Authorize", block}}, {}}};
}

// An entry refused with a message; no later box is shown.
Scripted PresetRefuses(int at, const Entry& entry, const char16_t* message) {
    std::string script;
    for (int box = 0; box < at; ++box) {
        script += Answer(box == 0 ? Text(u"3") : Text(u"1"));
    }
    return {script + Answer(entry) + "answer ok\nclick Preset\n",
            {{kPresetPrompts, kPresetPrompts + at + 1}, {message}, {}, {}}};
}

Scripted MultiHoseLock(const Entry& entry, const char16_t* message) {
    return {Answer(entry) + "answer ok\nclick MultiHoseLock\n", {{kAskMop}, {message}, {}, {}}};
}

// The Price button: slow-down point, number of hoses, then two prices a hose.
Scripted PriceSlowdown(const Entry& entry) {
    if (!entry || entry->empty()) {
        return {Answer(entry) + "click Price\n", {{kAskSlowdown}, {}, {}, {}}};
    }
    return {Answer(entry) + "answer \"1\"\nanswer \"1000\"\nanswer \"1100\"\nclick Price\n",
            {{kAskSlowdown, kAskHoses, kAskTier1, kAskTier2},
             {},
             {{"Price", Prices(*entry, std::pair<Text, Text>{u"1000", u"1100"})}},
             {}}};
}

Scripted PriceCount(const Entry& entry, std::optional<std::pair<int, std::string>> ends) {
    return {"answer \"15\"\n" + Answer(entry) + "click Price\n", {{kAskSlowdown, kAskHoses}, {}, {}, ends}};
}

// `tier` 1 or 2 is the box under test; a cancelled price skips the hose and
// the header lines still go out.
Scripted PriceTier(int tier, const Entry& entry) {
    std::string script = "answer \"15\"\nanswer \"1\"\n";
    if (tier == 2) {
        script += "answer \"1000\"\n";
    }
    script += Answer(entry);
    std::vector<Text> asked = {kAskSlowdown, kAskHoses, kAskTier1};
    if (tier == 2) {
        asked.push_back(kAskTier2);
    }
    if (!entry || entry->empty()) {
        return {script + "answer ok\nclick Price\n", {asked, {kNoData}, {{"Price", Prices(u"15")}}, {}}};
    }
    if (tier == 1) {
        script += "answer \"1100\"\n";
        asked.push_back(kAskTier2);
    }
    const auto hose = tier == 1 ? std::pair<Text, Text>{*entry, u"1100"} : std::pair<Text, Text>{u"1000", *entry};
    return {script + "click Price\n", {asked, {}, {{"Price", Prices(u"15", hose)}}, {}}};
}

// The key pad's own configuration: Yes, then the text; nothing typed ends
// the command without a word.
Scripted KeyPad(const Entry& entry) {
    const std::string script = "answer yes\n" + Answer(entry) + "click KeyPad\n";
    if (!entry || entry->empty()) {
        return {script, {{kAskKeyPad}, {}, {}, {}}};
    }
    return {script, {{kAskKeyPad}, {}, {{"KeyPadConfiguration", KeyPadBlock(*entry)}}, {}}};
}

const Entry kCancel = std::nullopt;
const Entry kEmpty = Text();
const std::pair<int, std::string> kTypeMismatch{13, "Type mismatch"};
const std::pair<int, std::string> kOverflow{6, "Overflow"};

// MOP and limit are not checked beyond being empty.
std::function<Scripted(const Entry&)> PresetUnchecked(int at) {
    return [at](const Entry& entry) {
        return entry && !entry->empty() ? PresetSends(at, *entry) : PresetRefuses(at, entry, kNoData);
    };
}

// The seven kinds of bad entry at one box, for a box whose reaction follows
// from the entry alone.
void EveryKind(std::vector<Case>& cases, const std::string& box, const std::function<Scripted(const Entry&)>& make,
               char16_t megabyteFirst, const char16_t* noNumber, const char16_t* outOfRange) {
    const std::vector<std::pair<std::string, std::function<Entry()>>> kinds = {
        {"Empty", [] { return kEmpty; }},
        {"Cancel", [] { return kCancel; }},
        {"Blanks", [] { return Entry(u"   "); }},
        {"Megabyte", [megabyteFirst] { return Entry(Megabyte(megabyteFirst)); }},
        {"Controls", [] { return Entry(kControls); }},
        {"NoNumber", [noNumber] { return Entry(noNumber); }},
        {"OutOfRange", [outOfRange] { return Entry(outOfRange); }},
    };
    for (const auto& kindAndEntry : kinds) {
        const auto& entry = kindAndEntry.second;
        cases.push_back({box + "_" + kindAndEntry.first, [make, entry] { return make(entry()); }});
    }
}

std::vector<Case> AllCases() {
    std::vector<Case> cases = {
        // The hose is checked as text against "0" and "8": what sorts between
        // them passes and goes out as typed, whatever it looks like.
        {"PresetHose_Empty", [] { return PresetRefuses(0, kEmpty, kNoData); }},
        {"PresetHose_Cancel", [] { return PresetRefuses(0, kCancel, kNoData); }},
        {"PresetHose_Blanks", [] { return PresetRefuses(0, Text(u"   "), kBadHose); }},
        {"PresetHose_Megabyte", [] { return PresetSends(0, Megabyte(u'5')); }},
        {"PresetHose_MegabyteAfterEight", [] { return PresetRefuses(0, Megabyte(u'9'), kBadHose); }},
        {"PresetHose_Controls", [] { return PresetSends(0, kControls); }},
        {"PresetHose_ControlFirst",
         [] {
             return PresetRefuses(0, Text{u'\x1b', u'3'}, kBadHose);
         }},
        {"PresetHose_NoNumber", [] { return PresetRefuses(0, Text(u"abc"), kBadHose); }},
        {"PresetHose_DigitThenLetters", [] { return PresetSends(0, u"4abc"); }},
        {"PresetHose_Nine", [] { return PresetRefuses(0, Text(u"9"), kBadHose); }},
        {"PresetHose_Negative", [] { return PresetRefuses(0, Text(u"-1"), kBadHose); }},
        {"PresetHose_HundredThousand", [] { return PresetSends(0, u"100000"); }},
        // The multi-hose lock takes "1", "2", "f" or "F" exactly.
        {"MultiHoseLock_Empty", [] { return MultiHoseLock(kEmpty, kNoData); }},
        {"MultiHoseLock_Cancel", [] { return MultiHoseLock(kCancel, kNoData); }},
        {"MultiHoseLock_Blanks", [] { return MultiHoseLock(Text(u"   "), kBadMop); }},
        {"MultiHoseLock_Megabyte", [] { return MultiHoseLock(Megabyte(u'1'), kBadMop); }},
        {"MultiHoseLock_Controls", [] { return MultiHoseLock(Text(u"1\r\n"), kBadMop); }},
        {"MultiHoseLock_NoNumber", [] { return MultiHoseLock(Text(u"x"), kBadMop); }},
        {"MultiHoseLock_Three", [] { return MultiHoseLock(Text(u"3"), kBadMop); }},
        {"MultiHoseLock_Negative", [] { return MultiHoseLock(Text(u"-1"), kBadMop); }},
        // The number of hoses is converted unguarded.
        {"PriceCount_Empty", [] { return PriceCount(kEmpty, std::nullopt); }},
        {"PriceCount_Cancel", [] { return PriceCount(kCancel, std::nullopt); }},
        {"PriceCount_Blanks", [] { return PriceCount(Text(u"   "), kTypeMismatch); }},
        {"PriceCount_Megabyte", [] { return PriceCount(Text(std::size_t{1} << 20, u'7'), kOverflow); }},
        {"PriceCount_Controls", [] { return PriceCount(Text(u"2\x1b"), kTypeMismatch); }},
        {"PriceCount_NoNumber", [] { return PriceCount(Text(u"two"), kTypeMismatch); }},
        {"PriceCount_AboveSixteenBits", [] { return PriceCount(Text(u"32768"), kOverflow); }},
        {"PriceCount_BelowSixteenBits", [] { return PriceCount(Text(u"-32769"), kOverflow); }},
        // A count above eight asks again; Cancel then stops without a word.
        {"PriceCount_AboveEightAsksAgain",
         [] {
             return Scripted{"answer \"15\"\nanswer \"12\"\nanswer cancel\nclick Price\n",
                             {{kAskSlowdown, kAskHoses, kAskHoses}, {}, {}, {}}};
         }},
    };
    EveryKind(cases, "PresetMop", PresetUnchecked(1), u'1', u"xyz", u"99999");
    EveryKind(cases, "PresetLimit", PresetUnchecked(2), u'0', u"lots", u"-99999999999");
    // The slow-down point stops silently when empty and is sent as typed
    // otherwise.
    EveryKind(cases, "PriceSlowdown", PriceSlowdown, u'2', u"slow", u"99999999999999999999");
    // Prices are not checked; a missing one skips its hose.
    EveryKind(cases, "PriceTier1", std::bind_front(PriceTier, 1), u'9', u"cheap", u"-1E400");
    EveryKind(cases, "PriceTier2", std::bind_front(PriceTier, 2), u'8', u"dear", u"1E400");
    // The key pad configuration goes out exactly as typed, unless empty.
    EveryKind(cases, "KeyPad", KeyPad, u'K', u"abc=def", u"99999999999999999999");
    return cases;
}

// The lines of one kind of event in the trace, with their leading part.
std::vector<std::string> Events(const ScriptRun& run, const std::string& prefix) {
    std::vector<std::string> lines;
    for (const std::string& line : run.trace) {
        if (line.rfind(prefix, 0) == 0) {
            lines.push_back(line);
        }
    }
    return lines;
}

class BadInput : public ::testing::TestWithParam<Case> {};

TEST_P(BadInput, GetsTheReactionItsCommandDocuments) {
    const Scripted made = GetParam().make();
    const ScriptRun run = RunConsole(made.script);
    ASSERT_TRUE(EndedByItself(run));
    const Reaction& reaction = made.reaction;

    std::vector<std::string> asked;
    for (const std::string& line : Events(run, R"({"op":"inputbox")")) {
        asked.push_back(line.substr(0, line.find(",\"title\":")));
    }
    std::vector<std::string> expectedAsked;
    for (const Text& prompt : reaction.asked) {
        expectedAsked.push_back(R"({"op":"inputbox","prompt":)" + JsonString(prompt));
    }
    EXPECT_THAT(asked, ElementsAreArray(expectedAsked));

    std::vector<std::string> messages;
    for (const Text& text : reaction.messages) {
        messages.push_back(R"({"op":"msgbox","text":)" + JsonString(text) +
                           R"(,"title":"VantrelTest","buttons":"ok","answer":"ok"})");
    }
    std::vector<std::string> shown;
    for (const std::string& line : Events(run, R"({"op":"msgbox")")) {
        if (line.find(R"("buttons":"ok")") != std::string::npos) {
            shown.push_back(line);
        }
    }
    EXPECT_TRUE(shown == messages) << shown.size() << " message boxes; the first: "
                                   << (shown.empty() ? std::string() : shown[0].substr(0, 300));

    std::vector<std::string> sent;
    if (reaction.sent) {
        sent.push_back(R"({"op":"put","member":")" + reaction.sent->first + R"(","value":{"text":)" +
                       JsonString(reaction.sent->second) + "}}");
    }
    const std::vector<std::string> calls = Calls(run);
    EXPECT_TRUE(calls == sent) << calls.size()
                               << " calls; the first: " << (calls.empty() ? std::string() : calls[0].substr(0, 300));

    if (reaction.ends) {
        EXPECT_TRUE(EndedThroughTheReport(run, reaction.ends->first, reaction.ends->second));
    } else {
        EXPECT_EQ(0, run.exitCode) << run.err.substr(0, 2000);
    }
    RemoveRunFolder(run);
}

INSTANTIATE_TEST_SUITE_P(EveryInputBox, BadInput, ::testing::ValuesIn(AllCases()),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace vantrel::testing
