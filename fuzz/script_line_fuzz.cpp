// The script-line parser over arbitrary lines: it never crashes, and a line
// it accepts, written out again in the script language, reads back as the
// same command, so quoting and escapes lose nothing.

#include "fuzz_input.h"
#include "script/script_line.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using vantrel::ScriptCommand;
using vantrel::Text;
using vantrel::fuzz::Require;

// Escaped writes the very escapes the script language reads, which is how
// the console's own messages quote a text for a script.
std::string Quoted(const Text& text) { return "\"" + vantrel::Escaped(text) + "\""; }

// A file or menu name kept as UTF-8: a plain word where it can be one.
std::string WordOrQuoted(const std::string& name) {
    if (!name.empty() && name.find_first_of(" \t\r\"") == std::string::npos) {
        return name;
    }
    return Quoted(vantrel::FromUtf8(name));
}

// A forecourt event at a position with its quoted text.
std::string Forecourt(const char* event, const ScriptCommand& command) {
    return std::string("forecourt ") + event + " " + std::to_string(command.position) + " " + Quoted(command.text);
}

std::string Written(const ScriptCommand& command) {
    using Verb = ScriptCommand::Verb;
    using Reply = ScriptCommand::Reply;
    switch (command.verb) {
    case Verb::Click: return "click " + command.name;
    case Verb::DblClick: return "dblclick " + command.name;
    case Verb::Print: return "print " + command.name;
    case Verb::Type: return "type " + command.name + " " + Quoted(command.text);
    case Verb::Expect: return "expect " + command.name + " " + Quoted(command.text);
    case Verb::Tick: return "tick " + std::to_string(command.count);
    case Verb::Shot: return "shot " + command.name + " " + WordOrQuoted(command.file);
    case Verb::Menu: return "menu " + Quoted(vantrel::FromUtf8(command.name)) + " " + Quoted(command.text);
    case Verb::ServerAnswerText: return "server answer " + command.name + " " + Quoted(command.text);
    case Verb::ServerAnswerNumber: return "server answer " + command.name + " number " + std::to_string(command.number);
    case Verb::ServerAnswerHuge: return "server answer " + command.name + " huge " + std::to_string(command.number);
    case Verb::ServerFail:
        return "server fail " + command.name + " " + std::to_string(command.number) + " " + Quoted(command.text);
    case Verb::ServerDelay: return "server delay " + command.name + " " + std::to_string(command.number);
    case Verb::ServerTime: {
        std::string thousandths = std::to_string(command.number % 1000);
        thousandths.insert(0, 3 - thousandths.size(), '0');
        return "server time +" + std::to_string(command.number / 1000) + "." + thousandths;
    }
    case Verb::ServerAuto: return command.number != 0 ? "server auto on" : "server auto off";
    case Verb::ServerDie: return "server die";
    case Verb::ForecourtLift:
        return "forecourt lift " + std::to_string(command.position) + " hose " + std::to_string(command.hose);
    case Verb::ForecourtHang: return "forecourt hang " + std::to_string(command.position);
    case Verb::ForecourtCard: return Forecourt("card", command);
    case Verb::ForecourtKeys: return Forecourt("keys", command);
    case Verb::ForecourtCash: return Forecourt("cash", command);
    case Verb::ForecourtPacket: return Forecourt("packet", command);
    case Verb::ForecourtWash: return "forecourt wash " + Quoted(command.text);
    case Verb::Answer: {
        std::string line = "answer ";
        switch (command.reply) {
        case Reply::Text: line += Quoted(command.text); break;
        case Reply::Cancel: line += "cancel"; break;
        case Reply::Yes: line += "yes"; break;
        case Reply::No: line += "no"; break;
        case Reply::Ok: line += "ok"; break;
        }
        return command.count != 0 ? line + " ticks " + std::to_string(command.count) : line;
    }
    }
    return {};
}

bool Same(const ScriptCommand& a, const ScriptCommand& b) {
    return a.verb == b.verb && a.name == b.name && a.text == b.text && a.reply == b.reply && a.count == b.count &&
           a.number == b.number && a.file == b.file && a.position == b.position && a.hose == b.hose;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view line(reinterpret_cast<const char*>(data), size);
    const vantrel::ParsedLine parsed = vantrel::ParseScriptLine(line);
    if (const auto* error = std::get_if<vantrel::ScriptError>(&parsed)) {
        Require(!error->message.empty(), "a rejected line says why");
        return 0;
    }
    const auto* command = std::get_if<ScriptCommand>(&parsed);
    if (!command) {
        return 0;  // blank or a comment
    }
    const std::string again = Written(*command);
    const vantrel::ParsedLine reparsed = vantrel::ParseScriptLine(again);
    const auto* same = std::get_if<ScriptCommand>(&reparsed);
    Require(same != nullptr, "a command written out again is accepted");
    Require(Same(*command, *same), "a command written out again reads back the same");
    return 0;
}
