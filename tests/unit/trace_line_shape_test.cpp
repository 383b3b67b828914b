// A record's lines in the trace's own layout are read without a tree of
// values; every other line goes to the general reader. Both must read any
// line alike: the same event, or the same failure with the same words.
#include "server/trace_json.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vantrel {
namespace {

std::string Shown(const std::optional<Variant>& value) { return value ? ToJson(*value) : std::string("none"); }

// Everything a line gives, in one text, so a difference shows where it is.
std::string Everything(const ReadEvent& read) {
    const CallEvent& e = read.event;
    std::string text = std::to_string(static_cast<int>(read.status)) + "|" + read.problem + "|" +
                       std::to_string(static_cast<int>(e.op)) + "|" + e.member + "|" + Shown(e.argument) + "|" +
                       (e.byRef ? "byref" : "byval") + "|" + Shown(e.result) + "|";
    text += e.error ? std::to_string(e.error->number()) + " " + e.error->description() : std::string("no error");
    text += "|" + JsonString(e.text) + JsonString(e.title) + JsonString(e.answer) +
            std::to_string(static_cast<int>(e.buttons)) + "|" +
            (read.extras.serverMs ? std::to_string(*read.extras.serverMs) : std::string("-")) + "|" +
            Shown(read.extras.writtenBack);
    return text;
}

void ExpectAlike(const std::string& line) {
    EXPECT_EQ(Everything(ReadJsonLine(line)), Everything(ReadAnyJsonLine(line))) << line;
}

// Lines as the trace writes them: every value kind, escapes, errors.
const std::vector<std::string> kTraceLines = {
    R"({"op":"create","progid":"Vantrel.Application"})",
    R"({"op":"create","progid":"Vantrel.Application","error":{"number":429,"description":"ActiveX can't create"}})",
    R"({"op":"put","member":"Authorize","value":{"text":"FuelingPosition=01\r\nHose=0\r\n\u0000"}})",
    R"({"op":"put","member":"Price","value":{"text":"\"\\\/\b\f\n\r\t\u001b\u00e9\u20ac\ud800"}})",
    R"({"op":"put","member":"Price","value":{"text":"caf\u00e9 \u00e9t\u00e9"}})",
    R"({"op":"put","member":"Price","value":{"i2":-32768}})",
    R"({"op":"put","member":"Price","value":{"i4":2147483647}})",
    R"({"op":"put","member":"Price","value":{"r8":-1.25e-3}})",
    R"({"op":"put","member":"Price","value":{"r8":null}})",
    R"({"op":"put","member":"Price","value":{"r4":1.10000002}})",
    R"({"op":"put","member":"Price","value":{"cy":"-12.5"}})",
    R"({"op":"put","member":"Price","value":{"date":45000.5,"text":"3/15/2023 12:00:00 PM"}})",
    R"({"op":"put","member":"Price","value":{"bool":true}})",
    R"({"op":"put","member":"Price","value":{"bool":false}})",
    R"({"op":"put","member":"Price","value":{"empty":true}})",
    R"({"op":"put","member":"Price","value":{"null":true}})",
    R"({"op":"put","member":"Price"})",
    R"({"op":"put","member":"Price","value":{"i2":1},"error":{"number":13,"description":"Type mismatch"}})",
    R"({"op":"call","member":"SystemVersions","result":{"text":"VER=1.0\r\n"}})",
    R"({"op":"call","member":"FuelingPositionInformation","arg":{"i2":7},"result":{"text":"FP=07"}})",
    R"({"op":"call","member":"DispenserInformation","arg":{"i2":7},"byref":true,"result":{"i4":-1}})",
    R"({"op":"call","member":"CardQue","error":{"number":438,"description":"Object doesn't \u00e9"}})",
    R"({"op":"call","member":"CardQue","arg":{"text":""},"byref":true,"error":{"number":-2147467259,"description":""}})",
    R"({"op":"call","member":"Stop"})",
};

