#include "win32_console.h"

#include "base/reconnect.h"
#include "console/setup_dialogs.h"

#include <string>

namespace vantrel::win32 {

namespace {

// The remembered choice of the Tools menu, where the Qt program keeps it
// too (HKEY_CURRENT_USER\Software\vantrel-test\VantrelTest).
constexpr wchar_t kSettingsKey[] = L"Software\\vantrel-test\\VantrelTest";
constexpr wchar_t kKeepGoingValue[] = L"keepGoingAfterRunTimeErrors";

bool RememberedKeepGoing() {
    wchar_t value[16] = {};
    DWORD size = sizeof(value);
    return RegGetValueW(HKEY_CURRENT_USER, kSettingsKey, kKeepGoingValue, RRF_RT_REG_SZ, nullptr, value, &size) ==
               ERROR_SUCCESS &&
           std::wstring(value) == L"true";
}

void RememberKeepGoing(bool on) {
    const std::wstring value = on ? L"true" : L"false";
    RegSetKeyValueW(HKEY_CURRENT_USER, kSettingsKey, kKeepGoingValue, REG_SZ, value.c_str(),
                    static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

// Every window shows the busy cursor while the server works: its creation
// and each put or call. A slow server otherwise looks like a console that
// hangs.
class BusyCursor {
public:
    BusyCursor()
        : before_(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
    ~BusyCursor() { SetCursor(before_); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;

private:
    HCURSOR before_;
};

}  // namespace

ConsoleApp::ConsoleApp(std::vector<FormDescription> forms, const ServerRegistry& servers, CallListener& events,
                       vantrel::Prompter& prompter, ProcessErrorReport& report, bool interactive)
    : servers_(servers.Decorated(GuardedWhileCalling<BusyCursor>))
    , prompter_(prompter, events)
    , report_(report)
    , console_(Console::Ports{servers_, events, prompter_, windows_}, std::move(forms))
    , interactive_(interactive) {
    const MenuBar menus = Menus();
    window_ = std::make_unique<FormWindow>(
        console_.Description(kConsoleForm), console_.Window(), [this](const Handler& handler) { Dispatch(handler); },
        nullptr, &menus);
    window_->onClose = [] { PostQuitMessage(0); };
    windows_.Attach(console_, window_->handle(), [this](const Handler& handler) { Dispatch(handler); });
}

MenuBar ConsoleApp::Menus() {
    MenuBar bar;
    // The set-up dialogs have no button on the console; the menu reaches
    // them without moving a control.
    MenuBar::Menu setup{u"&Set-up", {}};
    for (const MenuEntry& entry : SetupMenu()) {
        setup.items.push_back({entry.name, entry.caption, [this, handler = entry.action] { Dispatch(handler); }});
    }
    // A normal run takes the technician's remembered choice, a script only
    // what its command line says.
    const bool remembered = report_.keepGoing() || (interactive_ && RememberedKeepGoing());
    report_.SetKeepGoing(remembered);
    MenuBar::Menu tools{u"&Tools", {}};
    tools.items.push_back({"KeepGoingEntry", u"&Keep going after run-time errors",
                           [this] {
                               report_.SetKeepGoing(!report_.keepGoing());
                               if (interactive_) {
                                   RememberKeepGoing(report_.keepGoing());
                               }
                           },
                           true, remembered});
    tools.items.push_back({"ReconnectEntry", kReconnectEntry, [this] {
                               if (onReconnect) {
                                   onReconnect();
                               }
                           }});
    bar.menus.push_back(std::move(tools));
    bar.menus.push_back(std::move(setup));
    return bar;
}

void ConsoleApp::Load() { console_.Load(); }

void ConsoleApp::Show() {
    ShowWindow(window_->handle(), SW_SHOW);
    UpdateWindow(window_->handle());
    SetActiveWindow(window_->handle());
    window_->SetTimersRunning(interactive_);
}

FormWindow* ConsoleApp::Window(std::string_view form) {
    return form == kConsoleForm ? window_.get() : windows_.Window(form);
}

FormWindow& ConsoleApp::Active() {
    FormWindow* shown = windows_.Shown();
    return shown ? *shown : *window_;
}

void ConsoleApp::Dispatch(const Handler& handler) { vantrel::Dispatch(console_, handler, report_); }

}  // namespace vantrel::win32
