#include "system_commands.h"

#include "base/console.h"
#include "server/command_block.h"

namespace vantrel {

namespace {

constexpr char kStressButton[] = "STRESS_BUTTON";

// One key pad configuration of the stress traffic: the console's own key
// layout, in the key pad's mixed form (LF alone after "KeyData=").
void SendStressKeyPad(Console& console, const Text& readerPosition) {
    CommandBlock block;
    block.AddLine(u"ReaderPosition=", readerPosition).AddLineLf(u"KeyData=123@R456A@789NYL0EHCe").Terminate();
    console.CommandData = Variant::OfText(block.Text());
    console.KRM().Put("KeyPadConfiguration", console.CommandData);
}

void SystemVersions(Console& console) {
    console.SetFunctionBox(u"(data)=<Object>.SystemVersions");
    console.SetDataBox(ToText(console.KRM().Call("SystemVersions")));
}

void SelfTestStart(Console& console) {
    console.SetFunctionBox(u"<Object>.SelfDiagnosticsReportStart");
    // The result is converted and dropped: a result that is no number still
    // fails, as the conversion does.
    static_cast<void>(ToInt16(console.KRM().Call("SelfDiagnosticsReportStart")));
}

void SelfTestStatus(Console& console) {
    console.SetFunctionBox(u"<Object>.SelfDiagnosticsReportStatus");
    const std::int16_t status = ToInt16(console.KRM().Call("SelfDiagnosticsReportStatus"));
    // Any status but 0 counts as busy. "Diagnositcs" is the server team's
    // spelling and stays.
    console.SetDataBox(
        TextView(status == 0 ? u"Self Diagnositcs\r\nreport Complete" : u"Self Diagnositcs\r\nreport busy"));
}

void WindowControl(Console& console) {
    console.SetFunctionBox(u"<Object>.WindowControl = (data)");
    const Answer answer = console.AskYesNo(u"Do you want Vantrel visible?", u"WindowControl Select");
    CommandBlock block;
    block.AddLine(answer == Answer::No ? u"Hide" : u"Visible").Terminate();
    console.CommandData = Variant::OfText(block.Text());
    console.KRM().Put("WindowControl", console.CommandData);
}

void HelpFile(Console& console) { static_cast<void>(ToInt16(console.KRM().Call("InvokeHelpFile"))); }

void StressToggle(Console& console) {
    // The button tests "not 0" and the tick "exactly 1"; with the values
    // written here the two agree.
    if (console.StressActive != 0) {
        console.StressActive = 0;
        console.Window().SetBackColor(kStressButton, kStressOffColor);
    } else {
        console.StressActive = 1;
        console.Window().SetBackColor(kStressButton, kStressOnColor);
    }
}

}  // namespace

void StressTick(Console& console) {
    if (console.StressActive != 1) {
        return;
    }
    // Always readers 01 and 17, whatever is selected; neither echo box shows
    // the traffic.
    SendStressKeyPad(console, u"01");
    SendStressKeyPad(console, u"17");
}

void AddSystemControls(std::vector<Control>& controls) {
    controls.push_back(CommandButton("SystemVersions", u"SystemVersions", 240, 1320, 1335, 255, SystemVersions));
    controls.push_back(CommandButton("SelfTestStart", u"Self Test", 6840, 7080, 615, 615, SelfTestStart));
    controls.push_back(CommandButton("SelfTestStatus", u"Self Test Status", 7800, 7080, 615, 615, SelfTestStatus));
    controls.push_back(CommandButton("WindowControl", u"WindowControl", 2160, 1080, 1575, 255, WindowControl));
    controls.push_back(CommandButton("HELP_BUTTON", u"Help File", 2160, 1440, 1575, 255, HelpFile));
    controls.push_back(
        CommandButton(kStressButton, u"STRESS", 480, 2400, 855, 495, StressToggle).Graphical(kStressOffColor));
}

}  // namespace vantrel
