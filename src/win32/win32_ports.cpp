#include "win32_ports.h"

#include "base/console.h"
#include "win32/win32_text.h"

#include <algorithm>
#include <vector>

namespace vantrel::win32 {

namespace {

HWND g_console = nullptr;
std::vector<HWND> g_shown;  // the secondary windows shown, innermost last

// An in-memory dialog template, built a WORD at a time.
class DialogTemplate {
public:
    DialogTemplate(DWORD style, short width, short height, WORD items) {
        Long(style);
        Long(0);
        words_.push_back(items);
        Short(0);
        Short(0);
        Short(width);
        Short(height);
        words_.push_back(0);  // no menu
        words_.push_back(0);  // the standard class
        words_.push_back(0);  // the title is set when the box opens
        words_.push_back(8);  // DS_SETFONT: points, face
        String(L"MS Shell Dlg");
    }
    void Item(DWORD style, short x, short y, short width, short height, WORD id, WORD type, const wchar_t* text = L"") {
        if (words_.size() % 2 != 0) {
            words_.push_back(0);  // each item starts on a DWORD
        }
        Long(style | WS_CHILD | WS_VISIBLE);
        Long(0);
        Short(x);
        Short(y);
        Short(width);
        Short(height);
        words_.push_back(id);
        words_.push_back(0xFFFF);
        words_.push_back(type);
        String(text);
        words_.push_back(0);  // no creation data
    }
    const DLGTEMPLATE* get() const { return reinterpret_cast<const DLGTEMPLATE*>(words_.data()); }

private:
    void Long(DWORD value) {
        words_.push_back(LOWORD(value));
        words_.push_back(HIWORD(value));
    }
    void Short(short value) { words_.push_back(static_cast<WORD>(value)); }
    void String(const wchar_t* text) {
        while (*text) {
            words_.push_back(static_cast<WORD>(*text++));
        }
        words_.push_back(0);
    }
    std::vector<WORD> words_;
};

constexpr WORD kButton = 0x0080;
constexpr WORD kEdit = 0x0081;
constexpr WORD kStatic = 0x0082;
constexpr WORD kPromptId = 100;
constexpr WORD kEntryId = 101;

struct InputRequest {
    std::wstring prompt;
    std::wstring title;
    std::wstring entry;
};

INT_PTR CALLBACK InputProcedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG: {
        auto* request = reinterpret_cast<InputRequest*>(lParam);
        SetWindowLongPtrW(box, DWLP_USER, lParam);
        SetWindowTextW(box, request->title.c_str());
        SetDlgItemTextW(box, kPromptId, request->prompt.c_str());
        SendDlgItemMessageW(box, kEntryId, EM_SETLIMITTEXT, 0, 0);
        SetFocus(GetDlgItem(box, kEntryId));
        return FALSE;
    }
    case WM_COMMAND:
        if (LOWORD(wParam) == IDOK) {
            auto* request = reinterpret_cast<InputRequest*>(GetWindowLongPtrW(box, DWLP_USER));
            HWND entry = GetDlgItem(box, kEntryId);
            const int length = GetWindowTextLengthW(entry);
            request->entry.assign(static_cast<std::size_t>(length) + 1, L'\0');
            request->entry.resize(static_cast<std::size_t>(GetWindowTextW(entry, request->entry.data(), length + 1)));
            EndDialog(box, IDOK);
            return TRUE;
        }
        if (LOWORD(wParam) == IDCANCEL) {
            EndDialog(box, IDCANCEL);
            return TRUE;
        }
        break;
    default: break;
    }
    return FALSE;
}

}  // namespace

HWND BoxOwner() { return g_shown.empty() ? g_console : g_shown.back(); }

void Prompter::Message(const Text& text, const Text& title) {
    MessageBoxW(BoxOwner(), ShownWide(text, LineBreaks::AtCrLf).c_str(), Wide(title).c_str(), MB_OK);
}

Answer Prompter::Ask(const Text& text, const Text& title) {
    return MessageBoxW(BoxOwner(), Wide(text).c_str(), Wide(title).c_str(), MB_YESNO | MB_ICONQUESTION) == IDYES
               ? Answer::Yes
               : Answer::No;
}

