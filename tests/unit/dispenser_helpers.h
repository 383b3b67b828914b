#pragma once

#include "support/test_support.h"

#include <string>
#include <vector>

namespace vantrel::testing {

// A block as the server must receive it: the lines as written, then the NUL.
inline Text Block(const char16_t* lines) { return Text(lines) + kNul; }

// The boxes a click opened, one readable line each, so that a failing
// comparison shows the whole dialogue in order.
inline std::string Input(const Text& prompt, const Text& title) {
    return "input \"" + Escaped(prompt) + "\" titled \"" + Escaped(title) + "\"";
}

inline std::string Message(const Text& text) {
    return "message \"" + Escaped(text) + "\" titled \"" + Escaped(kApplicationTitle) + "\"";
}

inline std::vector<std::string> Dialogue(const ScriptedPrompter& prompter) {
    std::vector<std::string> lines;
    for (const ScriptedPrompter::Box& box : prompter.boxes) {
        lines.push_back(box.kind == ScriptedPrompter::Box::Kind::Input
                            ? Input(box.text, box.title)
                            : "message \"" + Escaped(box.text) + "\" titled \"" + Escaped(box.title) + "\"");
    }
    return lines;
}

// The click made exactly one call: an assignment of this text to this member.
inline void ExpectOnePut(TestConsole& test, const char* member, const Text& value) {
    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ(RecordedCall::Kind::Put, test.calls()[0].kind);
    EXPECT_EQ(member, test.calls()[0].member);
    EXPECT_TEXT(value, test.calls()[0].text());
}

// Values a command must leave alone when it sends nothing, or does not use.
inline void MarkUntouched(Console& console) {
    console.SetFunctionBox(u"function before");
    console.SetDataBox(u"data before");
    console.CommandData = Variant::OfText(u"command data before");
}

}  // namespace vantrel::testing
