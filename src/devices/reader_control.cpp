#include "device_commands.h"

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

}  // namespace

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

}  // namespace vantrel
