#include "devices/device_window.h"
#include "devices/devices.h"

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

void CodeBoxChange(Console& console) { console.CodeNumber = console.Form(kOtherDevicesForm).TextOf(kCodeBox); }

void CarWashKeyRead(Console& console) { RequestCarWashData(console, u"ReturnKeyData"); }
void CarWashPriceRead(Console& console) { RequestCarWashData(console, u"ReturnPriceData"); }
void CarWashReportRead(Console& console) { RequestCarWashData(console, u"ReturnReportData"); }
void CarWashRfidRead(Console& console) { RequestCarWashData(console, u"ReturnRFIDData"); }
void CarWashTransRead(Console& console) { RequestCarWashData(console, u"ReturnTransactionData"); }
void CarWashCardRead(Console& console) { RequestCarWashData(console, u"ReturnCardData"); }

}  // namespace

void AddCarWashControls(std::vector<Control>& controls) {
    controls.push_back(Label("CARWASHLABEL", u"CAR WASH", 3120, 240, 1455, 255));
    controls.push_back(Label("CWCOmmandsLABEL", u"COMMANDS", 3000, 720, 1695, 375));
    controls.push_back(CommandButton("CWGETCODEBUTTON", u"GET CODE", 3000, 1200, 855, 495, CarWashGetCode));
    controls.push_back(CommandButton("CODESTATUS_BUTTON", u"CODE STATUS", 4080, 1200, 855, 495, CarWashCodeStatus));
    controls.push_back(CommandButton("CAR_WASHSTATUSBUTTON", u"WASH STATUS", 3000, 1800, 855, 495, CarWashWashStatus));
    controls.push_back(CommandButton("CANCELCODEBUTTON", u"CANCEL CODE", 4080, 1800, 855, 495, CarWashCancelCode));
    controls.push_back(CommandButton("PRICEREADBUTTON", u"PRICE READ", 3000, 2400, 855, 495, CarWashPriceRead));
    controls.push_back(CommandButton("REPORTREADBUTTON", u"REPORT READ", 3000, 3000, 855, 495, CarWashReportRead));
    controls.push_back(
        CommandButton("COMMANDSTATUSBUTTON", u"COMMAND STATUS", 3000, 3840, 1935, 375, CarWashCommandStatus));
    controls.push_back(CommandButton("CARWASHREADDATABUTTON", u"READ DATA", 3000, 4320, 1935, 375, CarWashReadData));
    controls.push_back(Label("CODEBOXLABEL", u"CODE #", 3360, 4800, 1455, 255));
    // Typed by the technician; every change goes to CodeNumber.
    controls.push_back(TextBox(kCodeBox, {}, 3360, 5160, 1455, 375).OnChange(CodeBoxChange));
    controls.push_back(CommandButton("RFIDREADBUTTON", u"RFID READ", 2400, 5040, 855, 495, CarWashRfidRead));
    controls.push_back(CommandButton("KEYREADBUTTON", u"KEY READ", 2400, 5640, 855, 495, CarWashKeyRead));
    controls.push_back(CommandButton("CWCARDREADBUTTON", u"CARD READ", 3360, 5640, 855, 495, CarWashCardRead));
    controls.push_back(CommandButton("TRANSREADBUTTON", u"TRANS READ", 4320, 5640, 855, 495, CarWashTransRead));
}

}  // namespace vantrel
