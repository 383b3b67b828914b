#include "device_commands.h"

#include "base/console.h"
#include "server/command_block.h"

namespace vantrel {

namespace {

void RequestCarWashData(Console& console, TextView requestWord) {
    console.SetFunctionBox(kCarWashRequestEcho);
    CommandBlock block;
    block.AddLine(requestWord).Terminate();
    AssignCarWashRequest(console, block.Text());
}

}  // namespace

void CarWashGetCode(Console& console) {
    console.SetFunctionBox(kCarWashRequestEcho);
    // Program 01 with options 01 and 03, each followed by its own price level;
    // "OptionCount=2" has one digit. The car wash is sent exactly this.
    CommandBlock body;
    body.AddLine(u"ProgramNumber=01")
        .AddLine(u"PriceLevel=01")
        .AddLine(u"OptionCount=2")
        .AddLine(u"OptionNumber=01")
        .AddLine(u"PriceLevel=01")
        .AddLine(u"OptionNumber=03")
        .AddLine(u"PriceLevel=01");
    // The technician sees what was asked for, without the request word.
    SetDeviceData(console, body.Text());
    CommandBlock block;
    block.AddLine(u"RequestCarWashCode").Append(body.Text()).Terminate();
    AssignCarWashRequest(console, block.Text());
}

void CarWashCancelCode(Console& console) {
    console.SetFunctionBox(kCarWashRequestEcho);
    CommandBlock block;
    block.AddLine(u"CancelCarWashCode").AddLine(u"CarWashCode=", console.CodeNumber).Terminate();
    AssignCarWashRequest(console, block.Text());
}

void CarWashCodeStatus(Console& console) {
    console.SetFunctionBox(kCarWashRequestEcho);
    CommandBlock block;
    block.AddLine(u"CarWashCodeStatus").AddLine(u"CarWashCode=", console.CodeNumber).Terminate();
    AssignCarWashRequest(console, block.Text());
}

void CarWashWashStatus(Console& console) {
    console.SetFunctionBox(u"(data)=<Object>.CarWashRequestStatus");
    ReadIntoDeviceData(console, "CarWashRequestStatus");
}

void CarWashReadData(Console& console) {
    console.SetFunctionBox(u"(data)=<Object>.CarWashDataRead");
    ReadIntoDeviceData(console, "CarWashDataRead");
}

void CarWashCommandStatus(Console& console) {
    console.SetFunctionBox(u"(data)=<Object>.CarWashOperationStatus");
    ReadIntoDeviceData(console, "CarWashOperationStatus");
}

void CarWashKeyRead(Console& console) { RequestCarWashData(console, u"ReturnKeyData"); }
void CarWashPriceRead(Console& console) { RequestCarWashData(console, u"ReturnPriceData"); }
void CarWashReportRead(Console& console) { RequestCarWashData(console, u"ReturnReportData"); }
void CarWashRfidRead(Console& console) { RequestCarWashData(console, u"ReturnRFIDData"); }
void CarWashTransRead(Console& console) { RequestCarWashData(console, u"ReturnTransactionData"); }
void CarWashCardRead(Console& console) { RequestCarWashData(console, u"ReturnCardData"); }

}  // namespace vantrel
