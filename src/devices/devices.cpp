#include "devices.h"

#include "devices/device_commands.h"

namespace vantrel {

void AddDevicesControls(std::vector<Control>& controls) {
    controls.push_back(CommandButton("OTHERDEVICESBUTTON", u"OTHER DEVICES", 240, 480, 1335, 615, ShowOtherDevices)
                           .Graphical(0x0000FF00));
}

FormDescription OtherDevicesForm() {
    FormDescription form = MakeForm(kOtherDevicesForm, u"OTHER DEVICES", 10920, 6480);
    form.load = LoadOtherDevices;

    std::vector<Control>& c = form.controls;
    // Nine blanks between "EMV" and "CONTROL": the label breaks into two lines there.
    c.push_back(Label("Label2", u"WAYNE iXCAT EMV         CONTROL", 240, 240, 2535, 735));
    c.push_back(
        CommandButton("WAYNE_CHIP_READER_ENABLE", u"ENABLE CHIP READER", 600, 1080, 1695, 495, ChipReaderEnable));
    c.push_back(
        CommandButton("WAYNE_CHIP_READER_DISABLE", u"DISABLE_CHIP READER", 600, 1920, 1695, 495, ChipReaderDisable));
    c.push_back(CommandButton("PACKETPRN", u"PACKET PRINT BAR CODE", 600, 2760, 1695, 495, PacketPrintBarCode));

    c.push_back(Label("CARWASHLABEL", u"CAR WASH", 3120, 240, 1455, 255));
    c.push_back(Label("CWCOmmandsLABEL", u"COMMANDS", 3000, 720, 1695, 375));
    c.push_back(CommandButton("CWGETCODEBUTTON", u"GET CODE", 3000, 1200, 855, 495, CarWashGetCode));
    c.push_back(CommandButton("CODESTATUS_BUTTON", u"CODE STATUS", 4080, 1200, 855, 495, CarWashCodeStatus));
    c.push_back(CommandButton("CAR_WASHSTATUSBUTTON", u"WASH STATUS", 3000, 1800, 855, 495, CarWashWashStatus));
    c.push_back(CommandButton("CANCELCODEBUTTON", u"CANCEL CODE", 4080, 1800, 855, 495, CarWashCancelCode));
    c.push_back(CommandButton("PRICEREADBUTTON", u"PRICE READ", 3000, 2400, 855, 495, CarWashPriceRead));
    c.push_back(CommandButton("SETPRICEBUTTON", u"PRICE SET", 4080, 2400, 855, 495, CarWashPriceSet));
    c.push_back(CommandButton("REPORTREADBUTTON", u"REPORT READ", 3000, 3000, 855, 495, CarWashReportRead));
    c.push_back(CommandButton("COMMANDSTATUSBUTTON", u"COMMAND STATUS", 3000, 3840, 1935, 375, CarWashCommandStatus));
    c.push_back(CommandButton("CARWASHREADDATABUTTON", u"READ DATA", 3000, 4320, 1935, 375, CarWashReadData));
    c.push_back(Label("CODEBOXLABEL", u"CODE #", 3360, 4800, 1455, 255));
    // Typed by the technician; every change goes to CodeNumber.
    c.push_back(TextBox("CodeBox", {}, 3360, 5160, 1455, 375).OnChange(CodeBoxChange));
    c.push_back(CommandButton("RFIDREADBUTTON", u"RFID READ", 2400, 5040, 855, 495, CarWashRfidRead));
    c.push_back(CommandButton("KEYREADBUTTON", u"KEY READ", 2400, 5640, 855, 495, CarWashKeyRead));
    c.push_back(CommandButton("CWCARDREADBUTTON", u"CARD READ", 3360, 5640, 855, 495, CarWashCardRead));
    c.push_back(CommandButton("TRANSREADBUTTON", u"TRANS READ", 4320, 5640, 855, 495, CarWashTransRead));

    c.push_back(Label("TM_LABEL", u"TANK MONITOR", 5040, 240, 2055, 255));
    c.push_back(CommandButton("TMStartReport", u"START REPORT", 5280, 720, 1695, 375, TankMonitorStartReport));
    c.push_back(
        CommandButton("TMREPORTSTATUSBUTTON", u"REPORT STATUS", 5280, 1320, 1695, 375, TankMonitorReportStatus));
    c.push_back(CommandButton("TMDATAREADBUTTON", u"READ REPORT", 5280, 1920, 1695, 375, TankMonitorReadReport));

    c.push_back(Label("Label1", u"PRICE SIGN", 5400, 3240, 1575, 375));
    c.push_back(CommandButton("PRICE_SIGN_GET_STATUS", u"GET STATUS", 5400, 3720, 1575, 375, PriceSignGetStatus));
    c.push_back(CommandButton("PRICE_SIGN_SEND_PRICES", u"SEND PRICES", 5400, 4320, 1575, 375, PriceSignSendPrices));
    c.push_back(CommandButton("PRICE_SIGN_SEND_CONTROL", u"SEND CONTROL", 5400, 4920, 1575, 375, PriceSignSendControl));

    c.push_back(Label("DeviceDataLabel", u"DEVICE DATA", 8400, 120, 1935, 375));
    Control deviceData = TextBox("DeviceData", {}, 7440, 600, 3255, 3255);
    deviceData.multiLine = true;
    deviceData.scrollBars = ScrollBars::Both;
    deviceData.readOnly = true;  // its exact text lives in the model, as the console's data box
    c.push_back(std::move(deviceData));

    c.push_back(CommandButton("EXIT_CMD", u"EXIT", 120, 6000, 1095, 375, ExitOtherDevices));
    return form;
}

}  // namespace vantrel
