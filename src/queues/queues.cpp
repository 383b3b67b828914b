#include "queues.h"

#include "queues/event_queues.h"
#include "queues/packet_queues.h"

namespace vantrel {

void AddQueueControls(std::vector<Control>& controls) {
    AddEventQueueControls(controls);
    AddPacketQueueControls(controls);
}

}  // namespace vantrel
