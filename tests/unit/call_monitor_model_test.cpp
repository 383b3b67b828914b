// The call monitor's rows, drawings, filter and limits, without any widget.
#include "monitor/call_monitor_model.h"

#include "support/call_events.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace vantrel {
namespace {

using namespace std::chrono_literals;
using Column = CallMonitorModel::Column;
using testing::FailedEvent;

const Text kFillup = Text(u"FuelingPosition=07\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n") + u'\0';
const std::string kNotSupported = "Object doesn't support this property or method";

// 21:30:59.123 on the first day of the epoch; the tests run in UTC.
const auto kWhen = std::chrono::system_clock::time_point() + 21h + 30min + 59s + 123ms;

CallEvent Put(std::string member, Variant value, std::chrono::nanoseconds took = 42us) {
    return testing::PutEvent(std::move(member), std::move(value), {kWhen, took});
}

CallEvent Call(std::string member, std::optional<Variant> argument, Variant result, bool byRef = false) {
    return testing::CallEventOf(std::move(member), std::move(argument), std::move(result), byRef, {kWhen, 1500us});
}

CallEvent Box(CallEvent::Op op, Text text, Text title, Text answer,
              CallEvent::Buttons buttons = CallEvent::Buttons::Ok) {
    return testing::BoxEvent(op, std::move(text), std::move(title), std::move(answer), buttons, kWhen);
}

CallEvent Report() {
    CallEvent event;
    event.op = CallEvent::Op::Report;
    event.when = kWhen;
    return event;
}

// Events travel as in the program: through the feed, then in one batch.
void Feed(CallMonitorModel& model, const std::vector<CallEvent>& events, MonitorLimits limits = {}) {
    CallMonitorFeed feed(limits);
    for (const CallEvent& event : events) {
        feed.OnEvent(event);
    }
    model.Append(feed.Take());
}

class UtcClock : public ::testing::Test {
protected:
    void SetUp() override {
        if (const char* zone = std::getenv("TZ")) {
            saved_ = zone;
        }
        setenv("TZ", "UTC0", 1);
        tzset();
    }
    void TearDown() override {
        if (saved_) {
            setenv("TZ", saved_->c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }
    std::optional<std::string> saved_;
};

using CallMonitorRows = UtcClock;

TEST_F(CallMonitorRows, ShowEveryKindOfEventAsTheTraceHasIt) {
    struct Case {
        CallEvent event;
        const char16_t* member;
        const char16_t* kind;
        Text sent;
        const char16_t* answer;
        const char16_t* took;
    };
    const std::vector<Case> cases = {
        {Put("Authorize", Variant::OfText(kFillup)), u"Authorize", u"put",
         u"FuelingPosition=07«CR»«LF»Hose=0«CR»«LF»MOP=F«CR»«LF»Limit=999999«CR»«LF»«NUL»", u"", u"0.042 ms"},
        {Call("FuelingPositionInformation", Variant::OfInt16(5), Variant::OfText(u"FuelingPosition=05\r\n")),
         u"FuelingPositionInformation", u"call", u"i2 5", u"FuelingPosition=05«CR»«LF»", u"1.500 ms"},
        {Call("DispenserInformation", Variant::OfInt16(7), Variant::OfText(u"FP=07\n"), true), u"DispenserInformation",
         u"call byref", u"i2 7", u"FP=07«LF»", u"1.500 ms"},
        {FailedEvent(Call("CardQue", std::nullopt, Variant()), 438, kNotSupported), u"CardQue", u"call", u"",
         u"error 438: Object doesn't support this property or method", u"1.500 ms"},
        // A failing HRESULT as its number shows it: with its code beside it.
        {FailedEvent(Call("CardQue", std::nullopt, Variant()), -2147023174,
                     "Automation error: The RPC server is unavailable."),
         u"CardQue", u"call", u"", u"error -2147023174 (800706ba): Automation error: The RPC server is unavailable.",
         u"1.500 ms"},
        {Call("ClearTopCardQue", std::nullopt, Variant()), u"ClearTopCardQue", u"call", u"", u"empty", u"1.500 ms"},
        {Put("TankMonitorStartReport", Variant::OfInt32(70000)), u"TankMonitorStartReport", u"put", u"i4 70000", u"",
         u"0.042 ms"},
        {Call("SelfDiagnosticsReportStatus", std::nullopt, Variant::OfDouble(2.5)), u"SelfDiagnosticsReportStatus",
         u"call", u"", u"r8 2.5", u"1.500 ms"},
        {Box(CallEvent::Op::MessageBox, u"Do you want Vantrel visible?", u"WindowControl Select", u"no",
             CallEvent::Buttons::YesNo),
         u"WindowControl Select", u"msgbox yesno", u"Do you want Vantrel visible?", u"no", u""},
        {Box(CallEvent::Op::InputBox, u"Enter MOP (1, 2, F)", u"MOP Input", u""), u"MOP Input", u"inputbox",
         u"Enter MOP (1, 2, F)", u"(empty: cancel)", u""},
        {FailedEvent(Report(), 13, "Type mismatch"), u"", u"report", u"", u"error 13: Type mismatch", u""},
    };
    for (std::size_t k = 0; k < cases.size(); ++k) {
        SCOPED_TRACE(k);
        CallMonitorModel model;
        Feed(model, {cases[k].event});
        ASSERT_EQ(1u, model.size());
        EXPECT_TEXT(cases[k].member, model.Cell(0, Column::Member));
        EXPECT_TEXT(cases[k].kind, model.Cell(0, Column::Kind));
        EXPECT_TEXT(cases[k].sent, model.Cell(0, Column::Sent));
        EXPECT_TEXT(cases[k].answer, model.Cell(0, Column::Answer));
        EXPECT_TEXT(cases[k].took, model.Cell(0, Column::ServerTime));
    }
}

// The position each block or call addressed, so that a technician sees when
// a command went to another position than the one selected (after
// BarCodePrint the blocks say 01).
TEST_F(CallMonitorRows, ThePositionColumnNamesThePositionEachCallAddressed) {
    struct Case {
        CallEvent event;
        const char16_t* position;
    };
    const std::vector<Case> cases = {
        {Put("Authorize", Variant::OfText(kFillup)), u"07"},
        {Put("KeyPadConfiguration", Variant::OfText(Text(u"ReaderPosition=01\r\nKeyData=1\n") + u'\0')), u"01"},
        {Put("Stop", Variant::OfText(u"12")), u"12"},
        {Put("Stop", Variant::OfText(u"0")), u"all"},
        {Call("DispenserInformation", Variant::OfInt16(5), Variant::OfText(u"FP=05"), true), u"05"},
        {Call("CardQue", std::nullopt, Variant::OfText(u"Track2=")), u""},
        {Put("PriceSignDataSend", Variant::OfText(u"Line1=1.459\r\n")), u""},
        {Put("DisplayData", Variant::OfText(u"Message=xReaderPosition=03\r\n")), u""},  // not a line of its own
        {Box(CallEvent::Op::InputBox, u"Enter", u"MOP Input", u"F"), u""},
    };
    for (std::size_t k = 0; k < cases.size(); ++k) {
        SCOPED_TRACE(k);
        CallMonitorModel model;
        Feed(model, {cases[k].event});
        EXPECT_TEXT(cases[k].position, model.Cell(0, Column::Position));
    }
}

TEST_F(CallMonitorRows, CopyARowWithItsValuesAsEscapedLiterals) {
    CallMonitorModel model;
    Feed(model, {
                    Put("Authorize", Variant::OfText(kFillup)),
                    Call("DispenserInformation", Variant::OfInt16(7), Variant::OfText(u"FP=07\r\n\x1b"), true),
                    FailedEvent(Call("CardQue", std::nullopt, Variant()), 438, kNotSupported),
                    Box(CallEvent::Op::MessageBox, u"Do you want Vantrel visible?", u"WindowControl Select", u"no",
                        CallEvent::Buttons::YesNo),
                    Box(CallEvent::Op::InputBox, u"Enter MOP (1, 2, F)", u"MOP Input", u""),
                    FailedEvent(Call("KeyQue", std::nullopt, Variant()), -2147417848, "Automation error"),
                });
    EXPECT_EQ(R"vts(21:30:59.123 put Authorize "FuelingPosition=07\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n\0")vts",
              model.RowLiteral(0));
    EXPECT_EQ(R"vts(21:30:59.123 call byref DispenserInformation i2 7 -> "FP=07\r\n\e")vts", model.RowLiteral(1));
    EXPECT_EQ(R"vts(21:30:59.123 call CardQue -> error 438 "Object doesn't support this property or method")vts",
              model.RowLiteral(2));
    EXPECT_EQ(R"vts(21:30:59.123 msgbox yesno "WindowControl Select" "Do you want Vantrel visible?" -> no)vts",
              model.RowLiteral(3));
    EXPECT_EQ(R"vts(21:30:59.123 inputbox "MOP Input" "Enter MOP (1, 2, F)" -> "")vts", model.RowLiteral(4));
    EXPECT_EQ(R"vts(21:30:59.123 call KeyQue -> error -2147417848 (80010108) "Automation error")vts",
              model.RowLiteral(5));
}

TEST(CallMonitorSymbols, DrawEveryCharacterSoItCanBeSeen) {
    struct Case {
        Text text;
        SymbolLines lines;
        std::size_t limit;
        Text drawn;
    };
    const std::size_t all = 1000;
    const std::vector<Case> cases = {
        {u"A\r\nB\r\n", SymbolLines::BreakAfterCrLf, all, u"A«CR»«LF»\nB«CR»«LF»\n"},
        {u"A\r\nB", SymbolLines::OneLine, all, u"A«CR»«LF»B"},
        {u"A\nB\rC", SymbolLines::BreakAfterCrLf, all, u"A«LF»B«CR»C"},  // no break at a lone LF or CR
        {u"\x1bG\x1a"
         u"000\x03\t\x7f\x02\x1f",
         SymbolLines::OneLine, all, u"«ESC»G«SUB»000«ETX»«TAB»«DEL»«STX»«US»"},
        {u"\u00e9\u20ac\u00ab\u00bb~", SymbolLines::OneLine, all, u"«xE9»«u20AC»«xAB»«xBB»~"},
        {Text(7, u'\0'), SymbolLines::OneLine, all, u"«NUL»«NUL»«NUL»«NUL»«NUL»«NUL»«NUL»"},
        {Text(u"x") + Text(8, u'\0') + u"y", SymbolLines::OneLine, all, u"x«NUL × 8»y"},
        // A run that starts inside the limit is counted whole.
        {Text(u"x") + Text(5000, u'\0'), SymbolLines::OneLine, 4, u"x«NUL × 5,000»"},
        {Text(200, u'x'), SymbolLines::OneLine, 160, Text(160, u'x') + u" «… 40 more characters»"},
        {Text(u"A\r\n") + Text(20, u'y'), SymbolLines::BreakAfterCrLf, 3, u"A«CR»«LF»\n«… 20 more characters»"},
    };
    for (std::size_t k = 0; k < cases.size(); ++k) {
        SCOPED_TRACE(k);
        EXPECT_TEXT(cases[k].drawn, SymbolText(cases[k].text, cases[k].lines, cases[k].limit));
    }
}

TEST(CallMonitorHex, LaysOutSixteenCharactersALineWithOffsetAndText) {
    const auto text = std::make_shared<const Text>(Text(u"FuelingPosition=07\r\n") + u'\0');
    const HexLayout hex(text, *text);
    ASSERT_EQ(2u, hex.lineCount());
    EXPECT_FALSE(hex.wide());
    EXPECT_TEXT(u"00000000  46 75 65 6C 69 6E 67 50  6F 73 69 74 69 6F 6E 3D  |FuelingPosition=|", hex.Line(0));
    EXPECT_TEXT(u"00000010  30 37 0D 0A 00                                    |07...|", hex.Line(1));
    EXPECT_TEXT(u"", hex.Line(2));

    // One character above 255 widens every cell, so the columns stay put.
    const auto wide = std::make_shared<const Text>(u"A\u20ac");
    const HexLayout wideHex(wide, *wide);
    EXPECT_TRUE(wideHex.wide());
    EXPECT_TEXT(u"00000000  0041 20AC" + Text(73, u' ') + u"|A.|", wideHex.Line(0));
}

TEST(CallMonitorHex, FoldsWholeLinesOfNulWithTheirCount) {
    // 14 NULs after "AB" share the first line; 99 whole lines follow.
    const auto text = std::make_shared<const Text>(Text(u"AB") + Text(1600, u'\0') + u"CD");
    const HexLayout hex(text, *text);
    ASSERT_EQ(3u, hex.lineCount());
    EXPECT_TEXT(u"00000010  «NUL × 1,584»", hex.Line(1));
    EXPECT_TEXT(u"00000640  00 00 43 44" + Text(39, u' ') + u"|..CD|", hex.Line(2));

    // A single line of NUL stays as it is.
    const auto single = std::make_shared<const Text>(Text(u"X") + Text(31, u'\0') + u"Y");
    EXPECT_EQ(3u, HexLayout(single, *single).lineCount());

    // Ten megabytes of NUL: two lines, made at once.
    const auto large = std::make_shared<const Text>(Text(10 * 1024 * 1024, u'\0') + u"END");
    const HexLayout largeHex(large, *large);
    ASSERT_EQ(2u, largeHex.lineCount());
    EXPECT_TEXT(u"00000000  «NUL × 10,485,760»", largeHex.Line(0));
    EXPECT_TEXT(u"00A00000  45 4E 44" + Text(42, u' ') + u"|END|", largeHex.Line(1));
}

TEST(CallMonitorFilter, ResolvesTheScriptEscapesInWhatIsTyped) {
    EXPECT_TEXT(Text(u"\r\n") + u'\0' + u"\x1b\t\\\"", Unescaped(u"\\r\\n\\0\\e\\t\\\\\\\""));
    EXPECT_TEXT(u"A\u20ac", Unescaped(u"\\x41\\u20AC"));
    // Anything that is no complete escape stays as typed.
    EXPECT_TEXT(u"\\q \\x4 \\u12G4 end\\", Unescaped(u"\\q \\x4 \\u12G4 end\\"));
}

TEST(CallMonitorFilter, ShowsOnlyTheRowsOfAMemberOrWithAText) {
    CallMonitorModel model;
    Feed(model, {
                    Put("Authorize", Variant::OfText(kFillup)),
                    Call("CardQue", std::nullopt, Variant::OfText(u"Track2=;123=45?\r\n")),
                    FailedEvent(Call("CardQue", std::nullopt, Variant()), 438, kNotSupported),
                    Call("FuelingPositionInformation", Variant::OfInt16(5), Variant::OfText(u"FP=05")),
                    Box(CallEvent::Op::InputBox, u"Enter MOP (1, 2, F)", u"MOP Input", u"F"),
                });
    EXPECT_EQ((std::set<std::string>{"Authorize", "CardQue", "FuelingPositionInformation"}), model.members());
    EXPECT_EQ((std::set<std::string>{"MOP Input"}), model.boxTitles());

    const auto numbers = [&] {
        std::vector<std::uint64_t> shown;
        for (std::size_t row = 0; row < model.size(); ++row) {
            shown.push_back(model.Number(row));
        }
        return shown;
    };
    struct Case {
        std::string member;
        Text text;
        std::vector<std::uint64_t> shown;
    };
    const std::vector<Case> cases = {
        {"CardQue", u"", {2, 3}},    {"", Unescaped(u"\\r\\n\\0"), {1}},  // only the block ends in CR LF NUL
        {"", u"cardque", {2, 3}},                                         // letters in any case
        {"", u"error 438", {3}},     {"", u"i2 5", {4}},
        {"", u"byref", {}},          {"MOP Input", u"f", {5}},
        {"CardQue", u"track2", {2}}, {"", u"", {1, 2, 3, 4, 5}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.member + " / " + Escaped(c.text));
        model.SetFilter(c.member, c.text);
        EXPECT_EQ(c.shown, numbers());
        EXPECT_EQ(5u, model.keptCount());
    }

    // Errors only: the failed call, with the member and text filters beside.
    model.SetFilter("", u"", true);
    EXPECT_EQ((std::vector<std::uint64_t>{3}), numbers());
    EXPECT_TRUE(model.filtered());
    model.SetFilter("Authorize", u"", true);
    EXPECT_EQ((std::vector<std::uint64_t>{}), numbers());

    // Rows that arrive later pass the same filter.
    model.SetFilter("CardQue", u"");
    Feed(model, {Put("Stop", Variant::OfText(u"07")), Call("CardQue", std::nullopt, Variant::OfText(u""))});
    EXPECT_EQ(3u, model.size());
    EXPECT_EQ(7u, model.keptCount());
}

TEST(CallMonitorSearch, FindsTheNextAndPreviousRowWrappingAround) {
    CallMonitorModel model;
    Feed(model, {Put("Stop", Variant::OfText(u"07")), Put("Resume", Variant::OfText(u"07")),
                 Put("Deauthorize", Variant::OfText(u"07")), Put("Stop", Variant::OfText(u"12"))});
    using Direction = CallMonitorModel::Direction;
    EXPECT_EQ(3u, model.Find(u"stop", 0, Direction::Forward));
    EXPECT_EQ(0u, model.Find(u"stop", 3, Direction::Forward));
    EXPECT_EQ(3u, model.Find(u"stop", 0, Direction::Backward));
    EXPECT_EQ(0u, model.Find(u"stop", 3, Direction::Backward));
    EXPECT_EQ(2u, model.Find(u"deauth", 2, Direction::Forward));  // the row itself comes last
    EXPECT_EQ(std::nullopt, model.Find(u"PayOutSale", 0, Direction::Forward));
    EXPECT_EQ(std::nullopt, model.Find(u"", 0, Direction::Forward));
}

// Tells what the view would be told.
class Recorder final : public CallMonitorModel::Observer {
public:
    void BeforeAppend(std::size_t first, std::size_t count) override {
        log.push_back("append " + std::to_string(first) + "+" + std::to_string(count));
    }
    void AfterAppend() override {}
    void BeforeRemoveFront(std::size_t count) override { log.push_back("remove " + std::to_string(count)); }
    void AfterRemoveFront() override {}
    void BeforeReset() override { log.push_back("reset"); }
    void AfterReset() override {}
    std::vector<std::string> log;
};

std::vector<CallEvent> Stops(int count, std::size_t length = 2) {
    std::vector<CallEvent> events;
    for (int k = 0; k < count; ++k) {
        events.push_back(Put(k % 2 ? "Stop" : "Resume", Variant::OfText(Text(length, u'7'))));
    }
    return events;
}

TEST(CallMonitorLimits, DropTheOldestRowsAndCountThem) {
    CallMonitorModel model(MonitorLimits{3, 1000});
    Recorder recorder;
    model.SetObserver(&recorder);
    Feed(model, Stops(5));
    EXPECT_EQ(3u, model.size());
    EXPECT_EQ(2u, model.droppedCount());
    EXPECT_EQ(3u, model.Number(0));
    EXPECT_EQ((std::vector<std::string>{"append 0+5", "remove 2"}), recorder.log);

    // With a filter only the shown rows that go are removed from the view.
    model.SetFilter("Stop", u"");
    recorder.log.clear();
    Feed(model, Stops(2));
    EXPECT_EQ((std::vector<std::string>{"append 1+1", "remove 1"}), recorder.log);
    EXPECT_EQ(4u, model.droppedCount());

    // Clear forgets rows and the count; numbers go on.
    model.Clear();
    EXPECT_EQ(0u, model.size());
    EXPECT_EQ(0u, model.droppedCount());
    EXPECT_TRUE(model.members().empty());
}

TEST(CallMonitorLimits, KeepToTheCharacterBudgetButAlwaysTheNewestRow) {
    CallMonitorModel model(MonitorLimits{100, 250});
    Feed(model, Stops(3, 100));
    EXPECT_EQ(2u, model.size());
    Feed(model, Stops(1, 1000));
    ASSERT_EQ(1u, model.size());
    EXPECT_EQ(1000u, PartOf(model.Event(0), EventPart::Sent).text->size());
}

TEST(CallMonitorLimits, TheFeedKeepsToTheLimitsWhileNoWindowTakesIt) {
    CallMonitorFeed feed(MonitorLimits{3, 1000});
    for (const CallEvent& event : Stops(5)) {
        feed.OnEvent(event);
    }
    CallMonitorModel model;
    model.Append(feed.Take());
    ASSERT_EQ(3u, model.size());
    EXPECT_EQ(3u, model.Number(0));
    EXPECT_EQ(2u, model.droppedCount());
    // Taken once, gone from the feed.
    model.Append(feed.Take());
    EXPECT_EQ(3u, model.size());
    EXPECT_EQ(2u, model.droppedCount());
}

TEST(CallMonitorLimits, AShownValueOutlivesItsRow) {
    CallMonitorModel model(MonitorLimits{1, 1000});
    Feed(model, {Put("Authorize", Variant::OfText(kFillup))});
    const PartView shown = PartOf(model.Event(0), EventPart::Sent);
    const PartView none = PartOf(model.Event(0), EventPart::Answer);
    Feed(model, Stops(1));
    model.Clear();
    ASSERT_TRUE(shown.isText);
    EXPECT_TEXT(kFillup, *shown.text);
    EXPECT_FALSE(none.present);
}

}  // namespace
}  // namespace vantrel
