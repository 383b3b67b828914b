// The replay of a record and its comparison, against records written by
// hand: the reading of every line the trace can hold, the reader's messages
// for bad records, what a change reads like, masks, and the learning run.
#include "monitor/record_reader.h"
#include "monitor/replay.h"
#include "monitor/replay_compare.h"
#include "server/trace_json.h"
#include "simulator/simulator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string Scratch(const std::string& name) {
    const auto folder = std::filesystem::temp_directory_path() / ("vantrel-replay-test-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    return (folder / name).string();
}

std::string WriteFile(const std::string& name, const std::string& content) {
    const std::string path = Scratch(name);
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string ReadAll(std::FILE* file) {
    std::rewind(file);
    std::string text;
    char buffer[4096];
    std::size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0) {
        text.append(buffer, got);
    }
    return text;
}

TEST(RecordLines, EveryValueKindReadsBack) {
    struct Case {
        std::string json;
        Variant expected;
    };
    const std::vector<Case> cases = {
        {R"({"text":"A\r\n\u0000\u001b\u001a\u0003\u00e9\u20ac\ud800\"\\"})",
         Variant::OfText(Text(u"A\r\n") + char16_t(0) + u"\x1b\x1a\x03\u00e9\u20ac" + char16_t(0xD800) + u"\"\\")},
        {R"({"i2":-32768})", Variant::OfInt16(-32768)},
        {R"({"i4":2147483647})", Variant::OfInt32(2147483647)},
        {R"({"r8":1.5})", Variant::OfDouble(1.5)},
        {R"({"r4":1.10000002})", Variant::OfSingle(1.1f)},
        {R"({"cy":"-123456789012.3456"})", Variant::OfCurrency(-1234567890123456)},
        {R"({"cy":"0.5"})", Variant::OfCurrency(5000)},
        {R"({"date":45000.5,"text":"3/15/2023 12:00:00 PM"})", Variant::OfDate(45000.5, u"3/15/2023 12:00:00 PM")},
        {R"({"bool":true})", Variant::OfBoolean(true)},
        {R"({"empty":true})", Variant()},
        {R"({"null":true})", Variant::Null()},
    };
    for (const Case& c : cases) {
        const ReadEvent read = ReadJsonLine(R"({"op":"put","member":"Price","value":)" + c.json + "}");
        ASSERT_EQ(read.status, ReadEvent::Status::Read) << c.json << ": " << read.problem;
        ASSERT_TRUE(read.event.argument.has_value()) << c.json;
        EXPECT_EQ(*read.event.argument, c.expected) << c.json;
        EXPECT_EQ(read.event.member, "Price");
    }
}

