#include "authorization.h"

#include "base/console.h"
#include "server/command_block.h"

namespace vantrel {

namespace {

constexpr char16_t kNoData[] = u"You entered no data or pressed cancel";

// Always the same four lines; only the values differ between the buttons.
Text AuthorizationBlock(const Text& position, const Text& hose, const Text& mop, const Text& limit) {
    CommandBlock block;
    block.AddLine(u"FuelingPosition=", position)
        .AddLine(u"Hose=", hose)
        .AddLine(u"MOP=", mop)
        .AddLine(u"Limit=", limit)
        .Terminate();
    return std::move(block).Text();
}

void Authorize(Console& console, const Text& block) {
    console.CommandData = Variant::OfText(block);
    console.KRM().Put("Authorize", console.CommandData);
    console.SetDataBox(block);
}

// The prompting buttons let the technician read the block before it goes
// out. The box shows CommandData and the assignment takes CommandData as it
// is when the box closes: a stress tick while the box is up replaces it, and
// that sharing is how the console has always behaved.
void ShowThenAuthorize(Console& console, const Text& block) {
    console.CommandData = Variant::OfText(block);
    console.MsgBox(ToText(console.CommandData));
    console.KRM().Put("Authorize", console.CommandData);
    console.SetDataBox(block);
}

void Fillup(Console& console) {
    console.SetFunctionBox(u"<Object>.Authorize = (data)");
    Authorize(console, AuthorizationBlock(console.SelectedPositionText, u"0", u"F", u"999999"));
}

void PresetMOP1(Console& console) {
    console.SetFunctionBox(u"<Object>.Authorize (data)");
    Authorize(console, AuthorizationBlock(console.SelectedPositionText, u"0", u"1", u"000500"));
}

void PresetMOP2(Console& console) {
    console.SetFunctionBox(u"<Object>.Authorize (data)");
    Authorize(console, AuthorizationBlock(console.SelectedPositionText, u"0", u"2", u"000500"));
}

void MultiHoseLock(Console& console) {
    const Text mop = console.InputBox(u"Enter MOP (1, 2, F)", u"MOP Input");
    if (mop.empty()) {
        console.MsgBox(kNoData);
        return;
    }
    // The whole entry, case-sensitive; a lower-case "f" goes out as typed.
    if (mop != u"1" && mop != u"2" && mop != u"f" && mop != u"F") {
        console.MsgBox(u"You entered an Invald MOP Type");
        return;
    }
    console.SetFunctionBox(u"<Object>.Authorize = (data)");
    ShowThenAuthorize(console, AuthorizationBlock(console.SelectedPositionText, u"M00000101", mop, u"000100"));
}

void Preset(Console& console) {
    const Text hose = console.InputBox(u"Enter Hose Number (0 - 8)", u"Hose Input");
    if (hose.empty()) {
        console.MsgBox(kNoData);
        return;
    }
    // Compared as texts by character code, not as numbers: "10" and "7x"
    // pass, "9" and "80" do not; what passes is sent as typed.
    if (hose < u"0" || hose > u"8") {
        console.MsgBox(u"You entered an Invald Hose Number");
        return;
    }
    const Text mop = console.InputBox(u"Enter MOP (1, 2, F)", u"MOP Input");
    if (mop.empty()) {
        console.MsgBox(kNoData);
        return;
    }
    const Text limit = console.InputBox(u"Enter Limit - Must be 6 digits", u"Preset amount Input");
    if (limit.empty()) {
        console.MsgBox(kNoData);
        return;
    }
    Text block;
    if (mop == u"f" || mop == u"F") {
        // A fill-up: the typed limit is dropped.
        console.SetFunctionBox(u"<Object>.Authorize = (data)");
        block = AuthorizationBlock(console.SelectedPositionText, hose, u"F", u"999999");
    } else {
        console.SetFunctionBox(u"<Object>.Authorize (data)");
        block = AuthorizationBlock(console.SelectedPositionText, hose, mop, limit);
    }
    ShowThenAuthorize(console, block);
}

}  // namespace

void AddAuthorizationButtons(std::vector<Control>& controls) {
    controls.push_back(CommandButton("Preset", u"  Auth ", 5160, 4920, 615, 375, Preset));
    controls.push_back(CommandButton("Fillup", u"Fillup", 5760, 4920, 495, 345, Fillup).Graphical(0x00FFC0C0));
    controls.push_back(
        CommandButton("MultiHoseLock", u"MHL", 6240, 4920, 495, 375, MultiHoseLock).Graphical(0x0000FFFF));
    controls.push_back(CommandButton("PresetMOP1", u"MOP1", 5160, 5400, 735, 375, PresetMOP1));
    controls.push_back(CommandButton("PresetMOP2", u"MOP2", 6000, 5400, 735, 375, PresetMOP2));
}

}  // namespace vantrel
