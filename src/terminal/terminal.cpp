#include "terminal.h"

#include "terminal/terminal_commands.h"

namespace vantrel {

void AddTerminalControls(std::vector<Control>& controls) {
    controls.push_back(CommandButton("ReaderInfo", u"Reader Info", 240, 2040, 1335, 255, ReaderInfoClick));
    controls.push_back(CommandButton("PreLoadMSGs", u"PreLoad MSGs", 2160, 3720, 1575, 255, PreLoadMSGsClick));

    controls.push_back(CommandButton("Display", u"Display1", 2160, 4080, 1575, 255, DisplayClick));
    controls.push_back(CommandButton("Display2", u"Display2", 2160, 4440, 1575, 255, Display2Click));
    controls.push_back(CommandButton("Beeper", u"BeeperControl", 2160, 5280, 1575, 255, BeeperClick));

    // Under the "Key Entry Type" label of the console.
    controls.push_back(CommandButton("KeyEntryNNE", u"Num No E", 240, 3720, 495, 495, KeyEntryNNEClick));
    controls.push_back(CommandButton("KeyEntryNENC", u"Num Echo No C", 840, 3720, 975, 495, KeyEntryNENCClick));
    controls.push_back(CommandButton("KeyEntryNE", u"Num Echo", 240, 4320, 495, 495, KeyEntryNEClick));
    controls.push_back(CommandButton("KeyEntryNNENC", u"Num No E No C", 840, 4320, 975, 495, KeyEntryNNENCClick));
    controls.push_back(CommandButton("KeyEntryD", u"DES", 120, 4920, 495, 495, KeyEntryDClick));
    controls.push_back(CommandButton("KeyEntryDNoCur", u"DES No C", 720, 4920, 615, 495, KeyEntryDNoCurClick));
    controls.push_back(CommandButton("KeyEntryF", u"Func", 1440, 4920, 495, 495, KeyEntryFClick));
    controls.push_back(CommandButton("KeyPad", u"KeyPadConfiguration", 120, 6240, 1695, 255, KeyPadClick));

    // The printer block in the lower left corner, each pair side by side.
    controls.push_back(CommandButton("PrintHeader", u"Header 1", 120, 6600, 855, 255, PrintHeaderClick));
    controls.push_back(CommandButton("Header2", u"Header 2", 1080, 6600, 855, 255, Header2Click));
    controls.push_back(CommandButton("PrintFooter", u"Footer 1", 120, 6960, 855, 255, PrintFooterClick));
    controls.push_back(CommandButton("Footer2", u"Footer 2", 1080, 6960, 855, 255, Footer2Click));
    controls.push_back(CommandButton("Print", u"Print Receipt1", 120, 7320, 855, 495, PrintClick));
    controls.push_back(CommandButton("PrintReceipt2", u"Print Receipt2", 1080, 7320, 855, 495, PrintReceipt2Click));
    controls.push_back(CommandButton("BarCodePrint", u"BarCodePrint", 3960, 7320, 1095, 375, BarCodePrintClick));
}

}  // namespace vantrel