TEST(RecordLines, CallsBoxesReportsAndExtras) {
    ReadEvent call = ReadJsonLine(
        R"({"server_ms":12.5,"byref_back":{"i2":9},"op":"call","member":"DispenserInformation","arg":{"i2":7},"byref":true,"result":{"text":"FP=07"}})");
    ASSERT_EQ(call.status, ReadEvent::Status::Read) << call.problem;
    EXPECT_EQ(call.event.op, CallEvent::Op::Call);
    EXPECT_TRUE(call.event.byRef);
    EXPECT_EQ(*call.event.argument, Variant::OfInt16(7));
    EXPECT_EQ(*call.event.result, Variant::OfText(u"FP=07"));
    EXPECT_EQ(call.extras.serverMs, 12.5);
    EXPECT_EQ(*call.extras.writtenBack, Variant::OfInt16(9));

    const ReadEvent failed =
        ReadJsonLine(R"({"op":"call","member":"CardQue","error":{"number":438,"description":"Object doesn't"}})");
    ASSERT_EQ(failed.status, ReadEvent::Status::Read);
    EXPECT_EQ(failed.event.error->number(), 438);
    EXPECT_EQ(failed.event.error->description(), "Object doesn't");
    EXPECT_FALSE(failed.event.result.has_value());

    const ReadEvent box =
        ReadJsonLine(R"({"op":"msgbox","text":"Sure?","title":"VantrelTest","buttons":"yesno","answer":"yes"})");
    ASSERT_EQ(box.status, ReadEvent::Status::Read);
    EXPECT_EQ(box.event.op, CallEvent::Op::MessageBox);
    EXPECT_EQ(box.event.buttons, CallEvent::Buttons::YesNo);
    EXPECT_EQ(box.event.answer, u"yes");

    // A monitor export's time before the fields is passed over.
    const ReadEvent report =
        ReadJsonLine(R"({"time":"2026-11-24T15:30:12.345","op":"report","number":13,"description":"Type mismatch"})");
    ASSERT_EQ(report.status, ReadEvent::Status::Read);
    EXPECT_EQ(report.event.error->number(), 13);
}

TEST(RecordLines, WhatIsNotARecordSaysWhy) {
    EXPECT_EQ(ReadJsonLine(R"({"op":"teleport","member":"X"})").status, ReadEvent::Status::UnknownKind);
    EXPECT_THAT(ReadJsonLine(R"({"op":"teleport"})").problem, HasSubstr("\"teleport\""));
    for (const std::string line :
         {"hello", "", "[1,2]", R"({"member":"X"})", R"({"op":"put","member":"X")",
          R"({"op":"put","member":"X","value":{"i2":40000}})", R"({"op":"put","member":"X","value":{"text":"a\qb"}})",
          R"({"op":"call","member":"X","error":{"number":5}})"}) {
        EXPECT_EQ(ReadJsonLine(line).status, ReadEvent::Status::NotARecord) << line;
    }
}

TEST(RecordLines, ReplayExtrasStandBeforeThePlainLine) {
    CallEvent event;
    event.op = CallEvent::Op::Call;
    event.member = "ReaderInformation";
    event.argument = Variant::OfInt16(3);
    event.byRef = true;
    event.result = Variant::OfText(u"R=03\r\n");
    LineExtras extras;
    extras.serverMs = 61.25;
    extras.writtenBack = Variant::OfInt16(4);
    std::string line;
    ASSERT_TRUE(WriteJsonLine(event, extras, [&](std::string_view piece) {
        line += piece;
        return true;
    }));
    EXPECT_EQ(
        line,
        R"({"server_ms":61.250,"byref_back":{"i2":4},"op":"call","member":"ReaderInformation","arg":{"i2":3},"byref":true,"result":{"text":"R=03\r\n"}})"
        "\n");
}

TEST(RecordLines, SixteenMebibyteAnswerReadsWhole) {
    std::string json = R"({"op":"call","member":"SystemVersions","result":{"text":")";
    const std::size_t size = 16u * 1024 * 1024;
    json.append(size - 1, 'x');
    json += R"(\u0000"}})";
    const ReadEvent read = ReadJsonLine(json);
    ASSERT_EQ(read.status, ReadEvent::Status::Read);
    const Text& text = read.event.result->text();
    ASSERT_EQ(text.size(), size);
    EXPECT_EQ(text.back(), 0);
    EXPECT_EQ(text[size - 2], u'x');
}

TEST(RecordReader, NamesTheLineOfEachBadRecord) {
    const std::string good = R"({"op":"create","progid":"Vantrel.Application"})";
    struct Case {
        std::string content;
        int eventsBefore;
        std::string message;
        bool cut;
    };
    const std::vector<Case> cases = {
        {good + "\n" + R"({"op":"call","member":"Card)", 1, "line 2 is cut short", true},
        {good + "\nnot json\n" + good + "\n", 1, "line 2 is not a record: not JSON", false},
        {good + "\n" + good + "\n" + R"({"op":"beep","member":"X"})" + "\n", 2,
         "line 3: an event of a kind this program does not know: \"beep\"", false},
        {"", 0, "holds no events", false},
    };
    for (const Case& c : cases) {
        const std::string path = WriteFile("bad.jsonl", c.content);
        std::string problem;
        auto reader = RecordReader::Open(path, problem);
        ASSERT_TRUE(reader) << problem;
        RecordReader::Entry entry;
        int events = 0;
        RecordReader::Next next;
        while ((next = reader->Read(entry)) == RecordReader::Next::Event) {
            ++events;
        }
        EXPECT_EQ(next, RecordReader::Next::Stopped) << c.content;
        EXPECT_EQ(events, c.eventsBefore) << c.content;
        EXPECT_THAT(reader->problem(), HasSubstr(c.message));
        EXPECT_EQ(reader->cut(), c.cut);
    }
    std::string problem;
    EXPECT_FALSE(RecordReader::Open(Scratch("missing.jsonl"), problem));
    EXPECT_THAT(problem, HasSubstr("cannot open the record"));
}

