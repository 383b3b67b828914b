// Numbered messages loaded into the server ahead of their use. Not tied to a
// position: no block carries "ReaderPosition=".

#include "base/console.h"
#include "server/command_block.h"
#include "terminal/terminal_parts.h"

namespace vantrel {

namespace {

Text PreloadMessage(Console& console, TextView sectionLine, TextView typeLine, TextView numberLine,
                    TextView messageLine) {
    CommandBlock block;
    block.AddLine(sectionLine).AddLine(typeLine).AddLine(numberLine).AddLine(messageLine).Terminate();
    AssignThroughCommandData(console, "PreloadDisplayMessage", block.Text());
    return std::move(block).Text();
}

void PreLoadMSGsClick(Console& console) {
    console.SetFunctionBox(u"<Object>.PreloadDisplayMessage = (data)");
    // Card and printer messages are numbered each from 1; the fourth card
    // message alone is in section 0.
    PreloadMessage(console, u"Section=1", u"MessageType=Card", u"MessageNumber=1", u"Message=Get it Out");
    PreloadMessage(console, u"Section=1", u"MessageType=Card", u"MessageNumber=2", u"Message=Putt'r In");
    PreloadMessage(console, u"Section=1", u"MessageType=Card", u"MessageNumber=3", u"Message=Its a Bad one");
    PreloadMessage(console, u"Section=0", u"MessageType=Card", u"MessageNumber=4", u"Message=Hold on a Minute");
    PreloadMessage(console, u"Section=1", u"MessageType=Card", u"MessageNumber=5", u"Message=Its in wrong");
    PreloadMessage(console, u"Section=1", u"MessageType=Printer", u"MessageNumber=1", u"Message=Doin' a Print");
    PreloadMessage(console, u"Section=1", u"MessageType=Printer", u"MessageNumber=2", u"Message=Its all done");
    PreloadMessage(console, u"Section=1", u"MessageType=Printer", u"MessageNumber=3", u"Message=Grab it and Run");
    const Text last =
        PreloadMessage(console, u"Section=1", u"MessageType=Printer", u"MessageNumber=4", u"Message=Printers BAD");
    console.SetDataBox(last);  // the first eight are never shown
}

}  // namespace

void AddPreloadedMessageControls(std::vector<Control>& controls) {
    controls.push_back(CommandButton("PreLoadMSGs", u"PreLoad MSGs", 2160, 3720, 1575, 255, PreLoadMSGsClick));
}

}  // namespace vantrel
