#include "devices/device_window.h"

#include "base/console.h"
#include "server/command_block.h"

namespace vantrel {

namespace {

// Five-digit price texts, sent as written; nothing is computed from them.
struct Prices {
    TextView full;
    TextView discount1;
    TextView discount2;
};

void AddPrices(CommandBlock& body, TextView numberLine, const Prices& prices) {
    body.AddLine(numberLine)
        .AddLine(u"FullPrice=", prices.full)
        .AddLine(u"Discount1Price=", prices.discount1)
        .AddLine(u"Discount2Price=", prices.discount2);
}

// Three programs and three options; "OptionCount=03" has two digits here.
Text PriceTable(const Prices (&programs)[3], const Prices (&options)[3]) {
    CommandBlock body;
    body.AddLine(u"ProgramCount=03");
    AddPrices(body, u"ProgramNumber=01", programs[0]);
    AddPrices(body, u"ProgramNumber=02", programs[1]);
    AddPrices(body, u"ProgramNumber=03", programs[2]);
    body.AddLine(u"OptionCount=03");
    AddPrices(body, u"OptionNumber=01", options[0]);
    AddPrices(body, u"OptionNumber=02", options[1]);
    AddPrices(body, u"OptionNumber=03", options[2]);
    return std::move(body).Text();
}

void CarWashPriceSet(Console& console) {
    console.SetFunctionBox(kCarWashRequestEcho);
    // The toggle comes first, so a press that fails at the server still
    // moves the next press on to the other table.
    Text body;
    if (console.PriceSET != 0) {
        console.PriceSET = 0;
        body = PriceTable(
            {{u"00501", u"00401", u"00301"}, {u"00601", u"00501", u"00401"}, {u"00701", u"00601", u"00501"}},
            {{u"00026", u"00021", u"00016"}, {u"00031", u"00026", u"00021"}, {u"00036", u"00031", u"00026"}});
    } else {
        console.PriceSET = 1;
        body = PriceTable(
            {{u"00500", u"00400", u"00300"}, {u"00600", u"00500", u"00400"}, {u"00700", u"00600", u"00500"}},
            {{u"00025", u"00020", u"00015"}, {u"00030", u"00025", u"00020"}, {u"00035", u"00030", u"00025"}});
    }
    SetDeviceData(console, body);
    // Two empty lines follow the table before the NUL; the car wash has
    // always been sent them.
    CommandBlock block;
    block.AddLine(u"SetPriceData").Append(body).AddLine(u"").AddLine(u"").Terminate();
    AssignCarWashRequest(console, block.Text());
}

}  // namespace

void AddCarWashPriceControls(std::vector<Control>& controls) {
    controls.push_back(CommandButton("SETPRICEBUTTON", u"PRICE SET", 4080, 2400, 855, 495, CarWashPriceSet));
}

}  // namespace vantrel