Text Prompter::Input(const Text& prompt, const Text& title) {
    // Sized in dialog units; the title has room beside the close button.
    DialogTemplate layout(DS_MODALFRAME | DS_SETFONT | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU, 240, 84, 4);
    layout.Item(SS_LEFT | SS_NOPREFIX, 7, 7, 226, 30, kPromptId, kStatic);
    layout.Item(ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, 7, 42, 226, 13, kEntryId, kEdit);
    layout.Item(BS_DEFPUSHBUTTON | WS_TABSTOP, 126, 63, 50, 14, IDOK, kButton, L"OK");
    layout.Item(BS_PUSHBUTTON | WS_TABSTOP, 183, 63, 50, 14, IDCANCEL, kButton, L"Cancel");
    InputRequest request{Wide(prompt), Wide(title), {}};
    const INT_PTR answer = DialogBoxIndirectParamW(GetModuleHandleW(nullptr), layout.get(), BoxOwner(), InputProcedure,
                                                   reinterpret_cast<LPARAM>(&request));
    return answer == IDOK ? FromWide(request.entry) : Text();
}

void ErrorReport::ShowBox(const std::string& message, const std::string& details) {
    // The system's box has no details button: they follow the message.
    const std::string shown = details.empty() ? message : message + "\n\n" + details;
    MessageBoxW(BoxOwner(), WideFromUtf8(shown).c_str(), Wide(kApplicationTitle).c_str(), MB_OK | MB_ICONERROR);
}

std::optional<int> RunMessageLoop(const std::function<bool()>& done) {
    MSG message{};
    while (!done()) {
        const BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got == 0) {
            PostQuitMessage(static_cast<int>(message.wParam));  // for the outer loop
            return static_cast<int>(message.wParam);
        }
        if (got == -1) {
            return 1;
        }
        HWND root = message.hwnd ? GetAncestor(message.hwnd, GA_ROOT) : nullptr;
        if (root && IsDialogMessageW(root, &message)) {
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return std::nullopt;
}

void WindowHost::Attach(Console& console, HWND owner, EventDispatcher dispatch) {
    console_ = &console;
    owner_ = owner;
    g_console = owner;
    dispatch_ = std::move(dispatch);
}

void WindowHost::ShowModal(std::string_view form) {
    if (!console_) {
        return;
    }
    Entry& entry = windows_[std::string(form)];
    if (!entry.window) {
        entry.window =
            std::make_unique<FormWindow>(console_->Description(form), console_->Form(form), dispatch_, owner_);
        entry.window->onClose = [this, name = std::string(form)] { Hide(name); };
        // First shown over the middle of the console; later where it was left.
        RECT console{};
        RECT own{};
        GetWindowRect(owner_, &console);
        GetWindowRect(entry.window->handle(), &own);
        const int width = own.right - own.left;
        const int height = own.bottom - own.top;
        SetWindowPos(entry.window->handle(), nullptr,
                     std::max(0L, console.left + (console.right - console.left - width) / 2),
                     std::max(0L, console.top + (console.bottom - console.top - height) / 2), 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    // Modal to the console: the console and the windows under this one take
    // no input while it is up.
    std::vector<HWND> disabled;
    for (HWND under : [&] {
             std::vector<HWND> all{owner_};
             all.insert(all.end(), g_shown.begin(), g_shown.end());
             return all;
         }()) {
        if (IsWindowEnabled(under)) {
            EnableWindow(under, FALSE);
            disabled.push_back(under);
        }
    }
    HWND handle = entry.window->handle();
    g_shown.push_back(handle);
    stack_.push_back(std::string(form));
    entry.up = true;
    ShowWindow(handle, SW_SHOW);
    SetActiveWindow(handle);
    RunMessageLoop([&entry] { return !entry.up; });
    entry.up = false;
    // The windows under it take input again before it goes, so that the
    // activation falls back to them.
    for (HWND under : disabled) {
        EnableWindow(under, TRUE);
    }
    g_shown.pop_back();
    stack_.pop_back();
    ShowWindow(handle, SW_HIDE);
    SetActiveWindow(BoxOwner());
}

void WindowHost::Hide(std::string_view form) {
    const auto found = windows_.find(form);
    if (found != windows_.end() && found->second.up) {
        found->second.up = false;
        PostMessageW(found->second.window->handle(), WM_NULL, 0, 0);  // wakes the window's loop
    }
}

FormWindow* WindowHost::Window(std::string_view form) const {
    const auto found = windows_.find(form);
    return found == windows_.end() ? nullptr : found->second.window.get();
}

FormWindow* WindowHost::Shown() const { return stack_.empty() ? nullptr : Window(stack_.back()); }

}  // namespace vantrel::win32
