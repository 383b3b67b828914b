#include "server/runtime_error.h"
#include "server/server_calls.h"
#include "server/trace_json.h"
#include "server/variant.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <clocale>
#include <memory>
#include <string>
#include <vector>

namespace vantrel {
namespace {

TEST(Conversions, ToInt16FollowsThePlatformRules) {
    EXPECT_EQ(0, ToInt16(Variant()));
    EXPECT_EQ(0, ToInt16(Variant::OfText(u"")));
    EXPECT_EQ(12, ToInt16(Variant::OfText(u" 12 ")));
    EXPECT_EQ(-7, ToInt16(Variant::OfText(u"-7")));
    EXPECT_EQ(2, ToInt16(Variant::OfText(u"2.5")));  // half to even
    EXPECT_EQ(4, ToInt16(Variant::OfText(u"3.5")));
    EXPECT_EQ(-2, ToInt16(Variant::OfText(u"-2.5")));
    EXPECT_EQ(3, ToInt16(Variant::OfText(u"2.51")));
    EXPECT_EQ(32767, ToInt16(Variant::OfText(u"32767")));
    EXPECT_EQ(-32768, ToInt16(Variant::OfText(u"-32768")));
    EXPECT_EQ(255, ToInt16(Variant::OfText(u"&HFF")));
    EXPECT_EQ(1000, ToInt16(Variant::OfText(u"1E3")));
    EXPECT_EQ(-1, ToInt16(Variant::OfBoolean(true)));
    EXPECT_EQ(300, ToInt16(Variant::OfInt32(300)));
    EXPECT_EQ(2, ToInt16(Variant::OfDouble(2.5)));
}

TEST(Conversions, NumbersReadTheSameUnderAnyLocale) {
    // Qt adopts the user's locale; a comma-decimal one must not change what
    // an answer means.
    const char* previous = std::setlocale(LC_NUMERIC, nullptr);
    const std::string saved = previous ? previous : "C";
    if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr && std::setlocale(LC_NUMERIC, "fr_FR.UTF-8") == nullptr) {
        GTEST_SKIP() << "no comma-decimal locale on this machine";
    }
    EXPECT_EQ(2, ToInt16(Variant::OfText(u"2.5")));
    EXPECT_EQ(4, ToInt16(Variant::OfText(u"3.5")));
    std::setlocale(LC_NUMERIC, saved.c_str());
}

TEST(Conversions, FailuresCarryThePlatformErrorNumbers) {
    const auto number = [](const Variant& value) {
        try {
            ToInt16(value);
        } catch (const RuntimeError& error) {
            return error.number();
        }
        return 0;
    };
    EXPECT_EQ(13, number(Variant::OfText(u"abc")));
    EXPECT_EQ(13, number(Variant::OfText(u"12abc")));
    EXPECT_EQ(13, number(Variant::OfText(u"   ")));
    EXPECT_EQ(13, number(Variant::OfText(u"1E")));
    EXPECT_EQ(6, number(Variant::OfText(u"32768")));
    EXPECT_EQ(6, number(Variant::OfText(u"1E5")));
    EXPECT_EQ(6, number(Variant::OfText(u"-32769")));
    EXPECT_EQ(-32768, ToInt16(Variant::OfText(u"-32768.5")));  // the even neighbour is in range
    EXPECT_EQ(6, number(Variant::OfInt32(70000)));
    EXPECT_EQ(6, number(Variant::OfText(u"1E400")));
    EXPECT_EQ(94, number(Variant::Null()));
    EXPECT_EQ(-32768, ToInt16(Variant::OfText(u"-32767.5")));  // rounds to even, inside the range
}

TEST(Conversions, ToTextShowsEveryKind) {
    EXPECT_TEXT(u"", ToText(Variant()));
    EXPECT_TEXT(Text(u"a\0b", 3), ToText(Variant::OfText(Text(u"a\0b", 3))));
    EXPECT_TEXT(u"-5", ToText(Variant::OfInt16(-5)));
    EXPECT_TEXT(u"70000", ToText(Variant::OfInt32(70000)));
    EXPECT_TEXT(u"2.5", ToText(Variant::OfDouble(2.5)));
    EXPECT_TEXT(u"1E+20", ToText(Variant::OfDouble(1e20)));
    EXPECT_TEXT(u"1E-05", ToText(Variant::OfDouble(0.00001)));
    EXPECT_TEXT(u"True", ToText(Variant::OfBoolean(true)));
    EXPECT_THROW(ToText(Variant::Null()), RuntimeError);
}

TEST(Trace, WritesEveryValueKindAndControlCharacterAsJson) {
    CallEvent put;
    put.op = CallEvent::Op::Put;
    put.member = "Authorize";
    put.argument = Variant::OfText(Text(u"A=1\r\n\x1b", 6) + u'\0');
    EXPECT_EQ(R"({"op":"put","member":"Authorize","value":{"text":"A=1\r\n\u001b\u0000"}})", ToJsonLine(put));

    CallEvent call;
    call.op = CallEvent::Op::Call;
    call.member = "DispenserInformation";
    call.argument = Variant::OfInt16(12);
    call.byRef = true;
    call.result = Variant();
    EXPECT_EQ(R"({"op":"call","member":"DispenserInformation","arg":{"i2":12},"byref":true,"result":{"empty":true}})",
              ToJsonLine(call));

    call.error = RuntimeError(438, "Object doesn't support this property or method");
    EXPECT_EQ(
        R"({"op":"call","member":"DispenserInformation","arg":{"i2":12},"byref":true,"error":{"number":438,"description":"Object doesn't support this property or method"}})",
        ToJsonLine(call));

    EXPECT_EQ(R"({"i4":70000})", ToJson(Variant::OfInt32(70000)));
    EXPECT_EQ(R"({"r8":2.5})", ToJson(Variant::OfDouble(2.5)));
    EXPECT_EQ(R"({"bool":false})", ToJson(Variant::OfBoolean(false)));
    EXPECT_EQ(R"({"null":true})", ToJson(Variant::Null()));
    EXPECT_EQ(R"({"text":"\u00e9\"\\"})", ToJson(Variant::OfText(u"\u00e9\"\\")));
}

// Counts what reaches it, like the trace file and the call monitor.
class CountingListener final : public CallListener {
public:
    void OnEvent(const CallEvent& event) override { events.push_back(event); }
    std::vector<CallEvent> events;
};

TEST(TracedObject, CallsReachTheServerWhetherOrNotAnyoneListens) {
    auto recording = std::make_unique<testing::RecordingServer>();
    testing::RecordingServer& server = *recording;
    CallEvents events;
    TracedObject traced(std::move(recording), events);

    traced.Put("Authorize", Variant::OfText(u"FuelingPosition=01\r\n"));
    Variant position = Variant::OfInt16(3);
    traced.CallByRef("DispenserInformation", position);
    ASSERT_EQ(2u, server.calls.size());  // nobody listened, and both went out
    EXPECT_EQ("Authorize", server.calls[0].member);

    CountingListener listener;
    events.Add(&listener);
    traced.Put("Price", Variant::OfText(u"Hose=1\r\n"));
    traced.Call("SystemVersions");
    ASSERT_EQ(2u, listener.events.size());
    EXPECT_EQ(Variant::OfText(u"Hose=1\r\n"), listener.events[0].argument);
    EXPECT_EQ("SystemVersions", listener.events[1].member);
    EXPECT_EQ(4u, server.calls.size());
}

}  // namespace
}  // namespace vantrel
