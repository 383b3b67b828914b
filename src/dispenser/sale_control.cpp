#include "sale_control.h"

#include "base/console.h"

#include <string_view>

namespace vantrel {

namespace {

// No block: the value is the bare text, without key, separator or NUL. The
// data box gets one blank, not the value.
void AssignBareValue(Console& console, TextView callText, std::string_view member, const Text& value) {
    console.SetFunctionBox(Joined({callText, value, u")"}));
    console.KRM().Put(member, Variant::OfText(value));
    console.SetDataBox(u" ");
}

void Stop(Console& console) { AssignBareValue(console, u"<Object>.Stop = (", "Stop", console.SelectedPositionText); }

// One assignment of "0" (not "00"); which positions it reaches is the
// server's affair.
void StopAll(Console& console) { AssignBareValue(console, u"<Object>.Stop = (", "Stop", u"0"); }

void Resume(Console& console) {
    AssignBareValue(console, u"<Object>.Resume = (", "Resume", console.SelectedPositionText);
}

// The function box spells "DeAuthorize"; the member is Deauthorize.
void Deauthorize(Console& console) {
    AssignBareValue(console, u"<Object>.DeAuthorize = (", "Deauthorize", console.SelectedPositionText);
}

void PayOutSale(Console& console) {
    AssignBareValue(console, u"<Object>.PayOutSale = (", "PayOutSale", console.SelectedPositionText);
}

}  // namespace

void AddSaleControlButtons(std::vector<Control>& controls) {
    controls.push_back(CommandButton("Deauthorize", u"Deauthorize", 5160, 5880, 1455, 375, Deauthorize));
    controls.push_back(CommandButton("Stop", u"Stop", 5160, 6360, 1455, 375, Stop));
    // Made after Stop so that it is drawn above Stop's right end.
    controls.push_back(CommandButton("STOP_ALL", u"ALL", 6120, 6360, 495, 375, StopAll).Graphical(0x000000FF));
    controls.push_back(CommandButton("Resume", u"Resume", 5160, 6840, 1455, 375, Resume));
    controls.push_back(CommandButton("PayOutSale", u"PayOutSale", 5160, 7320, 1455, 375, PayOutSale));
}

}  // namespace vantrel
