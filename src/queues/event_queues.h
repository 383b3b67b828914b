#pragma once

#include "base/form.h"

#include <vector>

namespace vantrel {

// The reads and clears of the card, key, cash and error queues, the queue
// counts and Cash Output, on the console window. Each read shows its answer
// in the data box; ReadErrorQue is the one command that catches its own
// failures.
void AddEventQueueControls(std::vector<Control>& controls);

}  // namespace vantrel