Outcome Answered(Text text) {
    Outcome outcome;
    outcome.result = Variant::OfText(std::move(text));
    return outcome;
}

TEST(Comparison, KeyValueAnswersKeyByKey) {
    const Comparison c = Compare("DispenserInformation", Answered(u"FP=07\r\nVolume=1.000\r\nOld=x\r\n"),
                                 Answered(u"FP=07\r\nVolume=2.500\r\nNew=\x1b\r\n"), nullptr);
    EXPECT_EQ(c.verdict, Verdict::Changed);
    EXPECT_THAT(c.lines, ElementsAre("key Volume changed: old \"1.000\"  |  new \"2.500\"",
                                     "key Old removed: old \"x\"", "key New added: new \"\u00abESC\u00bb\""));
}

TEST(Comparison, OtherTextsByOffsetWithNamedControls) {
    const Comparison c =
        Compare("PacketQueInput", Answered(u"Data: abc\r\x10zz"), Answered(u"Data: abc\r\x07zz"), nullptr);
    EXPECT_EQ(c.verdict, Verdict::Changed);
    EXPECT_THAT(
        c.lines,
        ElementsAre("text differs at offset 10 (lengths 13, 13): old \"Data: abc\u00abCR\u00bb\u00abDLE\u00bbzz\""
                    "  |  new \"Data: abc\u00abCR\u00bb\u00abBEL\u00bbzz\""));
}

TEST(Comparison, ErrorsTypesAndWriteBack) {
    Outcome raised;
    raised.error = RuntimeError(57, "Device I/O error");
    const Comparison gone = Compare("CardQue", raised, Answered(u""), nullptr);
    EXPECT_EQ(gone.verdict, Verdict::ErrorGone);
    EXPECT_THAT(gone.lines, ElementsAre("error gone: old error 57 Device I/O error  |  new \"\""));
    const Comparison fresh = Compare("CardQue", Answered(u"C=1"), raised, nullptr);
    EXPECT_EQ(fresh.verdict, Verdict::NewError);
    EXPECT_THAT(fresh.lines, ElementsAre("new error: old \"C=1\"  |  new error 57 Device I/O error"));
    Outcome other;
    other.error = RuntimeError(57, "Device I/O error!");
    EXPECT_EQ(Compare("CardQue", raised, other, nullptr).verdict, Verdict::Changed);
    EXPECT_EQ(Compare("CardQue", raised, raised, nullptr).verdict, Verdict::Same);

    Outcome number;
    number.result = Variant::OfInt16(12);
    const Comparison type = Compare("ClearTopCardQue", number, Answered(u"12"), nullptr);
    EXPECT_THAT(type.lines, ElementsAre("answer type changed: old i2 12  |  new \"12\""));

    Outcome before = Answered(u"x");
    before.writtenBack = Variant::OfInt16(7);
    Outcome after = before;
    after.writtenBack = Variant::OfInt16(8);
    const Comparison back = Compare("DispenserInformation", before, after, nullptr);
    EXPECT_EQ(back.verdict, Verdict::Changed);
    EXPECT_THAT(back.lines, ElementsAre("written back: old i2 7  |  new i2 8"));

    Outcome unsent;
    unsent.notSent = "the record holds no value for this put";
    EXPECT_THAT(Compare("Authorize", Outcome(), unsent, nullptr).lines,
                ElementsAre("not sent: the record holds no value for this put"));
}

