// The COM backend against a dispatch object that records what arrives: the
// shape of every invocation style, the kinds of result, by-reference passing
// and the error numbers a technician sees. Texts both ways: see the
// simulator's tests.

#include "com_test_support.h"

#include "com/com_dispatch.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <functional>

namespace vantrel {
namespace {

using com::ComObject;
using testing::Probe;

class ComBackend : public ::testing::Test {
protected:
    Probe probe;
    std::unique_ptr<ComObject> object = std::make_unique<ComObject>(&probe);
};

enum class Style {
    Put,
    Call,
    CallByValue,
    CallByRef,
};

struct StyleCase {
    const char* name;
    Style style;
    Variant argument;  // none for a call without one
    VARTYPE argumentType;
};

void PrintTo(const StyleCase& c, std::ostream* out) { *out << c.name; }

class InvocationStyle : public ComBackend, public ::testing::WithParamInterface<StyleCase> {};

constexpr WORD kGet = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

// A put is a property put with the named argument and no result wanted;
// every call asks for a result. A by-reference argument is a reference to a
// variant that holds the 16-bit number; a text is never a null BSTR.
TEST_P(InvocationStyle, ArrivesInTheShapeLateBindingGivesIt) {
    const StyleCase& c = GetParam();
    Variant position = c.argument;
    switch (c.style) {
    case Style::Put: object->Put("Authorize", c.argument); break;
    case Style::Call: object->Call("SystemVersions"); break;
    case Style::CallByValue: object->Call("FuelingPositionInformation", c.argument); break;
    case Style::CallByRef: object->CallByRef("DispenserInformation", position); break;
    }
    ASSERT_EQ(1u, probe.invocations.size());
    const Probe::Invocation& seen = probe.invocations[0];
    const bool put = c.style == Style::Put;
    EXPECT_EQ(put ? WORD{DISPATCH_PROPERTYPUT} : kGet, seen.flags);
    EXPECT_EQ(put ? std::vector<DISPID>{DISPID_PROPERTYPUT} : std::vector<DISPID>{}, seen.named);
    EXPECT_EQ(!put, seen.resultRequested);
    EXPECT_EQ(c.style == Style::Call ? 0u : 1u, seen.argumentCount);
    EXPECT_EQ(c.argumentType, seen.argumentType);
    EXPECT_EQ(c.style == Style::CallByRef ? VARTYPE{VT_I2} : VARTYPE{VT_EMPTY}, seen.referencedType);
    EXPECT_EQ(c.style == Style::Call ? std::nullopt : std::optional(c.argument), seen.argument);
    EXPECT_FALSE(seen.nullText);
}

const auto kBlock = Variant::OfText(u"FuelingPosition=07\r\nHose=0\r\n" + Text(1, kNul));

INSTANTIATE_TEST_SUITE_P(Styles, InvocationStyle,
                         ::testing::Values(StyleCase{"PutOfABlock", Style::Put, kBlock, VT_BSTR},
                                           StyleCase{"PutOfAnEmptyText", Style::Put, Variant::OfText(u""), VT_BSTR},
                                           StyleCase{"PutOfA16BitNumber", Style::Put, Variant::OfInt16(1), VT_I2},
                                           StyleCase{"PutOfA32BitNumber", Style::Put, Variant::OfInt32(70000), VT_I4},
                                           StyleCase{"CallWithoutArgument", Style::Call, Variant(), VT_EMPTY},
                                           StyleCase{"CallByValue", Style::CallByValue, Variant::OfInt16(5), VT_I2},
                                           StyleCase{"CallByReference", Style::CallByRef, Variant::OfInt16(12),
                                                     VT_BYREF | VT_VARIANT}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(ComBackend, LooksTheMemberUpAgainAtEveryCall) {
    object->Call("SystemVersions");
    object->Call("systemversions");
    EXPECT_EQ((std::vector<std::wstring>{L"SystemVersions", L"systemversions"}), probe.lookups);
    EXPECT_EQ(2u, probe.invocations.size());
}

struct ResultCase {
    const char* name;
    std::function<void(VARIANT&)> make;
    Variant expected;
};

class ResultKind : public ComBackend, public ::testing::WithParamInterface<ResultCase> {};

TEST_P(ResultKind, ConvertsToTheNearestKind) {
    VARIANT answer;
    VariantInit(&answer);
    GetParam().make(answer);
    probe.Answer(answer);
    VariantClear(&answer);
    EXPECT_EQ(GetParam().expected, object->Call("SystemVersions"));
}

template <VARTYPE Type, typename Set>
std::function<void(VARIANT&)> Make(Set set) {
    return [set](VARIANT& v) {
        V_VT(&v) = Type;
        set(v);
    };
}

LONG gReferenced = 70000;

INSTANTIATE_TEST_SUITE_P(
    Kinds, ResultKind,
    ::testing::Values(
        ResultCase{"Empty", [](VARIANT&) {}, Variant()},
        ResultCase{"Null", Make<VT_NULL>([](VARIANT&) {}), Variant::Null()},
        ResultCase{"NullText", Make<VT_BSTR>([](VARIANT& v) { V_BSTR(&v) = nullptr; }), Variant::OfText(u"")},
        ResultCase{"Int16", Make<VT_I2>([](VARIANT& v) { V_I2(&v) = -32768; }), Variant::OfInt16(-32768)},
        ResultCase{"Int32", Make<VT_I4>([](VARIANT& v) { V_I4(&v) = 70000; }), Variant::OfInt32(70000)},
        ResultCase{"Double", Make<VT_R8>([](VARIANT& v) { V_R8(&v) = 2.5; }), Variant::OfDouble(2.5)},
        ResultCase{"Boolean", Make<VT_BOOL>([](VARIANT& v) { V_BOOL(&v) = VARIANT_TRUE; }), Variant::OfBoolean(true)},
        ResultCase{"Byte", Make<VT_UI1>([](VARIANT& v) { V_UI1(&v) = 200; }), Variant::OfInt16(200)},
        ResultCase{"SignedByte", Make<VT_I1>([](VARIANT& v) { V_I1(&v) = -5; }), Variant::OfInt16(-5)},
        ResultCase{"Unsigned16", Make<VT_UI2>([](VARIANT& v) { V_UI2(&v) = 65535; }), Variant::OfInt32(65535)},
        ResultCase{"Unsigned32TooLarge", Make<VT_UI4>([](VARIANT& v) { V_UI4(&v) = 4000000000u; }),
                   Variant::OfDouble(4000000000.0)},
        ResultCase{"Int64", Make<VT_I8>([](VARIANT& v) { V_I8(&v) = -123; }), Variant::OfInt32(-123)},
        ResultCase{"Unsigned64TooLarge", Make<VT_UI8>([](VARIANT& v) { V_UI8(&v) = 10000000000000000000ull; }),
                   Variant::OfDouble(1e19)},
        ResultCase{"Single", Make<VT_R4>([](VARIANT& v) { V_R4(&v) = 1.1f; }), Variant::OfSingle(1.1f)},
        ResultCase{"Currency", Make<VT_CY>([](VARIANT& v) { V_CY(&v).int64 = 1234567890123456; }),
                   Variant::OfCurrency(1234567890123456)},
        ResultCase{"Reference", Make<VT_BYREF | VT_I4>([](VARIANT& v) { V_I4REF(&v) = &gReferenced; }),
                   Variant::OfInt32(70000)}),
    [](const auto& info) { return std::string(info.param.name); });

// A date keeps its serial number and the platform's text for it, in the
// system's short date and time (the prefix's default locale here).
TEST_F(ComBackend, ADateComesWithThePlatformsTextForIt) {
    VARIANT date;
    VariantInit(&date);
    V_VT(&date) = VT_DATE;
    V_DATE(&date) = 36526.75;  // the first of January 2000, six in the evening
    probe.Answer(date);
    const Variant answer = object->Call("SystemVersions");
    ASSERT_TRUE(answer.is(Variant::Kind::Date));
    EXPECT_EQ(36526.75, answer.dateSerial());
    EXPECT_TEXT(u"1/1/2000 6:00:00 PM", ToText(answer));
}

TEST_F(ComBackend, NothingWhereAValueWasWantedIsError91) {
    VARIANT nothing;
    VariantInit(&nothing);
    V_VT(&nothing) = VT_DISPATCH;
    V_DISPATCH(&nothing) = nullptr;
    probe.Answer(nothing);
    try {
        object->Call("SystemVersions");
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(91, error.number());
        EXPECT_EQ("Object variable or With block variable not set", error.description());
    }
}

TEST_F(ComBackend, AValueWithNoTextualFormIsATypeMismatch) {
    VARIANT error;
    VariantInit(&error);
    V_VT(&error) = VT_ERROR;
    V_ERROR(&error) = DISP_E_PARAMNOTFOUND;
    probe.Answer(error);
    try {
        object->Call("SystemVersions");
        FAIL() << "an error value converted";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(13, e.number());
    }
}

struct WriteBackCase {
    const char* name;
    std::optional<Variant> written;
    Variant expected;
};

void PrintTo(const WriteBackCase& c, std::ostream* out) { *out << c.name; }

class ByReference : public ComBackend, public ::testing::WithParamInterface<WriteBackCase> {};

TEST_P(ByReference, WhatTheServerWritesReachesTheCaller) {
    probe.writeBack = GetParam().written;
    probe.Answer(Variant::OfText(u"FuelingPosition=12\r\n"));
    Variant position = Variant::OfInt16(12);
    const Variant answer = object->CallByRef("DispenserInformation", position);
    EXPECT_EQ(Variant::OfText(u"FuelingPosition=12\r\n"), answer);
    EXPECT_EQ(GetParam().expected, position);
}

const Variant kWrittenText = Variant::OfText(Text(u"0\0\x33", 3));

INSTANTIATE_TEST_SUITE_P(WriteBack, ByReference,
                         ::testing::Values(WriteBackCase{"Untouched", std::nullopt, Variant::OfInt16(12)},
                                           WriteBackCase{"NewNumber", Variant::OfInt16(7), Variant::OfInt16(7)},
                                           WriteBackCase{"Text", kWrittenText, kWrittenText},
                                           WriteBackCase{"Emptied", Variant(), Variant()}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(ComBackend, AByValueArgumentCannotBeWrittenBack) {
    probe.writeBack = Variant::OfInt16(99);
    const Variant position = Variant::OfInt16(5);
    object->Call("FuelingPositionInformation", position);
    EXPECT_EQ(Variant::OfInt16(5), position);
    EXPECT_EQ(VT_I2, probe.invocations.at(0).argumentType);
}

struct ErrorCase {
    const char* name;
    HRESULT outcome;
    std::function<void(EXCEPINFO&)> raise;
    int number;
    std::string description;
};

class Failure : public ComBackend, public ::testing::WithParamInterface<ErrorCase> {};

TEST_P(Failure, BecomesTheRunTimeErrorATechnicianExpects) {
    const ErrorCase& c = GetParam();
    probe.outcome = c.outcome;
    probe.raise = c.raise;
    for (int style = 0; style < 3; ++style) {
        try {
            Variant position = Variant::OfInt16(3);
            if (style == 0) {
                object->Put("Authorize", kBlock);
            } else if (style == 1) {
                object->Call("SystemVersions");
            } else {
                object->CallByRef("DispenserInformation", position);
            }
            ADD_FAILURE() << "style " << style << " did not fail";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(c.number, error.number()) << "style " << style;
            EXPECT_EQ(c.description, error.description()) << "style " << style;
        }
    }
}

BSTR Bstr(const wchar_t* text) { return SysAllocString(text); }

HRESULT STDAPICALLTYPE FillLater(EXCEPINFO* exception) {
    exception->wCode = 30002;
    exception->bstrDescription = Bstr(L"Filled in late");
    return S_OK;
}

INSTANTIATE_TEST_SUITE_P(
    Errors, Failure,
    ::testing::Values(
        ErrorCase{"ServerNumberInWCode", DISP_E_EXCEPTION,
                  [](EXCEPINFO& e) {
                      e.wCode = 30001;
                      e.bstrDescription = Bstr(L"Position busy");
                  },
                  30001, "Position busy"},
        ErrorCase{"ControlFacilityScode", DISP_E_EXCEPTION,
                  [](EXCEPINFO& e) {
                      e.scode = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 5);
                      e.bstrSource = Bstr(L"Vantrel.Application");
                  },
                  5, "Invalid procedure call or argument"},
        ErrorCase{"ObjectDefinedScode", DISP_E_EXCEPTION,
                  [](EXCEPINFO& e) {
                      e.scode = static_cast<SCODE>(0x80040201);
                      e.bstrDescription = Bstr(L"Queue empty");
                  },
                  -2147220991, "Queue empty"},
        ErrorCase{"DeferredFillIn", DISP_E_EXCEPTION, [](EXCEPINFO& e) { e.pfnDeferredFillIn = FillLater; }, 30002,
                  "Filled in late"},
        ErrorCase{"ExceptionWithoutCode", DISP_E_EXCEPTION, [](EXCEPINFO&) {}, 440, "Automation error"},
        ErrorCase{"MemberNotFound", DISP_E_MEMBERNOTFOUND, nullptr, 438,
                  "Object doesn't support this property or method"},
        ErrorCase{"WrongArgumentCount", DISP_E_BADPARAMCOUNT, nullptr, 450,
                  "Wrong number of arguments or invalid property assignment"},
        ErrorCase{"ArgumentTypeRejected", DISP_E_TYPEMISMATCH, nullptr, 13, "Type mismatch"},
        ErrorCase{"ArgumentMissing", DISP_E_PARAMNOTOPTIONAL, nullptr, 449, "Argument not optional"},
        ErrorCase{"ControlFacilityHresult", MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 6), nullptr, 6, "Overflow"},
        // A server's number without a description of its own
        // gets the platform's text for it.
        ErrorCase{"ServerNumberWithoutText", DISP_E_EXCEPTION,
                  [](EXCEPINFO& e) { e.scode = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 76); }, 76,
                  "Path not found"},
        ErrorCase{"ServerScodeWithoutText", DISP_E_EXCEPTION, [](EXCEPINFO& e) { e.scode = E_NOTIMPL; }, 445,
                  "Object doesn't support this action"},
        ErrorCase{"NotImplemented", E_NOTIMPL, nullptr, 445, "Object doesn't support this action"},
        ErrorCase{"NotACollection", DISP_E_NOTACOLLECTION, nullptr, 451,
                  "Property let procedure not defined and property get procedure did not return an "
                  "object"},
        ErrorCase{"UnknownInterface", DISP_E_UNKNOWNINTERFACE, nullptr, 438,
                  "Object doesn't support this property or method"},
        ErrorCase{"BadIndex", DISP_E_BADINDEX, nullptr, 9, "Subscript out of range"},
        ErrorCase{"UnknownLocale", DISP_E_UNKNOWNLCID, nullptr, 447, "Object doesn't support current locale setting"},
        ErrorCase{"ArrayLocked", DISP_E_ARRAYISLOCKED, nullptr, 10, "This array is fixed or temporarily locked"},
        ErrorCase{"NoInterface", E_NOINTERFACE, nullptr, 430,
                  "Class does not support Automation or does not support expected interface"},
        ErrorCase{"InvalidArgument", E_INVALIDARG, nullptr, 5, "Invalid procedure call or argument"},
        ErrorCase{"AccessDenied", E_ACCESSDENIED, nullptr, 70, "Permission denied"},
        ErrorCase{"LibraryTypeMismatch", TYPE_E_TYPEMISMATCH, nullptr, 13, "Type mismatch"},
        ErrorCase{"LibraryOutOfBounds", TYPE_E_OUTOFBOUNDS, nullptr, 9, "Subscript out of range"},
        ErrorCase{"NoNamedArguments", DISP_E_NONAMEDARGS, nullptr, 448, "Named argument not found"},
        ErrorCase{"BadVariantType", DISP_E_BADVARTYPE, nullptr, 13, "Type mismatch"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(ComBackend, AnyOtherHresultIsAnAutomationErrorWithItsNumber) {
    probe.outcome = RPC_E_DISCONNECTED;
    try {
        object->Call("SystemVersions");
        FAIL() << "a disconnected server answered";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(static_cast<int>(RPC_E_DISCONNECTED), error.number());
        EXPECT_EQ(0u, error.description().rfind("Automation error", 0)) << error.description();
    }
}

TEST_F(ComBackend, AnUnknownMemberIs438AndIsNeverInvoked) {
    using namespace std::string_view_literals;
    for (const std::string_view member : {"NoSuchMember"sv, ""sv, "Authorize\0x"sv}) {
        try {
            object->Call(member);
            ADD_FAILURE() << member << " answered";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(438, error.number());
            EXPECT_EQ("Object doesn't support this property or method", error.description());
        }
    }
    EXPECT_TRUE(probe.invocations.empty());
}

TEST_F(ComBackend, ReleasesTheObjectWhenItGoes) {
    EXPECT_EQ(1, probe.references());
    object.reset();
    EXPECT_EQ(0, probe.references());
}

}  // namespace
}  // namespace vantrel
