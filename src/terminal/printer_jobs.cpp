// Print jobs for the terminal's receipt printer. None of them passes through
// CommandData; all assign "PrintOutput".

#include "base/console.h"
#include "server/command_block.h"
#include "terminal/terminal_parts.h"

namespace vantrel {

namespace {

// Empty lines that feed the paper after the text; their counts are part of
// each job.
void AddEmptyLines(CommandBlock& block, int count) {
    for (int line = 0; line < count; ++line) {
        block.AddLine(u"");
    }
}

void SendPrintJob(Console& console, const CommandBlock& block) {
    console.KRM().Put("PrintOutput", Variant::OfText(block.Text()));
}

// The sample receipts differ only in their title line and first text line.
void PrintReceipt(Console& console, TextView titleLine, TextView firstLine) {
    console.SetFunctionBox(u"<Object>.PrintOutput = (data)");
    CommandBlock block;
    block.AddLine(u"ReaderPosition=", console.SelectedPositionText)
        .AddLine(u"Job=Receipt")
        .AddLine(u"Message=Vantrel")
        .AddLine(titleLine)
        .AddLine(firstLine)
        .AddLine(u"Line 2")
        .AddLine(u"Line 3")
        .AddLine(u"Line 4")
        .AddLine(u"Line 5")
        .AddLine(u"Line 6")
        .AddLine(u"Line 7")
        .AddLine(u"Line 8")
        .AddLine(u"Line 9")
        .AddLine(u"Line 10")
        .AddLine(u"LastLine !");
    AddEmptyLines(block, 5);
    block.Terminate();
    SendPrintJob(console, block);
    console.SetDataBox(block.Text());
}

// Headers and footers echo "PrinterOutput", though they assign the same
// member as the receipts.
void PrintHeaderOrFooter(Console& console, TextView jobLine, TextView messageLine, int emptyLines) {
    console.SetFunctionBox(u"<Object>.PrinterOutput = (data)");
    CommandBlock block;
    block.AddLine(u"ReaderPosition=", console.SelectedPositionText).AddLine(jobLine).AddLine(messageLine);
    AddEmptyLines(block, emptyLines);
    block.Terminate();
    SendPrintJob(console, block);
    console.SetDataBox(block.Text());
}

void PrintClick(Console& console) { PrintReceipt(console, u"-----Receipt1-----", u"Line 1 Receipt1"); }

void PrintReceipt2Click(Console& console) { PrintReceipt(console, u"-----Receipt2-----", u"Line 1"); }

void PrintHeaderClick(Console& console) {
    PrintHeaderOrFooter(console, u"Job=Header", u"Message=-----Header 1-----", 0);
}

void Header2Click(Console& console) { PrintHeaderOrFooter(console, u"Job=Header", u"Message=-----Header 2-----", 0); }

void PrintFooterClick(Console& console) {
    PrintHeaderOrFooter(console, u"Job=Footer", u"Message=-----Footer 1-----", 11);
}

void Footer2Click(Console& console) { PrintHeaderOrFooter(console, u"Job=Footer", u"Message=-----Footer 2-----", 11); }

void BarCodePrintClick(Console& console) {
    // Always terminal 01, and the two-digit text stays "01" after the job
    // until the next position click, while the selected number and the
    // selector's display keep the technician's choice. Kept on purpose.
    console.SelectedPositionText = u"01";
    CommandBlock block;
    block.AddLine(u"ReaderPosition=", console.SelectedPositionText)
        .AddLine(u"Job=Receipt")
        .AddLine(u"Message=Vantrel")
        .AddLine(u"Line 1")
        .AddLine(u"Line 2")
        .AddLine(u"Line 3")
        .AddLine(u"Line 4")
        .Append(kEsc)
        .Append(u"B0202354000006")  // EAN-13, check digit last
        .Append(kEtx)
        .AddLine(u"")
        .AddLine(u"TestLine 5")
        .AddLine(u"TestLine 6")
        .AddLine(u"TestLine 7")
        .AddLine(u"TestLine 8")
        .AddLine(u"TestLine 9")
        .AddLine(u"TestLine 10")
        .AddLine(u"LastLine !");
    AddEmptyLines(block, 5);
    block.Terminate();
    SendPrintJob(console, block);
    // Shows nothing: both echo boxes keep the previous command's texts.
}

}  // namespace

void AddPrinterControls(std::vector<Control>& controls) {
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