TEST(Masks, CountWhatTheyHideAndNoteWhatTheyNeverHid) {
    std::string problem;
    auto mask = Mask::Parse(
        "# noise of the wall clock\n"
        "FuelingPositionInformation Volume\r\n"
        "  SystemVersions\n"
        "pattern \"Time=*\"\n"
        "* Amount\n"
        "TankMonitorReport Level\n",
        problem);
    ASSERT_TRUE(mask) << problem;
    ASSERT_EQ(mask->rules().size(), 5u);

    // Only the masked key differs: masked. Another key too: that one shows.
    EXPECT_EQ(Compare("fuelingpositioninformation", Answered(u"FP=01\r\nVolume=1\r\n"),
                      Answered(u"FP=01\r\nVolume=2\r\n"), &*mask)
                  .verdict,
              Verdict::Masked);
    const Comparison partly = Compare("FuelingPositionInformation", Answered(u"Volume=1\r\nState=Idle\r\n"),
                                      Answered(u"Volume=2\r\nState=Fueling\r\n"), &*mask);
    EXPECT_EQ(partly.verdict, Verdict::Changed);
    EXPECT_THAT(partly.lines, ElementsAre("key State changed: old \"Idle\"  |  new \"Fueling\""));
    // The key is masked for its member only.
    EXPECT_EQ(Compare("DispenserInformation", Answered(u"Volume=1\r\n"), Answered(u"Volume=2\r\n"), &*mask).verdict,
              Verdict::Changed);
    EXPECT_EQ(Compare("SystemVersions", Answered(u"free text 1"), Answered(u"free text 2"), &*mask).verdict,
              Verdict::Masked);
    EXPECT_EQ(Compare("CardQue", Answered(u"A\r\nTime=12:00\r\nB"), Answered(u"A\r\nTime=12:01\r\nB"), &*mask).verdict,
              Verdict::Masked);
    EXPECT_EQ(Compare("CardQue", Answered(u"A=1\r\nAmount=1\r\n"), Answered(u"A=1\r\nAmount=2\r\n"), &*mask).verdict,
              Verdict::Masked);
    EXPECT_EQ(mask->used(), (std::vector<bool>{true, true, true, true, false}));

    for (const std::string bad : {"pattern Time=*", "A B C", "*"}) {
        EXPECT_FALSE(Mask::Parse("# first\n" + bad + "\n", problem)) << bad;
        EXPECT_THAT(problem, HasSubstr("line 2")) << bad;
    }
}

// A server for the replay: answers from a table, raises for members it
// lacks, counts each call so that an answer can change from run to run.
class TableServer final : public AutomationObject {
public:
    explicit TableServer(int run, std::vector<std::pair<std::string, Variant>>* puts = nullptr)
        : run_(run)
        , puts_(puts) {}
    void Put(std::string_view member, const Variant& value) override {
        if (puts_) {
            puts_->emplace_back(std::string(member), value);
        }
    }
    Variant Call(std::string_view member) override {
        if (member == "Ticks") {
            return Variant::OfText(u"Site=1\r\nTick=" + Text(1, char16_t(u'0' + run_)) + u"\r\n");
        }
        if (member == "Versions") {
            return Variant::OfText(u"App=10.30\r\n");
        }
        throw RuntimeError(438, "Object doesn't support this property or method");
    }
    Variant Call(std::string_view member, const Variant&) override { return Call(member); }
    Variant CallByRef(std::string_view, Variant& argument) override {
        argument = Variant::OfInt16(static_cast<std::int16_t>(argument.int16() + 1));
        return Variant::OfText(u"ok");
    }

private:
    int run_;
    std::vector<std::pair<std::string, Variant>>* puts_;
};

const char kRecord[] =
    R"({"op":"create","progid":"Vantrel.Application"})"
    "\n"
    R"({"op":"put","member":"Authorize","value":{"text":"FuelingPosition=07\r\n\u0000"}})"
    "\n"
    R"({"op":"msgbox","text":"Sure?","title":"VantrelTest","buttons":"yesno","answer":"yes"})"
    "\n"
    R"({"op":"call","member":"Versions","result":{"text":"App=10.29\r\n"}})"
    "\n"
    R"({"op":"call","member":"Gone","error":{"number":438,"description":"Object doesn't support this property or method"}})"
    "\n"
    R"({"op":"call","member":"Info","arg":{"i2":7},"byref":true,"result":{"text":"ok"}})"
    "\n"
    R"({"op":"call","member":"Queue","result":{"text":"Q=0"}})"
    "\n";

