#pragma once

#include "e2e/e2e.h"
#include "server/text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace vantrel::testing {

// A text in the script language's quotes, every character escaped as the
// script reads it back.
std::string ScriptQuoted(TextView text);

// What `print NAME` writes for a box holding the text.
std::string Printed(const std::string& name, TextView text);

// A run that ended by itself, with the program's own exit code: not stopped
// as a hang, not ended by a signal.
::testing::AssertionResult EndedByItself(const ScriptRun& run);

// The program ended through the error report with exit code 1: the report
// names the error, and it is the trace's last line.
::testing::AssertionResult EndedThroughTheReport(const ScriptRun& run, int number, const std::string& description);

// A large answer as a server would send one: lines of key=value that end in
// CR LF, a NUL and an ESC among them, `length` characters in all.
Text LargeAnswer(std::size_t length);

// A run with a large answer leaves tens of megabytes of script and trace.
void RemoveRunFolder(const ScriptRun& run);

}  // namespace vantrel::testing
