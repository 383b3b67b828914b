#include "devices/device_window.h"

#include "base/console.h"
#include "server/packet_block.h"
#include "server/command_block.h"

namespace vantrel {

namespace {

void SendChipReaderControl(Console& console, TextView controlLine) {
    CommandBlock block;
    block.AddLine(u"ReaderPosition=", console.SelectedPositionText).AddLine(controlLine).Terminate();
    console.KRM().Put("ReaderControl", Variant::OfText(block.Text()));
}

void ChipReaderEnable(Console& console) { SendChipReaderControl(console, u"ChipReaderControl=Enable"); }
void ChipReaderDisable(Console& console) { SendChipReaderControl(console, u"ChipReaderControl=Disable"); }

void PacketPrintBarCode(Console& console) {
    // A printer job for the terminal's printer: an EAN-8 bar code (the last
    // digit is the check digit), then a paper cut. No separators inside.
    constexpr TextView job =
        u"<PrinterCommand><PrintCommand SequenceNumber=\"0\">"
        u"<PrintBarCode Characters=\"73513537\" Symbology=\"EAN_8\"/>"
        u"<CutPaper/>"
        u"</PrintCommand></PrinterCommand>";
    CommandBlock block = PacketBlock(console.SelectedPositionText, job);
    block.Append(kCrLf).Terminate();
    // The one command of the window that goes through the shared value.
    console.CommandData = Variant::OfText(block.Text());
    console.KRM().Put("PacketQueOutput", console.CommandData);
}

}  // namespace

void AddReaderControlControls(std::vector<Control>& controls) {
    // Nine blanks between "EMV" and "CONTROL": the label breaks into two lines there.
    controls.push_back(Label("Label2", u"WAYNE iXCAT EMV         CONTROL", 240, 240, 2535, 735));
    controls.push_back(
        CommandButton("WAYNE_CHIP_READER_ENABLE", u"ENABLE CHIP READER", 600, 1080, 1695, 495, ChipReaderEnable));
    controls.push_back(
        CommandButton("WAYNE_CHIP_READER_DISABLE", u"DISABLE_CHIP READER", 600, 1920, 1695, 495, ChipReaderDisable));
    controls.push_back(CommandButton("PACKETPRN", u"PACKET PRINT BAR CODE", 600, 2760, 1695, 495, PacketPrintBarCode));
}

}  // namespace vantrel