TEST(Replay, SendsEachServerEventAndReportsEveryChange) {
    const std::string path = WriteFile("record.jsonl", kRecord);
    std::string problem;
    auto record = RecordReader::Open(path, problem);
    std::vector<std::pair<std::string, Variant>> puts;
    ReplayReport report;
    const std::string own = Scratch("own.jsonl");
    std::FILE* ownFile = std::fopen(own.c_str(), "wb");
    report.WriteRecordTo(ownFile);
    const ReplayEnd end = Replay(
        *record, [&] { return std::make_unique<TableServer>(1, &puts); }, nullptr, report);
    std::fclose(ownFile);
    EXPECT_EQ(end.problem, "");
    ASSERT_EQ(puts.size(), 1u);
    EXPECT_EQ(puts[0].second, Variant::OfText(Text(u"FuelingPosition=07\r\n") + char16_t(0)));
    const auto& counts = report.counts();
    EXPECT_EQ(counts.replayed, 6u);  // the box is not sent
    EXPECT_EQ(counts.same, 3u);      // the creation, the put, the error raised again
    EXPECT_EQ(counts.changed, 2u);   // Versions, and the by-reference write-back
    EXPECT_EQ(counts.newErrors, 1u);
    EXPECT_EQ(counts.errorsGone, 0u);
    EXPECT_TRUE(report.anyChange());

    std::FILE* out = std::tmpfile();
    ASSERT_TRUE(report.WriteReport(out));
    EXPECT_EQ(ReadAll(out),
              "replayed 6 events: 3 same, 0 masked, 2 changed, 1 new errors, 0 errors gone\n"
              "#4 call Versions, sent nothing\n"
              "    key App changed: old \"10.29\"  |  new \"10.30\"\n"
              "#6 call byref Info, sent i2 7\n"
              "    written back: old i2 7  |  new i2 8\n"
              "#7 call Queue, sent nothing\n"
              "    new error: old \"Q=0\"  |  new error 438 Object doesn't support this property or method\n");
    std::fclose(out);

    // The replay's own record: the box kept in its place, times and the
    // write-back in their own fields.
    std::ifstream written(own);
    std::vector<std::string> lines;
    for (std::string line; std::getline(written, line);) {
        lines.push_back(line);
    }
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_EQ(lines[2], R"({"op":"msgbox","text":"Sure?","title":"VantrelTest","buttons":"yesno","answer":"yes"})");
    EXPECT_THAT(lines[5], HasSubstr(R"("byref_back":{"i2":8},"op":"call","member":"Info")"));
    EXPECT_THAT(lines[6], HasSubstr(R"(,"op":"call","member":"Queue","error":{"number":438)"));
    EXPECT_EQ(lines[6].rfind(R"({"server_ms":)", 0), 0u);
}

// The record replayed into a report: how it ended.
ReplayEnd ReplayInto(ReplayReport& report, const std::string& path, const ServerMaker& make) {
    std::string problem;
    auto record = RecordReader::Open(path, problem);
    EXPECT_TRUE(record) << problem;
    return record ? Replay(*record, make, nullptr, report) : ReplayEnd{problem};
}

TEST(Replay, StopsAtAServerThatCannotBeCreated) {
    ReplayReport report;
    const ReplayEnd end = ReplayInto(report, WriteFile("record.jsonl", kRecord),
                                     []() -> std::unique_ptr<AutomationObject> { throw errors::CannotCreateObject(); });
    EXPECT_EQ(end.problem, "the server cannot be created: error 429 ActiveX component can't create object");
    EXPECT_EQ(report.counts().replayed, 0u);
}

// A server whose process ended after its second call: every later call
// fails as a dead COM server's does.
class DyingServer final : public AutomationObject {
public:
    void Put(std::string_view, const Variant&) override { Check(); }
    Variant Call(std::string_view) override {
        Check();
        return Variant::OfText(u"Q=0");
    }
    Variant Call(std::string_view member, const Variant&) override { return Call(member); }
    Variant CallByRef(std::string_view member, Variant&) override { return Call(member); }

private:
    void Check() {
        if (++calls_ > 2) {
            throw RuntimeError(462, "The remote server machine does not exist or is unavailable");
        }
    }
    int calls_ = 0;
};

