#include "queues.h"

#include "console/console.h"

namespace vantrel {

// FIXME: these buttons come with their own change.
void AddQueueControls(std::vector<Control>&) {}

}  // namespace vantrel
