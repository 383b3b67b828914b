// Key entry modes of the terminal's keypad, and its keypad configuration.

#include "base/console.h"
#include "server/command_block.h"
#include "server/packet_block.h"
#include "terminal/terminal_parts.h"

namespace vantrel {

namespace {

// The function box names "KeyEntryData", with two blanks before "=", though
// the member assigned is "KeyEntryType".
constexpr char16_t kKeyEntryEcho[] = u"<Object>.KeyEntryData  = (data)";

Text KeyEntryBlock(const Console& console, TextView entryModeLine) {
    CommandBlock block;
    block.AddLine(u"ReaderPosition=", console.SelectedPositionText).AddLine(entryModeLine).Terminate();
    return std::move(block).Text();
}

void SetKeyEntryMode(Console& console, TextView entryModeLine) {
    console.SetFunctionBox(kKeyEntryEcho);
    const Text block = KeyEntryBlock(console, entryModeLine);
    AssignThroughCommandData(console, "KeyEntryType", block);
    console.SetDataBox(block);
}

// CR LF after the position line, LF alone after the key data.
Text SendKeyPadConfiguration(Console& console, TextView keyData) {
    console.SetFunctionBox(u"<Object>.KeyPadData (data)");
    CommandBlock block;
    block.AddLine(u"ReaderPosition=", console.SelectedPositionText).AddLineLf(u"KeyData=", keyData).Terminate();
    AssignThroughCommandData(console, "KeyPadConfiguration", block.Text());
    console.SetDataBox(block.Text());
    return std::move(block).Text();
}

void KeyEntryDClick(Console& console) {
    console.SetFunctionBox(kKeyEntryEcho);
    console.SetFunctionBox(u"<Object>.PacketQueOutput = (data)");
    // The lead-in packet: "44", "$" and "*", then the digits 1 to 9, 0, 1, 2, 3.
    // It ends with its last digit: no line end, no NUL.
    const CommandBlock packet = PacketBlock(console.SelectedPositionText, u"44$*1234567890123");
    AssignThroughCommandData(console, "PacketQueOutput", packet.Text());
    const Text block = KeyEntryBlock(console, u"EntryMode=DESEncryption");
    AssignThroughCommandData(console, "KeyEntryType", block);
    console.SetDataBox(block);
}

void KeyEntryDNoCurClick(Console& console) { SetKeyEntryMode(console, u"EntryMode=DESEncryptionNoCursor"); }

void KeyEntryFClick(Console& console) { SetKeyEntryMode(console, u"EntryMode=AnyKey"); }

void KeyEntryNEClick(Console& console) { SetKeyEntryMode(console, u"EntryMode=NumericWithEcho"); }

void KeyEntryNENCClick(Console& console) { SetKeyEntryMode(console, u"EntryMode=NumericWithEchoNoCursor"); }

void KeyEntryNNEClick(Console& console) { SetKeyEntryMode(console, u"EntryMode=NumericWithOutEcho"); }

void KeyEntryNNENCClick(Console& console) { SetKeyEntryMode(console, u"EntryMode=NumericWithOutEchoNoCursor"); }

void KeyPadClick(Console& console) {
    console.SetFunctionBox(u"<Object>.KeyPadConfiguration = (data)");
    if (console.AskYesNo(u"Do you want to set your on config?", u"Key Pad Configuration Select") != Answer::Yes) {
        SendKeyPadConfiguration(console, u"123@R456A@789NYL0EHCe");
        return;
    }
    const Text keyData = console.InputBox(u"Enter Keypad Config Data", u"Keypad Configuration");
    if (keyData.empty()) {
        return;  // nothing typed or Cancel: nothing sent, nothing shown
    }
    const Text block = SendKeyPadConfiguration(console, keyData);
    // The block always starts with the position line, so this message never
    // shows; the test stays where it has always been, after the send, so an
    // empty entry still ends silently above.
    if (block.empty()) {
        console.MsgBox(u"You entered no data or pressed cancel");
    }
}

}  // namespace

void AddKeyEntryControls(std::vector<Control>& controls) {
    // Under the "Key Entry Type" label of the console.
    controls.push_back(CommandButton("KeyEntryNNE", u"Num No E", 240, 3720, 495, 495, KeyEntryNNEClick));
    controls.push_back(CommandButton("KeyEntryNENC", u"Num Echo No C", 840, 3720, 975, 495, KeyEntryNENCClick));
    controls.push_back(CommandButton("KeyEntryNE", u"Num Echo", 240, 4320, 495, 495, KeyEntryNEClick));
    controls.push_back(CommandButton("KeyEntryNNENC", u"Num No E No C", 840, 4320, 975, 495, KeyEntryNNENCClick));
    controls.push_back(CommandButton("KeyEntryD", u"DES", 120, 4920, 495, 495, KeyEntryDClick));
    controls.push_back(CommandButton("KeyEntryDNoCur", u"DES No C", 720, 4920, 615, 495, KeyEntryDNoCurClick));
    controls.push_back(CommandButton("KeyEntryF", u"Func", 1440, 4920, 495, 495, KeyEntryFClick));
    controls.push_back(CommandButton("KeyPad", u"KeyPadConfiguration", 120, 6240, 1695, 255, KeyPadClick));
}

}  // namespace vantrel
