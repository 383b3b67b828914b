// The terminal's display and beeper.

#include "base/console.h"
#include "server/command_block.h"
#include "terminal/terminal_parts.h"

namespace vantrel {

namespace {

// A two-line message: the line after "Message=" has no key on purpose, it is
// the message's second line.
void SendDisplayMessage(Console& console, TextView messageLine) {
    console.SetFunctionBox(u"<Object>.DispData = (data)");
    CommandBlock block;
    block.AddLine(u"ReaderPosition=", console.SelectedPositionText)
        .AddLine(messageLine)
        .AddLine(u"Line 2 Displayed")
        .Terminate();
    AssignThroughCommandData(console, "DisplayData", block.Text());
    console.SetDataBox(block.Text());
}

void DisplayClick(Console& console) { SendDisplayMessage(console, u"Message=Display Msg 1"); }

void Display2Click(Console& console) { SendDisplayMessage(console, u"Message=Display Msg 2"); }

void BeeperClick(Console& console) {
    console.SetFunctionBox(u"<Object>.BeepData = (data)");
    // The beeper takes LF alone, no CR, and its block does not pass through
    // CommandData.
    CommandBlock block;
    block.AddLineLf(u"ReaderPosition=", console.SelectedPositionText).AddLineLf(u"BeepCounts=03").Terminate();
    console.KRM().Put("BeeperControl", Variant::OfText(block.Text()));
    console.SetDataBox(u" ");
}

}  // namespace

void AddDisplayBeeperControls(std::vector<Control>& controls) {
    controls.push_back(CommandButton("Display", u"Display1", 2160, 4080, 1575, 255, DisplayClick));
    controls.push_back(CommandButton("Display2", u"Display2", 2160, 4440, 1575, 255, Display2Click));
    controls.push_back(CommandButton("Beeper", u"BeeperControl", 2160, 5280, 1575, 255, BeeperClick));
}

}  // namespace vantrel
