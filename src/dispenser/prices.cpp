#include "prices.h"

#include "base/console.h"
#include "server/command_block.h"

#include <cstdint>
#include <string>

namespace vantrel {

namespace {

Text Decimal(int number) { return FromUtf8(std::to_string(number)); }

void AddHoseGroup(CommandBlock& block, TextView hose, TextView tier1, TextView tier2) {
    block.AddLine(u"Hose=", hose).AddLine(u"Tier1=", tier1).AddLine(u"Tier2=", tier2);
}

// The price commands pass their block directly, not through CommandData.
void AssignPrices(Console& console, const Text& block) {
    console.KRM().Put("Price", Variant::OfText(block));
    console.SetDataBox(block);
}

// The test prices of hose k are the digit k four times, slow-down point 15.
void FixedPrices(Console& console, int hoses) {
    console.SetFunctionBox(u"<Object>.Price = (data)");
    CommandBlock block;
    block.AddLine(u"FuelingPosition=", console.SelectedPositionText).AddLine(u"SlowdownPoint=15");
    for (int hose = 1; hose <= hoses; ++hose) {
        const auto digit = static_cast<char16_t>(u'0' + hose);  // one to six hoses: one digit
        const Text price(4, digit);
        AddHoseGroup(block, TextView(&digit, 1), price, price);
    }
    AssignPrices(console, block.Terminate().Text());
}

void Price3Blend(Console& console) {
    console.SetFunctionBox(u"<Object>.Price = (data)");
    CommandBlock block;
    block.AddLine(u"FuelingPosition=", console.SelectedPositionText).AddLine(u"SlowdownPoint=15");
    AddHoseGroup(block, u"1", u"1111", u"1111");
    block.AddLine(u"Blend=100");
    AddHoseGroup(block, u"2", u"2222", u"2222");
    block.AddLine(u"Blend=050");
    AddHoseGroup(block, u"3", u"3333", u"3333");
    block.AddLine(u"Blend=000");
    AssignPrices(console, block.Terminate().Text());
}

void Price(Console& console) {
    const Text slowdown = console.InputBox(u"Enter Slow Down Point", u"Slow Down Point");
    if (slowdown.empty()) {
        return;
    }
    std::int16_t hoses = 0;
    do {
        const Text count = console.InputBox(u"Enter number of hoses", u"Number of Hoses");
        if (count.empty()) {
            return;
        }
        // Not guarded: a count that is no number, or outside 16 bits, ends
        // the console through the error report before anything is sent.
        hoses = ToInt16(Variant::OfText(count));
    } while (hoses > 8);

    CommandBlock block;
    // A count of 0 sends the NUL alone and leaves the function box as it is.
    if (hoses != 0) {
        console.SetFunctionBox(u"<Object>.Price = (data)");
        block.AddLine(u"FuelingPosition=", console.SelectedPositionText).AddLine(u"SlowdownPoint=", slowdown);
        // A hose whose price is cancelled is left out but uses up its number;
        // a negative count adds no hose at all.
        int hose = 1;
        for (int remaining = hoses; remaining >= 1; --remaining, ++hose) {
            const Text title = u"Hose = " + Decimal(hose);
            const Text tier1 = console.InputBox(u"Enter Tier1 price", title);
            if (tier1.empty()) {
                console.MsgBox(u"You entered no data or pressed cancel");
                continue;
            }
            const Text tier2 = console.InputBox(u"Enter Tier2 price", title);
            if (tier2.empty()) {
                console.MsgBox(u"You entered no data or pressed cancel");
                continue;
            }
            AddHoseGroup(block, Decimal(hose), tier1, tier2);
        }
    }
    AssignPrices(console, block.Terminate().Text());
}

}  // namespace

void AddPriceButtons(std::vector<Control>& controls) {
    controls.push_back(CommandButton("Price", u"Price", 3960, 4920, 1095, 375, Price));
    controls.push_back(CommandButton("Price1", u"P1", 3960, 5400, 495, 375, [](Console& c) { FixedPrices(c, 1); }));
    controls.push_back(CommandButton("Price2", u"P2", 4560, 5400, 495, 375, [](Console& c) { FixedPrices(c, 2); }));
    controls.push_back(CommandButton("Price3", u"P3", 3960, 5880, 495, 375, [](Console& c) { FixedPrices(c, 3); }));
    controls.push_back(CommandButton("Price4", u"P4", 4560, 5880, 495, 375, [](Console& c) { FixedPrices(c, 4); }));
    controls.push_back(CommandButton("Price5", u"P5", 3960, 6360, 495, 375, [](Console& c) { FixedPrices(c, 5); }));
    controls.push_back(CommandButton("Price6", u"P6", 4560, 6360, 495, 375, [](Console& c) { FixedPrices(c, 6); }));
    // Made after Price3 so that the small green square is drawn above it.
    controls.push_back(CommandButton("Price3Blend", {}, 4320, 5880, 135, 135, Price3Blend).Graphical(0x00008000));
}

}  // namespace vantrel
