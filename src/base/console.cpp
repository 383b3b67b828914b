#include "console.h"

#include <exception>
#include <new>
#include <stdexcept>

namespace vantrel {

Console::Console(Ports ports, std::vector<FormDescription> forms)
    : ports_(ports)
    , forms_(std::move(forms)) {
    for (const FormDescription& form : forms_) {
        states_.emplace(form.name, FormState(form));
    }
    if (const auto console = states_.find(kConsoleForm); console != states_.end()) {
        window_ = &console->second;
    }
}

void Console::Load() {
    SelectedPosition = Variant::OfInt16(1);
    SelectedPositionText = u"01";
    server_ = CreateTraced(ports_.servers, kServerProgId, ports_.events);
    Window().SetText(kPumpNumberBox, u"Fueling Position -> 1");
    DoEncrypt = false;
    // Nothing reads this value; it is kept because the server's developers
    // know the member. Two characters, then eight groups of five.
    static constexpr unsigned char kTestCodes[42] = {
        0x56, 0x54,                    //
        0x10, 0x07, 0x1B, 0x41, 0x42,  //
        0x43, 0x44, 0x45, 0x46, 0x47,  //
        0x30, 0x31, 0x32, 0x33, 0x34,  //
        0x35, 0x36, 0x37, 0x38, 0x39,  //
        0x80, 0x9F, 0xA0, 0xC4, 0xFF,  //
        0x0D, 0x0A, 0x00, 0x1A, 0x03,  //
        0x61, 0x62, 0x63, 0x64, 0x65,  //
        0x7E, 0x7F, 0x20, 0x21, 0x40,  //
    };
    TestString.clear();
    for (const unsigned char code : kTestCodes) {
        TestString.push_back(code);
    }
    TestFileFlag = false;
    TimerCount = 0;
    StressActive = 0;
}

AutomationObject& Console::KRM() {
    if (!server_) {
        throw errors::ObjectNotSet();
    }
    return *server_;
}

FormState& Console::Form(std::string_view form) {
    const auto found = states_.find(form);
    if (found == states_.end()) {
        throw std::out_of_range("no form " + std::string(form));
    }
    return found->second;
}

const FormDescription& Console::Description(std::string_view form) const {
    for (const FormDescription& description : forms_) {
        if (description.name == form) {
            return description;
        }
    }
    throw std::out_of_range("no form " + std::string(form));
}

void Console::SetFunctionBox(TextView text) { Window().SetText(kFunctionBox, text); }
void Console::SetDataBox(TextView text) { Window().SetText(kDataBox, text); }
void Console::SetDataBox(Text&& text) { Window().SetText(kDataBox, std::move(text)); }
const Text& Console::FunctionBox() { return Window().TextOf(kFunctionBox); }
const Text& Console::DataBox() { return Window().TextOf(kDataBox); }

void Console::MsgBox(const Text& text) { ports_.prompter.Message(text, kApplicationTitle); }
void Console::MsgBox(const Text& text, const Text& title) { ports_.prompter.Message(text, title); }
Answer Console::AskYesNo(const Text& text, const Text& title) { return ports_.prompter.Ask(text, title); }
Text Console::InputBox(const Text& prompt, const Text& title) { return ports_.prompter.Input(prompt, title); }

void Console::ShowModal(std::string_view form) {
    const FormDescription& description = Description(form);
    if (loaded_.insert(std::string(form)).second && description.load) {
        description.load(*this);
    }
    ports_.windows.ShowModal(form);
}

void Console::Hide(std::string_view form) { ports_.windows.Hide(form); }

bool Console::IsLoaded(std::string_view form) const { return loaded_.count(form) != 0; }

bool Dispatch(Console& console, const Handler& handler, ErrorReport& report) {
    if (!handler) {
        return true;
    }
    try {
        handler(console);
        return true;
    } catch (const RuntimeError& error) {
        report.Report(error);
    } catch (const std::bad_alloc&) {
        report.Report(RuntimeError(7, "Out of memory"));
    } catch (const std::exception& error) {
        // A fault of the console itself still ends through the report, never
        // through a signal.
        report.Report(RuntimeError(51, std::string("Internal error: ") + error.what()));
    }
    return false;
}

}  // namespace vantrel