TEST(Replay, AServerThatDiesPartWayFailsEveryLaterEventAndTheReportIsComplete) {
    std::string record;
    for (int i = 0; i < 5; ++i) {
        record += R"({"op":"call","member":"Queue","result":{"text":"Q=0"}})"
                  "\n";
    }
    ReplayReport report;
    const ReplayEnd end =
        ReplayInto(report, WriteFile("dying.jsonl", record), [] { return std::make_unique<DyingServer>(); });
    EXPECT_EQ(end.problem, "");
    EXPECT_EQ(report.counts().replayed, 5u);
    EXPECT_EQ(report.counts().same, 2u);
    EXPECT_EQ(report.counts().newErrors, 3u);
    std::FILE* out = std::tmpfile();
    ASSERT_TRUE(report.WriteReport(out));
    const std::string text = ReadAll(out);
    std::fclose(out);
    for (const char* number : {"#3 ", "#4 ", "#5 "}) {
        EXPECT_THAT(text,
                    HasSubstr(std::string(number) + "call Queue, sent nothing\n    new error: old \"Q=0\"  |  new "
                                                    "error 462 The remote server machine"));
    }
}

TEST(Replay, LearningWritesWhatDiffersBetweenTwoRuns) {
    const std::string path = WriteFile("learn.jsonl", R"({"op":"call","member":"Ticks","result":{"text":""}})"
                                                      "\n"
                                                      R"({"op":"call","member":"Versions","result":{"text":""}})"
                                                      "\n");
    int runs = 0;
    const Learned learned = LearnMask(
        path, [&] { return std::make_unique<TableServer>(++runs); }, Scratch("scratch.jsonl"));
    EXPECT_EQ(learned.problem, "");
    EXPECT_EQ(runs, 2);
    EXPECT_THAT(learned.rules, ElementsAre("Ticks Tick"));
}

TEST(Replay, MarkedlySlowerIsTwiceAndTenMilliseconds) {
    EXPECT_TRUE(MarkedlySlower(5, 15));
    EXPECT_FALSE(MarkedlySlower(5, 14.9));
    EXPECT_FALSE(MarkedlySlower(20, 39));
    EXPECT_TRUE(MarkedlySlower(20, 40));
}

TEST(ChangedRelease, EachChangeTouchesOneMemberOnly) {
    std::string unknown;
    EXPECT_FALSE(simulation::ReleaseChanges::Parse("version,faster", unknown));
    EXPECT_EQ(unknown, "faster");
    const auto all = simulation::ReleaseChanges::Parse("renamed-key,added-line,raised-error,version,slower", unknown);
    ASSERT_TRUE(all);
    Simulator changed(std::make_unique<simulation::ManualClock>());
    changed.PlayRelease(*all);
    Simulator plain(std::make_unique<simulation::ManualClock>());
    Variant position = Variant::OfInt16(3);
    const Text info = changed.Call("FuelingPositionInformation", position).text();
    EXPECT_NE(info.find(u"\r\nPrice=0.000\r\n"), Text::npos) << Escaped(info);
    EXPECT_EQ(info.find(u"UnitPrice"), Text::npos);
    const Text dispenser = changed.CallByRef("DispenserInformation", position).text();
    EXPECT_EQ(dispenser, plain.CallByRef("DispenserInformation", position).text() + u"Firmware=4.03\r\n");
    EXPECT_NE(changed.Call("SystemVersions").text().find(u"Application=Vantrel.Application 10.30 (built-in"),
              Text::npos);
    try {
        changed.Call("CardQue");
        ADD_FAILURE() << "CardQue answered";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 57);
    }
    EXPECT_EQ(changed.CallByRef("ReaderInformation", position), plain.CallByRef("ReaderInformation", position));
    EXPECT_EQ(dynamic_cast<simulation::ManualClock*>(changed.manualClock())->waited().count(), 60);
    EXPECT_EQ(changed.Call("KeyQue"), plain.Call("KeyQue"));
}

}  // namespace
}  // namespace vantrel
