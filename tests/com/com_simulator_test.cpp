// The console against the simulator DLL, created by ProgID through COM as it
// would be on a technician's workstation: every member answers exactly what
// the built-in simulator answers, blocks cross byte for byte both ways, and
// failures carry the numbers a technician knows.

#include "base/console.h"
#include "app/all_forms.h"
#include "app/com_steering.h"
#include "com/com_dispatch.h"
#include "com/com_variant.h"
#include "server/command_block.h"
#include "simulator_dll/com_simulator_control.h"
#include "script/script_line.h"
#include "simulator/simulator.h"

#include "com_test_support.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <string>

namespace vantrel {
namespace {

using com::ISimulatorControl;

constexpr char kProgId[] = "Vantrel.Application";

int ErrorNumber(const std::function<void()>& action, std::string* description = nullptr) {
    try {
        action();
    } catch (const RuntimeError& error) {
        if (description) {
            *description = error.description();
        }
        return error.number();
    }
    return 0;
}

// The server created by ProgID through the registry, as the console creates
// it, with the simulator's test control beside it.
class ThroughCom : public ::testing::Test {
protected:
    void SetUp() override {
        RegisterComServer(servers, kProgId);
        server = servers.Create(kProgId);
        auto* object = dynamic_cast<com::ComObject*>(server.get());
        ASSERT_NE(nullptr, object) << "the registry did not create a COM object";
        ASSERT_EQ(S_OK,
                  object->dispatch()->QueryInterface(com::kSimulatorControlId, reinterpret_cast<void**>(&control)))
            << "the object behind the ProgID is not the simulator DLL";
    }
    void TearDown() override {
        if (control) {
            control->Release();
        }
    }

    void QueueAnswer(const char* member, const Variant& answer) {
        const com::ScopedVariant value(answer);
        BSTR name = com::AllocateText(FromUtf8(member));
        EXPECT_EQ(S_OK, control->QueueAnswer(name, &*value));
        SysFreeString(name);
    }
    void QueueFailure(const char* member, int number, const char* description) {
        BSTR name = com::AllocateText(FromUtf8(member));
        BSTR text = com::AllocateText(FromUtf8(description));
        EXPECT_EQ(S_OK, control->QueueFailure(name, number, text));
        SysFreeString(name);
        SysFreeString(text);
    }
    // The most recent assignment as the server received it.
    std::pair<std::string, Variant> LastAssignment() {
        BSTR member = nullptr;
        com::ScopedVariant value;
        EXPECT_EQ(S_OK, control->LastAssignment(&member, value.get()));
        std::pair<std::string, Variant> last{ToUtf8(com::TextOf(member)), com::FromComVariant(*value)};
        SysFreeString(member);
        return last;
    }

