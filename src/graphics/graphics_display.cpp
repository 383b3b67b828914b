// The graphics display window. In the message texts \033 is ESC and \032 is
// SUB; everything else is written as the terminal receives it.

#include "graphics.h"

#include "base/console.h"
#include "graphics/display_message.h"

namespace vantrel {

namespace {

// Messages as views with their length fixed at compile time: a long 16-bit
// literal is otherwise measured character by character on every press.
using namespace std::string_view_literals;

// How a message ends. The endings differ per terminal family on purpose and
// must not be made uniform.
enum class MessageEnd {
    CrLfNul,  // Gilbarco and Wayne screens
    CrLfLf,   // iX CAT formatted and multi-line text: no NUL
    None,     // iX CAT soft keys: the block stops after the text
};

// Every button of the window works the same way; only the message and its
// end differ.
void SendScreen(Console& console, TextView message, MessageEnd end) {
    // "DispData" although the member is DisplayData: the technicians know
    // the text so.
    console.SetFunctionBox(u"<Object>.DispData = (data)");
    CommandBlock block = DisplayMessage(console.SelectedPositionText, message);
    switch (end) {
    case MessageEnd::CrLfNul: block.AddLine(u"").Terminate(); break;
    case MessageEnd::CrLfLf: block.AddLine(u"").AddLineLf(u""); break;
    case MessageEnd::None: break;
    }
    console.CommandData = Variant::OfText(block.Text());
    console.KRM().Put("DisplayData", console.CommandData);
    console.SetDataBox(block.Text());
    console.Hide(kGraphicsDisplayForm);
}

void GilbarcoInfo(Console& console) {
    SendScreen(console, u"\033G\033\032000\033=100100Hello @ 100 / 100"sv, MessageEnd::CrLfNul);
}

void Wayne2Line(Console& console) {
    SendScreen(console, u"\033G2\033\032000\033=001002Hello (001/002)"sv, MessageEnd::CrLfNul);
}

void Wayne3Line(Console& console) {
    SendScreen(console, u"\033G3\033\032000\033=010020Hello (010/020)"sv, MessageEnd::CrLfNul);
}

void Wayne4Line(Console& console) {
    SendScreen(console, u"\033G4\033\032000\033=040030Hello (040/030)"sv, MessageEnd::CrLfNul);
}

void Wayne5Line(Console& console) {
    SendScreen(console, u"\033G5\033\032000\033=065030Hello (065/030)"sv, MessageEnd::CrLfNul);
}

void WayneQCat(Console& console) {
    SendScreen(console,
               u"\033G\033\032000"
               u"\033=001001Hello (First Line)"
               u"\033=001015Hello (Second Line)"
               u"\033=030120Col/Row (30/120)"sv,
               MessageEnd::CrLfNul);
}

// "Aerial" and "Eigth" are what the terminals have been tested with.
void IxCatFormatted(Console& console) {
    SendScreen(console,
               u"\033G\033A12\033F\"Aerial\"14"
               u"\033=001001First Line"
               u"\033=025020Second Line"
               u"\033=050040Third Line"
               u"\033=075060Fourth Line"
               u"\033=100080Fifth Line"
               u"\033=125100Sixth Line"
               u"\033=150120Seventh Line"
               u"\033=175140Eigth Line"
               u"\033=200160Ninth Line"sv,
               MessageEnd::CrLfLf);
}

void IxCatMultiLine(Console& console) {
    SendScreen(console,
               u"\033G\033A12\033F\"Aerial\"14"
               u"The First Line\n"
               u"The Second Line\n"
               u"The Third Line\n"
               u"The Fourth Line\n"
               u"The Fifth Line\n"
               u"The Sixth Line\n"
               u"The Seventh Line\n"
               u"The Eigth Line"sv,
               MessageEnd::CrLfLf);
}

void IxCatFunctionKeys(Console& console) {
    SendScreen(console,
               u"\033G"
               u"\033S1\"Key 1\""
               u"\033S2\"Key 2\""
               u"\033S3\"Key 3\""
               u"\033S4\"Key 4\""
               u"\033S5\"Key 5\""
               u"\033S6\"Key 6\""
               u"\033S7\"Key 7\""
               u"\033S8\"Key 8\""
               u"\033A12Select A Key"sv,
               MessageEnd::None);
}

}  // namespace

FormDescription GraphicsDisplayForm() {
    FormDescription form = MakeForm(kGraphicsDisplayForm, u"Graphics Display", 5520, 3810);
    form.controls = {
        CommandButton("GilbarcoInfo", u"GILB INFO", 120, 360, 1335, 375, GilbarcoInfo),
        CommandButton("Wayne2Line", u"Wayne 2 Line", 1920, 360, 1215, 495, Wayne2Line),
        CommandButton("Wayne3Line", u"Wayne 3 Line", 1920, 960, 1215, 495, Wayne3Line),
        CommandButton("Wayne4Line", u"Wayne 4 Line", 1920, 1560, 1215, 495, Wayne4Line),
        CommandButton("Wayne5Line", u"Wayne 5 Line", 1920, 2160, 1215, 495, Wayne5Line),
        CommandButton("WayneQCat", u"Wayne Q CAT", 1920, 2760, 1215, 495, WayneQCat),
        CommandButton("iXCAT_FUNC", u"iXCATFunc", 3240, 360, 1335, 495, IxCatFunctionKeys),
        CommandButton("iXCAT_MULTI_LINE", u"iXCAT Multi Line", 3240, 960, 1335, 495, IxCatMultiLine),
        CommandButton("iXCAT_FORMAT_LINE", u"iXCAT  Formatted", 3240, 1560, 1335, 495, IxCatFormatted),
        CommandButton("EXIT_BUTTON", u"EXIT", 120, 3360, 855, 375,
                      [](Console& console) { console.Hide(kGraphicsDisplayForm); }),
    };
    return form;
}

}  // namespace vantrel
