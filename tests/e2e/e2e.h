#pragma once

#include "support/process.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace vantrel::testing {

// The program the scripts run: the one built here, or the one that
// VANTREL_TEST_PROGRAM names (the Windows stage names a wrapper that starts
// the Windows program under Wine), so that the same scripts and the same
// expected traces hold both front-ends to the same behaviour.
inline std::string ProgramUnderTest() {
    const char* named = std::getenv("VANTREL_TEST_PROGRAM");
    return named && *named ? named : VANTREL_TEST_BINARY;
}

// Runs the program on a script; see RunScript.
inline ScriptRun RunConsole(const std::string& script, const std::vector<std::string>& arguments = {}) {
    return RunScript(ProgramUnderTest(), script, arguments);
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
