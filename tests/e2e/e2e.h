#pragma once

#include "support/process.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vantrel::testing {

// Runs the built program on a script; see RunScript.
inline ScriptRun RunConsole(const std::string& script, const std::vector<std::string>& arguments = {}) {
    return RunScript(VANTREL_TEST_BINARY, script, arguments);
}

// The trace lines of server calls only (puts and calls), in order.
inline std::vector<std::string> Calls(const ScriptRun& run) {
    std::vector<std::string> calls;
    for (const std::string& line : run.trace) {
        if (line.rfind(R"({"op":"put")", 0) == 0 || line.rfind(R"({"op":"call")", 0) == 0) {
            calls.push_back(line);
        }
    }
    return calls;
}

// A put of a text as the trace writes it; the text in JSON escapes.
inline std::string TracedPut(const std::string& member, const std::string& jsonText) {
    return R"({"op":"put","member":")" + member + R"(","value":{"text":")" + jsonText + R"("}})";
}

}  // namespace vantrel::testing
