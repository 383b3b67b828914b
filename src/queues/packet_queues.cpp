#include "packet_queues.h"

#include "base/console.h"
#include "queues/packet_view.h"
#include "server/packet_block.h"

namespace vantrel {

namespace {

void PacketOut(Console& console) {
    console.SetFunctionBox(u"<Object>.PacketQueOutput = (data)");
    // "C", then the characters 16 and 7.
    CommandBlock block = PacketBlock(console.SelectedPositionText, u"C\x10\x07");
    block.Append(kCrLf).Terminate();
    console.CommandData = Variant::OfText(block.Text());
    console.KRM().Put("PacketQueOutput", console.CommandData);
    console.SetDataBox(block.Text());
}

void PacketQue(Console& console) {
    console.SetFunctionBox(u"(data)=<Object>.PacketQueInput");
    PacketView view = ViewPacketInput(ToText(console.KRM().Call("PacketQueInput")));
    // The box is written once with everything made so far; an error then ends
    // the console with that text on show.
    console.SetDataBox(std::move(view.text));
    if (view.error) {
        throw *view.error;
    }
}

}  // namespace

void AddPacketQueueControls(std::vector<Control>& controls) {
    // In the queue column.
    controls.push_back(CommandButton("PacketQue", u"Packet Input", 2160, 5640, 1575, 255, PacketQue));
    controls.push_back(CommandButton("PacketOut", u"Packet Output", 2160, 6000, 1575, 255, PacketOut));
}

}  // namespace vantrel
