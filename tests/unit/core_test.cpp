#include "server/runtime_error.h"
#include "server/server_calls.h"
#include "server/trace_json.h"
#include "server/text.h"
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

// Text to a number as the platform reads it in the user's locale: here the
// default one, with a point for decimals, commas between thousands and "$".
TEST(Conversions, TextReadsAsThePlatformReadsItInTheUsersLocale) {
    struct Case {
        const char16_t* text;
        int number;  // the whole number, or the error
    };
    for (const Case& c :
         {Case{u"1,000", 1000}, Case{u"12,345.6", 12346}, Case{u"$5", 5}, Case{u"5$", 5}, Case{u"(5)", -5},
          Case{u"($5)", -5}, Case{u"5-", -5}, Case{u" 7+ ", 7}, Case{u"-$2.5", -2}, Case{u",5", 13}, Case{u"5,", 13},
          Case{u"(5", 13}, Case{u"--5", 13}, Case{u"$", 13}, Case{u"5 -", 13}}) {
        int outcome = 0;
        try {
            outcome = ToInt16(Variant::OfText(c.text));
        } catch (const RuntimeError& error) {
            outcome = error.number();
        }
        EXPECT_EQ(c.number, outcome) << Escaped(c.text);
    }
}

// A comma-decimal locale reads "2,5" as two and a half and "1.000" as a
// thousand, as the platform does there.
TEST(Conversions, AnotherLocaleHasItsOwnSigns) {
    const char* previous = std::setlocale(LC_ALL, nullptr);
    const std::string saved = previous ? previous : "C";
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr && std::setlocale(LC_ALL, "fr_FR.UTF-8") == nullptr) {
        GTEST_SKIP() << "no comma-decimal locale on this machine";
    }
    EXPECT_EQ(2, ToInt16(Variant::OfText(u"2,5")));
    EXPECT_EQ(4, ToInt16(Variant::OfText(u"3,5")));
    std::setlocale(LC_ALL, saved.c_str());
}

// Results of the kinds a server may answer, shown as the platform shows them.
TEST(Conversions, SinglesCurrenciesAndDatesShowAsThePlatformShowsThem) {
    EXPECT_TEXT(u"1.1", ToText(Variant::OfSingle(1.1f)));
    EXPECT_TEXT(u"1.677722E+07", ToText(Variant::OfSingle(16777220.0f)));
    EXPECT_TEXT(u"0.0001", ToText(Variant::OfSingle(0.0001f)));
    EXPECT_TEXT(u"-2.5", ToText(Variant::OfSingle(-2.5f)));
    EXPECT_TEXT(u"123456789012.3456", ToText(Variant::OfCurrency(1234567890123456)));
    EXPECT_TEXT(u"-1.5", ToText(Variant::OfCurrency(-15000)));
    EXPECT_TEXT(u"0.0001", ToText(Variant::OfCurrency(1)));
    EXPECT_TEXT(u"7", ToText(Variant::OfCurrency(70000)));
    EXPECT_TEXT(u"11/24/2026 3:30:00 PM", ToText(Variant::OfDate(46350.645833, u"11/24/2026 3:30:00 PM")));
    // As numbers they round as a Double does; a Date by its serial number.
    EXPECT_EQ(2, ToInt16(Variant::OfSingle(2.5f)));
    EXPECT_EQ(2, ToInt16(Variant::OfCurrency(25000)));
    EXPECT_EQ(3, ToInt16(Variant::OfDate(2.75, u"1/1/1900 6:00:00 PM")));
    try {
        ToInt16(Variant::OfDate(46350.5, u"11/24/2026 12:00:00 PM"));
        ADD_FAILURE() << "a date of this century is no 16-bit number";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(6, error.number());
    }
}

// The platform's text for every number a server may raise without one.
TEST(RunTimeErrors, EachNumberHasThePlatformsText) {
    EXPECT_EQ("File not found", RunTimeErrorText(53));
    EXPECT_EQ("Path not found", RunTimeErrorText(76));
    EXPECT_EQ("File already exists", RunTimeErrorText(58));
    EXPECT_EQ("Device unavailable", RunTimeErrorText(68));
    EXPECT_EQ("This key is already associated with an element of this collection", RunTimeErrorText(457));
    EXPECT_EQ("Subscript out of range", RunTimeErrorText(9));
    EXPECT_EQ("Division by zero", RunTimeErrorText(11));
    EXPECT_EQ("Object doesn't support this action", RunTimeErrorText(445));
    EXPECT_EQ("Application-defined or object-defined error", RunTimeErrorText(1000));
    EXPECT_EQ("Application-defined or object-defined error", RunTimeErrorText(-2147467259));
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
