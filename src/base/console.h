#pragma once

#include "base/form.h"
#include "base/form_state.h"
#include "base/ports.h"
#include "server/server_calls.h"
#include "server/variant.h"

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

// The title of message boxes that have none of their own.
inline constexpr char16_t kApplicationTitle[] = u"VantrelTest";

inline constexpr char kConsoleForm[] = "VantrelTest";

// The console's own boxes, which every echo reaches. Names of controls that
// handlers touch are constants shared with the rows that place them, so a
// misspelt name does not compile.
inline constexpr char kFunctionBox[] = "TextBox";
inline constexpr char kDataBox[] = "InBox";
inline constexpr char kPumpNumberBox[] = "TextBoxPumpNumber";

// Everything the handlers share: the server, the shared argument value, the
// selection, the process-wide values of the other windows, the state of every
// window, and the ports to the boxes and windows. One instance per run.
class Console {
public:
    struct Ports {
        const ServerRegistry& servers;
        CallListener& events;  // creation and calls are reported here
        Prompter& prompter;
        WindowHost& windows;
    };

    Console(Ports ports, std::vector<FormDescription> forms);
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    // The console window's load, before it is first shown: the start-up
    // sequence in its order. Throws when the server cannot be created.
    void Load();

    // The server object; set once by Load and never released.
    AutomationObject& KRM();
    bool HasServer() const { return server_ != nullptr; }

    // Public members of the console and process-wide values, named as the
    // technician and the server's developers know them.
    Variant CommandData;
    Variant SelectedPosition = Variant::OfInt16(1);
    Text SelectedPositionText = u"01";
    std::int32_t TimeOut = 0;
    bool DoEncrypt = false;
    Text TestString;
    bool TestFileFlag = false;
    std::int16_t TimerCount = 0;
    std::int16_t StressActive = 0;

    Text CodeNumber;                           // other-devices window
    std::int16_t PriceSET = 0;                 // other-devices window
    Text DialogSelection;                      // set-up dialogs
    Text PortLine;                             // serial-port dialog
    AutomationObject* DialogServer = nullptr;  // serial-port dialog's server

    // The state of a window by its form name; the console's own is Window().
    FormState& Form(std::string_view form);
    FormState& Window() { return window_ ? *window_ : Form(kConsoleForm); }
    const FormDescription& Description(std::string_view form) const;
    const std::vector<FormDescription>& Descriptions() const { return forms_; }

    // The echo boxes of the console.
    void SetFunctionBox(TextView text);
    void SetDataBox(TextView text);
    // A result that is not kept elsewhere is moved in, not copied.
    void SetDataBox(Text&& text);
    template <std::size_t N>
    void SetDataBox(const char16_t (&text)[N]) {
        SetDataBox(TextView(text, N - 1));
    }
    const Text& FunctionBox();
    const Text& DataBox();

    // Modal boxes; without a title the application's title shows.
    void MsgBox(const Text& text);
    void MsgBox(const Text& text, const Text& title);
    Answer AskYesNo(const Text& text, const Text& title);
    Text InputBox(const Text& prompt, const Text& title);

    // Secondary windows: the first showing loads the window (its load handler
    // runs once per run), later showings show the same instance.
    void ShowModal(std::string_view form);
    void Hide(std::string_view form);
    bool IsLoaded(std::string_view form) const;

private:
    Ports ports_;
    std::vector<FormDescription> forms_;
    std::map<std::string, FormState, std::less<>> states_;
    FormState* window_ = nullptr;  // the console's own, reached by every echo
    std::set<std::string, std::less<>> loaded_;
    std::unique_ptr<AutomationObject> server_;
};

}  // namespace vantrel
