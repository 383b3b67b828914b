#pragma once

#include "server/text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace vantrel {

// One line of a console script, parsed. Qt-free, so it can be tested and
// fuzzed on its own.
struct ScriptCommand {
    enum class Verb {
        Click,
        DblClick,
        Type,
        Answer,
        Tick,
        Expect,
        Print,
        Shot,
        Menu,
        ServerAnswerText,
        ServerAnswerNumber,
        ServerAnswerHuge,  // number: the length of the text
        ServerFail,
        ServerDelay,  // number: milliseconds
        ServerTime,   // number: milliseconds to move the simulator's clock on
        ServerAuto,   // number: 1 on, 0 off
        ServerDie,    // every later call fails as to a server whose process died
        ForecourtLift,
        ForecourtHang,
        ForecourtCard,
        ForecourtKeys,
        ForecourtCash,
        ForecourtPacket,
        ForecourtWash,
    };
    enum class Reply {
        Text,  // an input box entry ("" is cancel)
        Cancel,
        Yes,
        No,
        Ok,
    };

    Verb verb = Verb::Click;
    std::string name;  // control (NAME or Form.NAME), window, member, or menu
    Text text;         // typed, expected or answered text; error description; menu entry
    Reply reply = Reply::Text;
    int count = 1;            // tick N; ticks fired while the box is up for answer
    std::int64_t number = 0;  // server answer number / error number
    std::string file;         // shot
    int position = 0;         // forecourt lines: 1 to 32
    int hose = 0;             // forecourt lift: 1 to 8
};

struct ScriptError {
    std::string message;
};

// Parses one line. Blank lines and comments give std::nullopt.
using ParsedLine = std::variant<std::monostate, ScriptCommand, ScriptError>;
ParsedLine ParseScriptLine(std::string_view line);

// A text written with the escapes of a quoted script text (\r \n \t \0 \e
// \\ \" \xHH \uHHHH) but without the quotes: what the simulator window's
// boxes take. The error when an escape is broken.
std::variant<Text, ScriptError> ParseEscapedText(std::string_view text);

}  // namespace vantrel