TEST(TraceLineShape, TheTracesOwnLinesReadAsTheGeneralReaderReadsThem) {
    for (const std::string& line : kTraceLines) {
        ExpectAlike(line);
        EXPECT_EQ(ReadJsonLine(line).status, ReadEvent::Status::Read) << line;
    }
    // Checked by hand as well, not only against the other reader.
    const ReadEvent put = ReadJsonLine(kTraceLines[2]);
    EXPECT_EQ(put.event.op, CallEvent::Op::Put);
    EXPECT_EQ(put.event.member, "Authorize");
    EXPECT_EQ(put.event.argument->text(), Text(u"FuelingPosition=01\r\nHose=0\r\n") + char16_t(0));
    const ReadEvent call = ReadJsonLine(kTraceLines[20]);
    EXPECT_TRUE(call.event.byRef);
    EXPECT_EQ(*call.event.argument, Variant::OfInt16(7));
    EXPECT_EQ(*call.event.result, Variant::OfInt32(-1));
    const ReadEvent failed = ReadJsonLine(kTraceLines[22]);
    EXPECT_EQ(failed.event.error->number(), -2147467259);
    EXPECT_FALSE(failed.event.result.has_value());
    EXPECT_EQ(*ReadJsonLine(kTraceLines[13]).event.argument, Variant::OfBoolean(false));
    EXPECT_EQ(*ReadJsonLine(kTraceLines[7]).event.argument, Variant::OfDouble(-0.00125));
}

TEST(TraceLineShape, OtherLayoutsReadTheSameEvent) {
    const std::string compact = kTraceLines[20];
    const std::vector<std::string> others = {
        R"({ "op": "call", "member": "DispenserInformation", "arg": {"i2": 7}, "byref": true, "result": {"text": "x"} })",
        R"({"member":"DispenserInformation","op":"call","result":{"i4":-1},"byref":true,"arg":{"i2":7}})",
        R"({"op":"call","member":"DispenserInformation","arg":{"i2":7},"byref":true,"result":{"i4":-1}})"
        "\r",
        R"({"op":"call","member":"Dispenser\u0049nformation","arg":{"i2":7},"byref":true,"result":{"i4":-1}})",
    };
    for (const std::string& line : others) {
        ExpectAlike(line);
        const ReadEvent read = ReadJsonLine(line);
        ASSERT_EQ(read.status, ReadEvent::Status::Read) << line << ": " << read.problem;
        EXPECT_EQ(read.event.member, "DispenserInformation") << line;
        EXPECT_TRUE(read.event.byRef) << line;
        EXPECT_EQ(*read.event.argument, Variant::OfInt16(7)) << line;
    }
    EXPECT_EQ(*ReadJsonLine(others[1]).event.result, *ReadJsonLine(compact).event.result);
}

TEST(TraceLineShape, UnusualAndBrokenLinesFailAlike) {
    const std::vector<std::string> lines = {
        R"({"op":"put","member":"X","value":{"i2":40000}})",
        R"({"op":"put","member":"X","value":{"i2":+5}})",
        R"({"op":"put","member":"X","value":{"i2":1.0}})",
        R"({"op":"put","member":"X","value":{"i4":-}})",
        R"({"op":"put","member":"X","value":{"i4":2147483648}})",
        R"({"op":"put","member":"X","value":{"r8":1e5e}})",
        R"({"op":"put","member":"X","value":{"bool":1}})",
        R"({"op":"put","member":"X","value":{"text":"a\qb"}})",
        R"({"op":"put","member":"X","value":{"text":"a)"
        "\x01"
        R"(b"}})",
        R"({"op":"put","member":"X","value":{"text":"a","more":1}})",
        R"({"op":"put","member":"X","value":{"empty":false}})",
        R"({"op":"put","member":"X\u0000Y","value":{"empty":true}})",
        R"({"op":"put","member":"caf)"
        "\xc3\xa9"
        R"(","value":{"null":true}})",
        R"({"op":"call","member":"X","arg":{"i2":1},"byref":false})",
        R"({"op":"call","member":"X","result":{"i2":1},"error":{"number":5,"description":"d"}})",
        R"({"op":"call","member":"X","error":{"number":5}})",
        R"({"op":"call","member":"X","error":{"number":5,"description":"d"},"result":{"i2":1}})",
        R"({"op":"call","member":"X","member":"Y"})",
        R"({"op":"call","member":"X"}{})",
        R"({"op":"call","member":"X"} )",
        R"({"op":"teleport","member":"X"})",
        R"({"server_ms":1.5,"op":"call","member":"X","result":{"i2":1}})",
    };
    for (const std::string& line : lines) {
        ExpectAlike(line);
    }
}

TEST(TraceLineShape, ALineCutAnywhereFailsAsTheGeneralReaderSays) {
    for (const std::size_t which : {2u, 3u, 20u, 22u}) {
        const std::string& line = kTraceLines[which];
        for (std::size_t length = 0; length < line.size(); ++length) {
            const std::string cut = line.substr(0, length);
            ExpectAlike(cut);
            EXPECT_EQ(ReadJsonLine(cut).status, ReadEvent::Status::NotARecord) << cut;
        }
    }
}

}  // namespace
}  // namespace vantrel
