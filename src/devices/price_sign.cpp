#include "device_commands.h"

#include "base/console.h"
#include "server/command_block.h"

namespace vantrel {

// The price sign buttons echo nothing: neither console box changes, and only
// GET STATUS shows its answer.

void PriceSignGetStatus(Console& console) { ReadIntoDeviceData(console, "PriceSignDataRead"); }

void PriceSignSendPrices(Console& console) {
    CommandBlock block;
    block.AddLine(u"Command=SendPrices")
        .AddLine(u"Line1=001000")
        .AddLine(u"Line2=002000")
        .AddLine(u"Line3=003000")
        .AddLine(u"Line4=004000")
        .AddLine(u"Line5=005000")
        .Terminate();
    console.KRM().Put("PriceSignDataSend", Variant::OfText(block.Text()));
}

void PriceSignSendControl(Console& console) {
    CommandBlock block;
    block.AddLine(u"Command=DisplayControl").AddLine(u"Intensity=M08").Terminate();
    console.KRM().Put("PriceSignDataSend", Variant::OfText(block.Text()));
}

}  // namespace vantrel
