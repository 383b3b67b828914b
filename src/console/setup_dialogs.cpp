#include "setup_dialogs.h"

#include "base/console.h"
#include "server/command_block.h"

#include <string>
#include <utility>

namespace vantrel {

namespace {

constexpr char kDebugForm[] = "GetDebugSelect";
constexpr char kSerialForm[] = "SerialPortPara";

Text Digits(int number) { return FromUtf8(std::to_string(number)); }

// Names of the options and labels, for their rows and their handlers alike.
std::string DebugOptionName(int mode) { return "Select" + std::to_string(mode); }
std::string DebugLabelName(int mode) { return "Label" + std::to_string(mode + 1); }
std::string PortOptionName(int port) { return "oComm" + std::to_string(port); }
std::string BaudOptionName(TextView rate) { return "oBR" + ToUtf8(rate); }
constexpr char kPortFrame[] = "fCommPort";
constexpr char kBaudFrame[] = "fBaudRate";

// GetDebugSelect

void DebugLoad(Console& console) {
    static constexpr const char16_t* kTexts[] = {
        u"Turn off Debug Mode",        u"Log File - Link Data Only",
        u"Log File - OLE/DDE Only",
        u"Log File - Link & OLE/DDE ",  // the trailing blank is the server team's
        u"msgbox - OLE/DDE only",      u"msgbox - OLE/DDE & Link Data to Log File",
    };
    FormState& form = console.Form(kDebugForm);
    for (int mode = 0; mode <= 5; ++mode) {
        form.SetText(DebugLabelName(mode), TextView(kTexts[mode]));
    }
}

void DebugOk(Console& console) {
    const FormState& form = console.Form(kDebugForm);
    // With nothing chosen the selection keeps what it had.
    for (int mode = 0; mode <= 5; ++mode) {
        if (form.Checked(DebugOptionName(mode))) {
            console.DialogSelection = Digits(mode);
        }
    }
    console.Hide(kDebugForm);
}

void DebugCancel(Console& console) {
    console.DialogSelection = u"100";
    console.Hide(kDebugForm);
}

// SerialPortPara

Text PortNumberLine(int port) { return u"PortNumber=" + Digits(port) + kCrLf; }
Text BaudRateLine(TextView rate) { return u"BaudRate=" + Text(rate) + kCrLf; }

// The dialog sends through DialogServer; binding it to the console's own
// server at the dialog's first opening lets its OK reach the server.
void SerialLoad(Console& console) { console.DialogServer = &console.KRM(); }

// A port click replaces the selection, a baud click appends to it: an OK
// rebuilds both from the options anyway.
void PortClick(Console& console, int port) { console.DialogSelection = PortNumberLine(port); }
void BaudClick(Console& console, TextView rate) { console.DialogSelection += BaudRateLine(rate); }

void SerialOk(Console& console) {
    const FormState& options = console.Form(kSerialForm);
    for (int port = 1; port <= 4; ++port) {
        if (options.Checked(PortOptionName(port))) {
            console.PortLine = PortNumberLine(port);
        }
    }
    for (const TextView rate : {u"19200", u"9600", u"4800", u"2400"}) {
        if (options.Checked(BaudOptionName(rate))) {
            console.DialogSelection = console.PortLine + BaudRateLine(rate);
        }
    }
    CommandBlock block;
    block.Append(console.DialogSelection).AddLine(u"LogFileName=c:\\xfer\\logfile.log").Terminate();
    console.CommandData = Variant::OfText(block.Text());
    console.Hide(kSerialForm);
    // The block is shown, then sent from CommandData as it is then: a stress
    // tick while the box is up replaces it, and that is what goes out.
    console.MsgBox(ToText(console.CommandData));
    if (!console.DialogServer) {
        throw errors::ObjectNotSet();
    }
    console.DialogServer->Put("SerialPortParameters", console.CommandData);
}

void SerialCancel(Console& console) {
    console.DialogSelection = u"100";
    console.MsgBox(u"you cancelled the Serial Port dialog box");
    console.Hide(kSerialForm);
}

Control PortOption(int port, int top) {
    return OptionButton(PortOptionName(port), u"Comm Port " + Digits(port), 120, top, 1455, 375,
                        [port](Console& console) { PortClick(console, port); })
        .In(kPortFrame);
}

Control BaudOption(const char16_t* rate, int top, int width) {
    return OptionButton(BaudOptionName(rate), rate, 120, top, width, 375,
                        [rate](Console& console) { BaudClick(console, rate); })
        .In(kBaudFrame);
}

FormDescription Dialog(std::string name, Text caption, int width, int height, Color back, Handler load) {
    FormDescription form = MakeForm(std::move(name), std::move(caption), width, height, back);
    form.load = std::move(load);
    return form;
}

}  // namespace

FormDescription GetDebugSelectForm() {
    FormDescription form = Dialog(kDebugForm, u"Get Debug Select", 4275, 3840, 0x000000FF, DebugLoad);
    for (int mode = 0; mode <= 5; ++mode) {
        const int top = 240 + 480 * mode;
        // The captions are too narrow to show; the labels beside carry the
        // texts.
        form.controls.push_back(OptionButton(
            DebugOptionName(mode), mode == 0 ? Text(u"Select0") : u"Select " + Digits(mode), 240, top, 255, 255));
        form.controls.push_back(Label(DebugLabelName(mode), u"Label" + Digits(mode + 1), 600, top, 3375, 255));
    }
    form.controls.push_back(CommandButton("cmdOK", u"OK", 840, 3120, 975, 495, DebugOk));
    form.controls.push_back(CommandButton("cmdCancel", u"Cancel", 2160, 3120, 975, 495, DebugCancel));
    return form;
}

FormDescription SerialPortParaForm() {
    FormDescription form = Dialog(kSerialForm, u"Serial Port Para", 5610, 2640, 0x00FF8080, SerialLoad);
    form.controls.push_back(Frame(kPortFrame, u"Comm Port Select", 120, 120, 1695, 2295));
    form.controls.push_back(PortOption(1, 360));
    form.controls.push_back(PortOption(2, 840));
    form.controls.push_back(PortOption(3, 1320));
    form.controls.push_back(PortOption(4, 1800));
    form.controls.push_back(Frame(kBaudFrame, u"Baud Rate Selection", 2040, 120, 1815, 2295));
    form.controls.push_back(BaudOption(u"19200", 360, 975));
    form.controls.push_back(BaudOption(u"9600", 840, 975));
    form.controls.push_back(BaudOption(u"4800", 1320, 975));
    form.controls.push_back(BaudOption(u"2400", 1800, 1095));
    form.controls.push_back(CommandButton("SPOK", u"OK", 4080, 360, 1335, 495, SerialOk));
    form.controls.push_back(CommandButton("SPCancel", u"Cancel", 4080, 1440, 1335, 495, SerialCancel));
    return form;
}

std::vector<MenuEntry> SetupMenu() {
    return {
        {"GetDebugSelectEntry", u"&Get Debug Select...", [](Console& console) { console.ShowModal(kDebugForm); }},
        {"SerialPortParaEntry", u"&Serial Port Para...", [](Console& console) { console.ShowModal(kSerialForm); }},
    };
}

}  // namespace vantrel
