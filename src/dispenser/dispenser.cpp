#include "dispenser.h"

#include "console/console.h"

namespace vantrel {

// FIXME: these buttons come with their own change.
void AddDispenserControls(std::vector<Control>&) {}

}  // namespace vantrel
