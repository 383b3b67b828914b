#include "devices/device_window.h"

#include "base/console.h"
#include "server/command_block.h"

namespace vantrel {

namespace {

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

}  // namespace

void AddPriceSignControls(std::vector<Control>& controls) {
    controls.push_back(Label("Label1", u"PRICE SIGN", 5400, 3240, 1575, 375));
    controls.push_back(
        CommandButton("PRICE_SIGN_GET_STATUS", u"GET STATUS", 5400, 3720, 1575, 375, PriceSignGetStatus));
    controls.push_back(
        CommandButton("PRICE_SIGN_SEND_PRICES", u"SEND PRICES", 5400, 4320, 1575, 375, PriceSignSendPrices));
    controls.push_back(
        CommandButton("PRICE_SIGN_SEND_CONTROL", u"SEND CONTROL", 5400, 4920, 1575, 375, PriceSignSendControl));
}

}  // namespace vantrel
