#pragma once

#include "app/program.h"

namespace vantrel {

// vantrel-test --replay RECORD: the record sent again to the server the
// options choose, without any window, and the report on standard output.
// Exit code 0 when nothing changed, 1 when something did, 2 for bad input
// or a server that cannot be created.
int RunReplay(const ProgramOptions& options);

}  // namespace vantrel
