#include "queues.h"

#include "queues/event_queues.h"
#include "queues/packet_queues.h"

namespace vantrel {

void AddQueueControls(std::vector<Control>& controls) {
    // The queue column.
    controls.push_back(CommandButton("QueCounts", u"Que Counts", 2160, 1920, 1575, 255, QueCounts));
    controls.push_back(CommandButton("ReadErrorQue", u"ReadErrorQue", 2160, 2280, 1575, 255, ReadErrorQue));
    controls.push_back(CommandButton("ClearErrorQue", u"ClearErrorQue", 2160, 2640, 1575, 255, ClearErrorQue));
    controls.push_back(CommandButton("CardQue", u"CardQue", 2160, 3000, 1575, 255, CardQue));
    controls.push_back(CommandButton("ClearCardEntry", u"ClearTopCardQue", 2160, 3360, 1575, 255, ClearCardEntry));
    controls.push_back(CommandButton("PacketQue", u"Packet Input", 2160, 5640, 1575, 255, PacketQue));
    controls.push_back(CommandButton("PacketOut", u"Packet Output", 2160, 6000, 1575, 255, PacketOut));
    controls.push_back(CommandButton("ClearPacketEntry", u"ClearPacketEntry", 2160, 6360, 1575, 255, ClearPacketEntry));
    controls.push_back(CommandButton("CashIn", u"Cash Input", 2160, 6720, 1575, 255, CashIn));
    controls.push_back(CommandButton("CashOut", u"Cash Output", 2160, 7080, 1575, 255, CashOut));
    controls.push_back(CommandButton("ClearCashEntry", u"ClearTopCashQue", 2160, 7440, 1575, 255, ClearCashEntry));

    // The key queue stands in the left column, below the key entry buttons.
    controls.push_back(CommandButton("KeyQue", u"KeyQue", 120, 5520, 1695, 255, KeyQue));
    controls.push_back(CommandButton("ClearKeyEntry", u"ClearTopKeyQue", 120, 5880, 1695, 255, ClearKeyEntry));
}

}  // namespace vantrel
