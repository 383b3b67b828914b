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
        ServerFail,
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
};

struct ScriptError {
    std::string message;
};

// Parses one line. Blank lines and comments give std::nullopt.
using ParsedLine = std::variant<std::monostate, ScriptCommand, ScriptError>;
ParsedLine ParseScriptLine(std::string_view line);

}  // namespace vantrel
