// The COM backend against general-purpose automation servers that ship with
// Wine: errors raised with a number and no text, failing HRESULTs, results of
// the kinds Single, Currency and Date, Nothing, and texts read as 16-bit
// numbers. Each row is one call as the console makes it, with what a Visual
// Basic client shows for it; the table of expected against observed is
// printed, and every row must match.
#include "com/com_automation.h"
#include "server/server_calls.h"
#include "server/variant.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vantrel {
namespace {

// What a call left: its error, or its value as text or as a 16-bit number.
struct Outcome {
    std::string shown;
};

std::string ErrorText(const RuntimeError& error) {
    return "error " + std::to_string(error.number()) + " \"" + error.description() + "\"";
}

struct Row {
    const char* call;  // as a technician would write it
    const char* progId;
    std::function<Variant(AutomationObject&)> make;
    enum class As {
        Text,
        Number,
    } as = As::Text;
    std::string expected;
};

Variant Script(AutomationObject& control, const char16_t* expression) {
    control.Put("Language", Variant::OfText(u"VBScript"));
    return control.Call("Eval", Variant::OfText(expression));
}

Variant Statement(AutomationObject& control, const char16_t* statement) {
    control.Put("Language", Variant::OfText(u"VBScript"));
    return control.Call("ExecuteStatement", Variant::OfText(statement));
}

constexpr char kFiles[] = "Scripting.FileSystemObject";
constexpr char kScript[] = "MSScriptControl.ScriptControl";
constexpr char kDictionary[] = "Scripting.Dictionary";
constexpr char kRegExp[] = "VBScript.RegExp";
constexpr char kXml[] = "MSXML2.DOMDocument";
constexpr char kInstaller[] = "WindowsInstaller.Installer";

using As = Row::As;

const std::vector<Row> kRows = {
    // Errors a server raises with its number alone: the platform's text.
    {"fso.GetFile(\"c:\\windows\\no-such.txt\")", kFiles,
     [](AutomationObject& o) { return o.Call("GetFile", Variant::OfText(u"c:\\windows\\no-such.txt")); }, As::Text,
     "error 53 \"File not found\""},
    {"fso.GetFolder(\"c:\\no\\such\")", kFiles,
     [](AutomationObject& o) { return o.Call("GetFolder", Variant::OfText(u"c:\\no\\such")); }, As::Text,
     "error 76 \"Path not found\""},
    {"fso.CreateFolder(\"c:\\windows\")", kFiles,
     [](AutomationObject& o) { return o.Call("CreateFolder", Variant::OfText(u"c:\\windows")); }, As::Text,
     "error 58 \"File already exists\""},
    {"fso.GetDrive(\"q:\")", kFiles, [](AutomationObject& o) { return o.Call("GetDrive", Variant::OfText(u"q:")); },
     As::Text, "error 68 \"Device unavailable\""},
    {"script: 1/0", kScript, [](AutomationObject& o) { return Script(o, u"1/0"); }, As::Text,
     "error 11 \"Division by zero\""},
    {"script: Array(1)(5)", kScript, [](AutomationObject& o) { return Script(o, u"Array(1)(5)"); }, As::Text,
     "error 9 \"Subscript out of range\""},
    {"script: Err.Raise 445", kScript, [](AutomationObject& o) { return Statement(o, u"Err.Raise 445"); }, As::Text,
     "error 445 \"Object doesn't support this action\""},
    {"script: a key added twice", kScript,
     [](AutomationObject& o) {
         return Statement(o, u"Set d = CreateObject(\"Scripting.Dictionary\"): d.Add 1, 1: d.Add 1, 1");
     },
     As::Text, "error 457 \"This key is already associated with an element of this collection\""},
    // Members the server does not have, and the argument count.
    {"dictionary.NoSuchMember", kDictionary, [](AutomationObject& o) { return o.Call("NoSuchMember"); }, As::Text,
     "error 438 \"Object doesn't support this property or method\""},
    {"dictionary.Count(1)", kDictionary, [](AutomationObject& o) { return o.Call("Count", Variant::OfInt16(1)); },
     As::Text, "error 451 \"Property let procedure not defined and property get procedure did not return an object\""},
    {"fso.GetFile without its argument", kFiles, [](AutomationObject& o) { return o.Call("GetFile"); }, As::Text,
     "error 450 \"Wrong number of arguments or invalid property assignment\""},
    // Results of every kind, shown as the platform shows them.
    {"dictionary.Count", kDictionary, [](AutomationObject& o) { return o.Call("Count"); }, As::Text, "0"},
    {"regexp.Test(\"abc\") with pattern b", kRegExp,
     [](AutomationObject& o) {
         o.Put("Pattern", Variant::OfText(u"b"));
         return o.Call("Test", Variant::OfText(u"abc"));
     },
     As::Text, "True"},
    {"xml.loadXML(\"<a>\")", kXml, [](AutomationObject& o) { return o.Call("loadXML", Variant::OfText(u"<a>")); },
     As::Text, "False"},
    {"script: CSng(1.1)", kScript, [](AutomationObject& o) { return Script(o, u"CSng(1.1)"); }, As::Text, "1.1"},
    {"script: CSng(16777220)", kScript, [](AutomationObject& o) { return Script(o, u"CSng(16777220)"); }, As::Text,
     "1.677722E+07"},
    {"script: CCur(\"123456789012.3456\")", kScript,
     [](AutomationObject& o) { return Script(o, u"CCur(\"123456789012.3456\")"); }, As::Text, "123456789012.3456"},
    {"script: DateSerial(2000, 1, 1) + TimeSerial(18, 0, 0)", kScript,
     [](AutomationObject& o) { return Script(o, u"DateSerial(2000, 1, 1) + TimeSerial(18, 0, 0)"); }, As::Text,
     "1/1/2000 6:00:00 PM"},
    {"script: Nothing", kScript, [](AutomationObject& o) { return Script(o, u"Nothing"); }, As::Text,
     "error 91 \"Object variable or With block variable not set\""},
    {"installer.Version is a text", kInstaller,
     [](AutomationObject& o) {
         const Text version = ToText(o.Call("Version"));
         return Variant::OfText(version.empty() ? u"empty" : u"a text");
     },
     As::Text, "a text"},
    // Texts read as 16-bit numbers as the platform reads them.
    {"CInt(script: \"1,000\")", kScript, [](AutomationObject& o) { return Script(o, u"\"1,000\""); }, As::Number,
     "1000"},
    {"CInt(script: \"$5\")", kScript, [](AutomationObject& o) { return Script(o, u"\"$5\""); }, As::Number, "5"},
    {"CInt(script: \"(5)\")", kScript, [](AutomationObject& o) { return Script(o, u"\"(5)\""); }, As::Number, "-5"},
    {"CInt(script: \"5-\")", kScript, [](AutomationObject& o) { return Script(o, u"\"5-\""); }, As::Number, "-5"},
    {"CInt(script: DateSerial(1900, 1, 1))", kScript,
     [](AutomationObject& o) { return Script(o, u"DateSerial(1900, 1, 1)"); }, As::Number, "2"},
    {"CInt(script: \"\")", kScript, [](AutomationObject& o) { return Script(o, u"\"\""); }, As::Number, "0"},
};

TEST(WineServers, EveryCallShowsWhatAVisualBasicClientShows) {
    std::map<std::string, std::unique_ptr<AutomationObject>> objects;
    std::string table = "| call | expected | observed |\n| --- | --- | --- |\n";
    for (const Row& row : kRows) {
        std::unique_ptr<AutomationObject>& object = objects[row.progId];
        std::string observed;
        try {
            if (!object) {
                ServerRegistry servers;
                RegisterComServer(servers, row.progId);
                object = servers.Create(row.progId);
            }
            const Variant value = row.make(*object);
            observed = row.as == As::Number ? std::to_string(ToInt16(value)) : ToUtf8(ToText(value));
        } catch (const RuntimeError& error) {
            observed = ErrorText(error);
        }
        table += "| " + std::string(row.call) + " | " + row.expected + " | " + observed + " |\n";
        EXPECT_EQ(row.expected, observed) << row.call;
    }
    std::fputs(table.c_str(), stdout);
}

}  // namespace
}  // namespace vantrel
