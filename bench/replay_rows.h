#pragma once

#include "target_table.h"
#include "targets.h"

#include <string>
#include <vector>

namespace vantrel::bench {

// The replay of a recorded session (vantrel-test --replay).
inline constexpr char kReplay[] = "Replay";              // /events: read, sent, compared
inline constexpr char kReplayDirect[] = "ReplayDirect";  // /events: the same puts and calls from memory
inline constexpr long kReplayEvents = 100'000;

// The replay's rows: its time per event against the simulator's own time
// for the same puts and calls, and the peak memory the program adds while
// it replays a record of 1 GiB (written in `folder`, then removed).
void AddReplayRows(std::vector<Row>& rows, const Medians& medians, const std::string& console,
                   const std::string& folder);

}  // namespace vantrel::bench
