#include "position_selector.h"

#include "base/console.h"
#include "server/command_block.h"

#include <string>

namespace vantrel {

namespace {

std::string ButtonName(int position) { return "Button" + std::to_string(position); }
std::string LabelName(int position) { return "ButtLab" + std::to_string(position); }
Text Decimal(int number) { return FromUtf8(std::to_string(number)); }

Text PositionInformation(Console& console, int position) {
    return ToText(
        console.KRM().Call("FuelingPositionInformation", Variant::OfInt16(static_cast<std::int16_t>(position))));
}

}  // namespace

void PositionClick(Console& console, int position) {
    console.Window().SetText(kPumpNumberBox, u"Fueling Position -> " + Decimal(position));
    console.SelectedPosition = Variant::OfInt16(static_cast<std::int16_t>(position));
    console.SelectedPositionText = PositionText(position);
}

void PositionDblClick(Console& console, int position) { console.SetDataBox(PositionInformation(console, position)); }

void PositionGotFocus(Console& console, int position) {
    console.Window().SetBackColor(LabelName(position), kFocusedLabelColor);
    // Round brackets for the first position only: the server's developers
    // know the first position's echo by them.
    console.SetFunctionBox(position == 1 ? u"(returned data)=<Object>.FuelingPositionInformation(passed data)"
                                         : u"<returned data>=<Object>.FuelingPositionInformation(passed data)");
    console.SetDataBox(PositionInformation(console, position));
}

void PositionLostFocus(Console& console, int position) {
    console.Window().SetBackColor(LabelName(position), kLabelColor);
}

void AddPositionSelector(std::vector<Control>& controls) {
    for (int position = 1; position <= 32; ++position) {
        const int column = position <= 16 ? 0 : 1;
        const int row = (position - 1) % 16;
        const int top = 1320 + 360 * row;
        Control button = OptionButton(ButtonName(position), {}, column == 0 ? 6840 : 7800, top, 255, 255);
        button.checked = position == 1;
        button.OnClick([position](Console& console) { PositionClick(console, position); })
            .OnDblClick([position](Console& console) { PositionDblClick(console, position); })
            .OnGotFocus([position](Console& console) { PositionGotFocus(console, position); })
            .OnLostFocus([position](Console& console) { PositionLostFocus(console, position); });
        controls.push_back(std::move(button));
        controls.push_back(
            Label(LabelName(position), Decimal(position), column == 0 ? 7200 : 8160, top, 255, 255).Back(kLabelColor));
    }
}

}  // namespace vantrel