    ServerRegistry servers;
    std::unique_ptr<AutomationObject> server;
    ISimulatorControl* control = nullptr;
};

TEST_F(ThroughCom, EveryMemberAnswersWhatTheBuiltInSimulatorAnswers) {
    Simulator builtIn;
    const auto members = builtIn.Members();
    ASSERT_GT(members.size(), 40u);
    const Variant block = Variant::OfText(CommandBlock().AddLine(u"FuelingPosition=07").Terminate().Text());
    for (const auto& [member, style] : members) {
        SCOPED_TRACE(member);
        switch (style) {
        case Simulator::Style::Assignment:
            // Both get the same block, so both models go on alike.
            builtIn.Put(member, block);
            server->Put(member, block);
            EXPECT_EQ(std::make_pair(member, block), LastAssignment());
            break;
        case Simulator::Style::Text:
        case Simulator::Style::Numeric: EXPECT_EQ(builtIn.Call(member), server->Call(member)); break;
        case Simulator::Style::WithPosition: {
            EXPECT_EQ(builtIn.Call(member, Variant::OfInt16(5)), server->Call(member, Variant::OfInt16(5)));
            Variant position = Variant::OfInt16(12);
            Variant expected = Variant::OfInt16(12);
            EXPECT_EQ(builtIn.CallByRef(member, expected), server->CallByRef(member, position));
            EXPECT_EQ(Variant::OfInt16(12), position);
            break;
        }
        }
    }
}

// Script mode's server and forecourt lines reach the simulator DLL through
// its own steering object, beside the console's connection: what they queue
// is what the console's next call meets, and a line the simulator cannot
// carry out comes back with its reason.
TEST_F(ThroughCom, ScriptLinesSteerTheSimulatorBesideTheConsolesConnection) {
    const auto* object = dynamic_cast<const com::ComObject*>(server.get());
    const std::unique_ptr<SimulatorSteering> steering = ComSteering::Of(*object, true);
    ASSERT_NE(nullptr, steering);
    const auto steer = [&](const std::string& line) {
        const ParsedLine parsed = ParseScriptLine(line);
        const auto* command = std::get_if<ScriptCommand>(&parsed);
        EXPECT_NE(nullptr, command) << line;
        return command ? steering->Steer(*command, line) : std::string("no command");
    };
    EXPECT_EQ("", steer("server answer SystemVersions \"Steered \\x01 1.0\""));
    EXPECT_EQ(Variant::OfText(FromUtf8("Steered \x01 1.0")), server->Call("SystemVersions"));
    EXPECT_EQ("", steer("server fail CardQue 5 \"Invalid procedure call or argument\""));
    std::string description;
    EXPECT_EQ(5, ErrorNumber([&] { server->Call("CardQue"); }, &description));
    EXPECT_EQ("Invalid procedure call or argument", description);
    // Script mode's clock: time moves only when a line moves it.
    EXPECT_EQ("", steer("server time +2"));
    EXPECT_EQ("the simulator has no member NoSuchMember", steer("server answer NoSuchMember \"x\""));
    EXPECT_EQ("Authorize is assigned and answers nothing; use server fail or server delay",
              steer("server answer Authorize \"x\""));
    EXPECT_EQ("forecourt: no nozzle is lifted at position 03", steer("forecourt hang 3"));
}

TEST_F(ThroughCom, MemberNamesAreFoundRegardlessOfCase) {
    EXPECT_EQ(Simulator().Call("SystemVersions"), server->Call("SYSTEMVERSIONS"));
    server->Put("authorize", Variant::OfText(u"x"));
    EXPECT_EQ("Authorize", LastAssignment().first);
}

class BlocksThroughCom : public ThroughCom, public ::testing::WithParamInterface<testing::BlockCase> {};

TEST_P(BlocksThroughCom, CrossByteForByteBothWays) {
    const Text& block = GetParam().text;
    server->Put("Authorize", Variant::OfText(block));
    const auto [member, assigned] = LastAssignment();
    EXPECT_EQ("Authorize", member);
    ASSERT_TRUE(assigned.is(Variant::Kind::Text));
    EXPECT_TEXT(block, assigned.text());

    QueueAnswer("PacketQueInput", Variant::OfText(block));
    const Variant answer = server->Call("PacketQueInput");
    ASSERT_TRUE(answer.is(Variant::Kind::Text));
    EXPECT_TEXT(block, ToText(answer));
}

INSTANTIATE_TEST_SUITE_P(Blocks, BlocksThroughCom, ::testing::ValuesIn(testing::Blocks()),
                         [](const auto& info) { return std::string(info.param.name); });

struct NumberCase {
    const char* name;
    Variant value;
};

class ValuesThroughCom : public ThroughCom, public ::testing::WithParamInterface<NumberCase> {};

TEST_P(ValuesThroughCom, KeepTheirKindAndValueBothWays) {
    const Variant& value = GetParam().value;
    QueueAnswer("QueCountQuery", value);
    EXPECT_EQ(value, server->Call("QueCountQuery"));
    server->Put("TankMonitorStartReport", value);
    EXPECT_EQ(value, LastAssignment().second);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ValuesThroughCom,
    ::testing::Values(NumberCase{"Int16One", Variant::OfInt16(1)}, NumberCase{"Int16Lowest", Variant::OfInt16(-32768)},
                      NumberCase{"Int16Highest", Variant::OfInt16(32767)}, NumberCase{"Int32", Variant::OfInt32(70000)},
                      NumberCase{"Int32Lowest", Variant::OfInt32(-2147483647 - 1)},
                      NumberCase{"Double", Variant::OfDouble(2.5)}, NumberCase{"Boolean", Variant::OfBoolean(true)},
                      NumberCase{"Empty", Variant()}, NumberCase{"Null", Variant::Null()}),
    [](const auto& info) { return std::string(info.param.name); });

struct RaisedCase {
    const char* name;
    int number;
    const char* description;
};

class ServerRaises : public ThroughCom, public ::testing::WithParamInterface<RaisedCase> {};

TEST_P(ServerRaises, TheTechnicianSeesTheServersOwnNumberAndText) {
    const RaisedCase& c = GetParam();
    QueueFailure("Authorize", c.number, c.description);
    std::string description;
    EXPECT_EQ(c.number, ErrorNumber([&] { server->Put("Authorize", Variant::OfText(u"x")); }, &description));
    EXPECT_EQ(c.description, description);

    QueueFailure("DispenserInformation", c.number, c.description);
    Variant position = Variant::OfInt16(3);
    EXPECT_EQ(c.number, ErrorNumber([&] { server->CallByRef("DispenserInformation", position); }, &description));
    EXPECT_EQ(c.description, description);
    EXPECT_EQ(Variant::OfInt16(3), position);

    // The failure was used up: the next call answers again.
    EXPECT_NO_THROW(server->Call("DispenserInformation", Variant::OfInt16(3)));
}

INSTANTIATE_TEST_SUITE_P(Errors, ServerRaises,
                         ::testing::Values(RaisedCase{"OwnNumber", 30001, "Fueling position busy"},
                                           RaisedCase{"PlatformNumber", 5, "Invalid procedure call or argument"},
                                           RaisedCase{"ObjectError", -2147220991, "Reader not configured"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(ThroughCom, AMemberTheServerLacksOrAWrongStyleIs438) {
    const std::vector<std::function<void()>> wrong = {
        [&] { server->Call("NoSuchMember"); }, [&] { server->Put("NoSuchMember", Variant::OfText(u"x")); },
        [&] { server->Put("SystemVersions", Variant::OfText(u"x")); },  // answers, cannot be assigned
        [&] { server->Call("Authorize"); },                             // assigned only
    };
    for (std::size_t i = 0; i < wrong.size(); ++i) {
        std::string description;
        EXPECT_EQ(438, ErrorNumber(wrong[i], &description)) << "case " << i;
        EXPECT_EQ("Object doesn't support this property or method", description) << "case " << i;
    }
}

// The value of a key under HKCR, or an empty text.
std::wstring ClassesValue(const std::wstring& key) {
    wchar_t buffer[1024] = {};
    DWORD bytes = sizeof buffer - sizeof(wchar_t);
    if (RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, buffer, &bytes) !=
        ERROR_SUCCESS) {
        return {};
    }
    return buffer;
}

void SetClassesValue(const std::wstring& key, const std::wstring& value) {
    HKEY handle = nullptr;
    ASSERT_EQ(ERROR_SUCCESS,
              RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &handle, nullptr));
    RegSetValueExW(handle, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                   static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(handle);
}

TEST(ComCreation, AProgIdThatNothingServesCannotBeCreated) {
    // A ProgID naming a class that no server provides, beside one unknown.
    SetClassesValue(L"Vantrel.Dangling\\CLSID", L"{0B5C6B0E-7A1F-4D2B-9D0B-3F4E5A6B7C8D}");
    for (const char* progId : {"Vantrel.NotRegistered", "Vantrel.Dangling", ""}) {
        ServerRegistry servers;
        RegisterComServer(servers, progId);
        std::string description;
        EXPECT_EQ(429, ErrorNumber([&] { servers.Create(progId); }, &description)) << progId;
        EXPECT_EQ("ActiveX component can't create object", description);
    }
    RegDeleteTreeW(HKEY_CLASSES_ROOT, L"Vantrel.Dangling");
}

// regsvr32 calls these two exports; calling them here checks what they leave
// in the registry.
class Registration : public ::testing::Test {
protected:
    void SetUp() override {
        classKey = L"CLSID\\{65D1ACEB-751F-4312-ACA3-5C15CB65C66D}";
        path = ClassesValue(classKey + L"\\InprocServer32");
        ASSERT_FALSE(path.empty()) << "regsvr32 did not register the simulator DLL";
        module = LoadLibraryW(path.c_str());
        ASSERT_NE(nullptr, module);
        registerServer = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
            reinterpret_cast<void*>(GetProcAddress(module, "DllRegisterServer")));
        unregisterServer = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
            reinterpret_cast<void*>(GetProcAddress(module, "DllUnregisterServer")));
        ASSERT_NE(nullptr, registerServer);
        ASSERT_NE(nullptr, unregisterServer);
    }
    void TearDown() override {
        // Whatever happened, the simulator stays registered for the others.
        if (registerServer) {
            SetClassesValue(L"Vantrel.Application\\CLSID", L"{65D1ACEB-751F-4312-ACA3-5C15CB65C66D}");
            registerServer();
        }
        if (module) {
            FreeLibrary(module);
        }
    }
    int CreationError() {
        ServerRegistry servers;
        RegisterComServer(servers, kProgId);
        return ErrorNumber([&] { servers.Create(kProgId); });
    }

    std::wstring classKey;
    std::wstring path;
    HMODULE module = nullptr;
    HRESULT(STDAPICALLTYPE* registerServer)() = nullptr;
    HRESULT(STDAPICALLTYPE* unregisterServer)() = nullptr;
};

TEST_F(Registration, UnregisteringMakesTheProgIdUnknownAndRegisteringRestoresIt) {
    ASSERT_EQ(S_OK, unregisterServer());
    EXPECT_EQ(L"", ClassesValue(L"Vantrel.Application\\CLSID"));
    EXPECT_EQ(L"", ClassesValue(classKey + L"\\InprocServer32"));
    EXPECT_EQ(429, CreationError());
    EXPECT_EQ(S_OK, unregisterServer()) << "a second unregistration is no failure";

    ASSERT_EQ(S_OK, registerServer());
    EXPECT_EQ(0, CreationError());
}

TEST_F(Registration, LeavesAnotherServerUnderTheProgIdAlone) {
    const std::wstring other = L"{11111111-2222-3333-4444-555555555555}";
    SetClassesValue(L"Vantrel.Application\\CLSID", other);
    EXPECT_NE(S_OK, registerServer());
    EXPECT_EQ(other, ClassesValue(L"Vantrel.Application\\CLSID"));
    EXPECT_EQ(S_OK, unregisterServer());
    EXPECT_EQ(other, ClassesValue(L"Vantrel.Application\\CLSID"));
}

// The console itself over COM: its load creates the server by ProgID, and a
// position click asks it through late binding.
TEST(ConsoleOverCom, StartsAndAsksThePositionsInformationByNumber) {
    ServerRegistry servers;
    RegisterComServer(servers, kProgId);
    CallEvents events;
    testing::ScriptedPrompter prompter;
    testing::WindowRecorder windows;
    testing::RecordingReport report;
    Console console({servers, events, prompter, windows}, AllForms());
    console.Load();
    ASSERT_TRUE(console.HasServer());

    const FormDescription& form = console.Description(kConsoleForm);
    for (const Control& control : form.controls) {
        if (control.name == "Button7") {
            ASSERT_TRUE(Dispatch(console, control.gotFocus, report));
            ASSERT_TRUE(Dispatch(console, control.click, report));
        }
    }
    EXPECT_TRUE(report.errors.empty());
    EXPECT_TEXT(ToText(Simulator().Call("FuelingPositionInformation", Variant::OfInt16(7))), console.DataBox());
    EXPECT_EQ(Variant::OfInt16(7), console.SelectedPosition);

    const Text answer = ToText(console.KRM().CallByRef("DispenserInformation", console.SelectedPosition));
    EXPECT_TEXT(ToText(Simulator().Call("DispenserInformation", Variant::OfInt16(7))), answer);
    EXPECT_EQ(Variant::OfInt16(7), console.SelectedPosition);
}

}  // namespace
}  // namespace vantrel
