#include "win32_form_window.h"

#include "win32/win32_control_look.h"
#include "win32/win32_text.h"

#include <algorithm>

namespace vantrel::win32 {

namespace {

constexpr wchar_t kFormClass[] = L"VantrelForm";
constexpr UINT kFirstControlId = 100;
constexpr UINT kFirstMenuId = 40000;
// The system's button procedure, which a frame passes everything else to.
WNDPROC gButtonProcedure = nullptr;

void RegisterFormClass() {
    static const bool registered = [] {
        WNDCLASSEXW type{};
        type.cbSize = sizeof(type);
        type.style = CS_DBLCLKS;
        type.lpfnWndProc = DefWindowProcW;  // replaced per window below
        type.hInstance = GetModuleHandleW(nullptr);
        // The program's icon (resource 1) on every window's title bar and
        // the task bar; none where the program was linked without it.
        type.hIcon = static_cast<HICON>(LoadImageW(type.hInstance, MAKEINTRESOURCEW(1), IMAGE_ICON,
                                                   GetSystemMetrics(SM_CXICON), GetSystemMetrics(SM_CYICON), 0));
        type.hIconSm = static_cast<HICON>(LoadImageW(type.hInstance, MAKEINTRESOURCEW(1), IMAGE_ICON,
                                                     GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON), 0));
        type.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        type.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        type.lpszClassName = kFormClass;
        return RegisterClassExW(&type) != 0;
    }();
    (void)registered;
}

std::wstring WithoutAccessKeys(TextView caption) {
    std::wstring plain;
    for (const char16_t c : caption) {
        if (c != u'&') {
            plain += static_cast<wchar_t>(c);
        }
    }
    return plain;
}

}  // namespace

int FormWindow::Pixels(int twips) { return win32::Pixels(twips); }

FormWindow::FormWindow(const FormDescription& description, FormState& state, EventDispatcher dispatch, HWND owner,
                       const MenuBar* menu)
    : description_(description)
    , state_(state)
    , dispatch_(std::move(dispatch)) {
    RegisterFormClass();
    window_ = CreateFormWindow(kFormClass, description.caption, description.clientWidth, description.clientHeight,
                               owner, menu != nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&FormWindow::Procedure));
    if (menu) {
        BuildMenu(*menu);
        // The menu bar may wrap: the client area keeps the form's size.
        RECT client{};
        GetClientRect(window_, &client);
        RECT outer{};
        GetWindowRect(window_, &outer);
        const int lost = Pixels(description.clientHeight) - (client.bottom - client.top);
        if (lost > 0) {
            SetWindowPos(window_, nullptr, 0, 0, outer.right - outer.left, outer.bottom - outer.top + lost,
                         SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        }
    }
    formFont_ = CreateFormFont();
    // The system puts each new control below the ones before it, and a
    // later control of the form lies above an earlier one and takes the
    // click there: created last to first, they need no reordering, which
    // under Wine is a server round trip per control.
    for (auto control = description.controls.rbegin(); control != description.controls.rend(); ++control) {
        Create(*control);
    }
    state_.SetListener([this](const std::string& control, FormState::Property property) { Sync(control, property); });
}

FormWindow::~FormWindow() {
    state_.SetListener({});
    if (window_) {
        SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
        DestroyWindow(window_);
    }
    if (menuBar_ && !IsMenu(menuBar_)) {
        menuBar_ = nullptr;
    }
    for (const auto& [color, brush] : brushes_) {
        DeleteObject(brush);
    }
    for (const auto& [key, font] : fonts_) {
        DeleteObject(font);
    }
    if (formFont_) {
        DeleteObject(formFont_);
    }
}

HWND FormWindow::Control(std::string_view name) const {
    const auto found = controls_.find(name);
    return found == controls_.end() ? nullptr : found->second;
}

const vantrel::Control* FormWindow::RowOf(HWND control) const {
    const auto found = rows_.find(control);
    return found == rows_.end() ? nullptr : found->second;
}

HFONT FormWindow::FontFor(const vantrel::Control& control) {
    if (!control.font) {
        return formFont_;
    }
    HFONT& font = fonts_[{control.font->family, FontHeight(*control.font), control.font->bold}];
    if (!font) {
        font = CreateRowFont(*control.font);
    }
    return font;
}

void FormWindow::Create(const vantrel::Control& control) {
    if (control.kind == ControlKind::Timer) {
        const auto id = static_cast<UINT_PTR>(kFirstControlId + timers_.size() + rows_.size());
        timers_.emplace(id, &control);
        return;
    }
    // Frames hold their controls by position only: every control is a child
    // of the window, so that its notifications reach the window.
    int left = control.left;
    int top = control.top;
    for (const vantrel::Control* container = description_.Find(control.container); container;
         container = description_.Find(container->container)) {
        left += container->left;
        top += container->top;
    }
    const auto id = static_cast<UINT>(kFirstControlId + timers_.size() + rows_.size());
    HWND handle = CreateControl(window_, control, left, top, Shown(control), FontFor(control), id);
    controls_.emplace(control.name, handle);
    rows_.emplace(handle, &control);
    if (control.kind == ControlKind::Frame) {
        gButtonProcedure = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(handle, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&FormWindow::FrameProcedure)));
    }
    if (control.kind == ControlKind::OptionButton) {
        SendMessageW(handle, BM_SETCHECK, state_.Checked(control.name) ? BST_CHECKED : BST_UNCHECKED, 0);
    }
}

void FormWindow::BuildMenu(const MenuBar& menu) {
    menuBar_ = CreateMenu();
    UINT id = kFirstMenuId;
    for (const MenuBar::Menu& entries : menu.menus) {
        HMENU popup = CreatePopupMenu();
        for (const MenuItem& item : entries.items) {
            AppendMenuW(popup, MF_STRING | (item.checkable && item.checked ? MF_CHECKED : 0), id,
                        Wide(item.caption).c_str());
            menuItems_.emplace(id++, item);
        }
        AppendMenuW(menuBar_, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), Wide(entries.caption).c_str());
    }
    SetMenu(window_, menuBar_);
}

bool FormWindow::RunMenu(std::string_view menu, TextView entry) {
    (void)menu;  // entries are unique across the menus
    const std::wstring wanted = WithoutAccessKeys(entry);
    for (auto& [id, item] : menuItems_) {
        if (WithoutAccessKeys(item.caption) == wanted) {
            SendMessageW(window_, WM_COMMAND, MAKEWPARAM(id, 0), 0);
            return true;
        }
    }
    return false;
}

std::wstring FormWindow::Shown(const vantrel::Control& control) const {
    return ShownText(control, state_.TextOf(control.name));
}

void FormWindow::SyncText(const vantrel::Control& control, HWND handle) {
    if (control.kind == ControlKind::OptionButton || control.kind == ControlKind::CommandButton ||
        control.kind == ControlKind::Frame) {
        return;  // captions do not change at run time
    }
    const std::wstring shown = Shown(control);
    if (Editable(control)) {
        // An editable box shows what was typed; writing back the same text
        // would move the cursor to the end.
        const int length = GetWindowTextLengthW(handle);
        std::wstring current(static_cast<std::size_t>(length) + 1, L'\0');
        current.resize(static_cast<std::size_t>(GetWindowTextW(handle, current.data(), length + 1)));
        if (current == shown) {
            return;
        }
    }
    syncing_ = true;
    SetWindowTextW(handle, shown.c_str());
    syncing_ = false;
}

void FormWindow::Sync(const std::string& control, FormState::Property property) {
    HWND handle = Control(control);
    const vantrel::Control* row = description_.Find(control);
    if (!handle || !row) {
        return;
    }
    switch (property) {
    case FormState::Property::Text: SyncText(*row, handle); break;
    case FormState::Property::BackColor: InvalidateRect(handle, nullptr, TRUE); break;
    case FormState::Property::Checked:
        syncing_ = true;
        SendMessageW(handle, BM_SETCHECK, state_.Checked(control) ? BST_CHECKED : BST_UNCHECKED, 0);
        syncing_ = false;
        break;
    }
}

void FormWindow::Type(std::string_view control, const Text& text) {
    HWND handle = Control(control);
    if (!handle) {
        return;
    }
    SetFocus(handle);
    if (state_.TextOf(control) == text) {
        return;
    }
    // The box would end the text at a NUL: the change takes the exact one.
    typing_ = &text;
    SetWindowTextW(handle, Wide(text).c_str());
    typing_ = nullptr;
}

bool FormWindow::FireTimer(std::string_view name) {
    for (const auto& [id, row] : timers_) {
        if (row->name == name) {
            dispatch_(row->tick);
            return true;
        }
    }
    return false;
}

void FormWindow::SetTimersRunning(bool running) {
    for (const auto& [id, row] : timers_) {
        if (running) {
            SetTimer(window_, id, static_cast<UINT>(std::max(row->intervalMs, 1)), nullptr);
        } else {
            KillTimer(window_, id);
        }
    }
}

void FormWindow::Focus(const vantrel::Control& control, bool gained) {
    // Focus that comes and goes with the window's activation (a message box
    // opening and closing) is no focus change of the console's.
    if (activating_ || GetActiveWindow() != window_) {
        return;
    }
    const Handler& handler = gained ? control.gotFocus : control.lostFocus;
    if (handler) {
        dispatch_(handler);
    }
}

void FormWindow::Command(HWND handle, UINT code) {
    const vantrel::Control* row = RowOf(handle);
    if (!row) {
        return;
    }
    const vantrel::Control& control = *row;
    switch (code) {
    case BN_CLICKED:  // also STN_CLICKED
        if (control.kind == ControlKind::OptionButton) {
            state_.SetChecked(control.name, true);
        }
        if (control.click) {
            dispatch_(control.click);
        }
        break;
    case BN_DOUBLECLICKED:  // also STN_DBLCLK
        // The second press of a double click: a button without a handler of
        // its own takes it as another click.
        if (control.dblClick) {
            dispatch_(control.dblClick);
        } else if (control.click && control.kind == ControlKind::CommandButton) {
            dispatch_(control.click);
        }
        break;
    case BN_SETFOCUS:
    case BN_KILLFOCUS:
        if (control.kind == ControlKind::CommandButton || control.kind == ControlKind::OptionButton) {
            Focus(control, code == BN_SETFOCUS);
        }
        break;
    default: break;
    }
    if (control.kind == ControlKind::TextBox) {
        switch (code) {
        case EN_CHANGE:
            if (!syncing_ && !control.readOnly) {
                // A typed change updates the exact text, then the change
                // handler runs.
                if (typing_) {
                    state_.SetText(control.name, *typing_);
                } else {
                    const int length = GetWindowTextLengthW(handle);
                    std::wstring typed(static_cast<std::size_t>(length) + 1, L'\0');
                    typed.resize(static_cast<std::size_t>(GetWindowTextW(handle, typed.data(), length + 1)));
                    state_.SetText(control.name, FromWide(typed));
                }
                if (control.change) {
                    dispatch_(control.change);
                }
            }
            break;
        case EN_SETFOCUS:
        case EN_KILLFOCUS: Focus(control, code == EN_SETFOCUS); break;
        default: break;
        }
    }
}

HBRUSH FormWindow::Brush(Color color) {
    auto found = brushes_.find(color);
    if (found == brushes_.end()) {
        found = brushes_.emplace(color, CreateSolidBrush(color)).first;
    }
    return found->second;
}

HBRUSH FormWindow::Colors(HWND handle, HDC dc) {
    const vantrel::Control* row = RowOf(handle);
    if (!row) {
        return nullptr;
    }
    return SetControlColors(dc, *row, state_.BackColorOf(row->name), description_.backColor,
                            [this](Color color) { return Brush(color); });
}

bool FormWindow::DrawButton(const DRAWITEMSTRUCT& item) {
    const vantrel::Control* row = RowOf(item.hwndItem);
    if (!row) {
        return false;
    }
    const std::optional<Color> back = state_.BackColorOf(row->name);
    DrawGraphicalButton(item, back ? Brush(*back) : nullptr, row->foreColor);
    return true;
}

LRESULT CALLBACK FormWindow::FrameProcedure(HWND frame, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND) {
        auto* self = reinterpret_cast<FormWindow*>(GetWindowLongPtrW(GetParent(frame), GWLP_USERDATA));
        HDC dc = reinterpret_cast<HDC>(wParam);
        if (HBRUSH brush = self ? self->Colors(frame, dc) : nullptr) {
            RECT inside{};
            GetClientRect(frame, &inside);
            FillRect(dc, &inside, brush);
            return 1;
        }
    }
    return CallWindowProcW(gButtonProcedure, frame, message, wParam, lParam);
}

LRESULT CALLBACK FormWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<FormWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self ? self->Handle(message, wParam, lParam) : DefWindowProcW(window, message, wParam, lParam);
}

LRESULT FormWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND: {
        const UINT id = LOWORD(wParam);
        if (lParam == 0) {
            const auto item = menuItems_.find(id);
            if (item != menuItems_.end()) {
                if (item->second.checkable) {
                    item->second.checked = !item->second.checked;
                    CheckMenuItem(menuBar_, id, MF_BYCOMMAND | (item->second.checked ? MF_CHECKED : MF_UNCHECKED));
                }
                item->second.action();
                return 0;
            }
            if (id == IDOK) {
                // Enter: the focused command button is pressed.
                HWND focus = GetFocus();
                const vantrel::Control* row = RowOf(focus);
                if (row && row->kind == ControlKind::CommandButton) {
                    SendMessageW(focus, BM_CLICK, 0, 0);
                }
                return 0;
            }
            return 0;
        }
        Command(reinterpret_cast<HWND>(lParam), HIWORD(wParam));
        return 0;
    }
    case WM_TIMER: {
        const auto found = timers_.find(static_cast<UINT_PTR>(wParam));
        if (found != timers_.end()) {
            dispatch_(found->second->tick);
        }
        return 0;
    }
    case WM_DRAWITEM:
        if (DrawButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam))) {
            return TRUE;
        }
        break;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORBTN:
        if (HBRUSH brush = Colors(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam))) {
            return reinterpret_cast<LRESULT>(brush);
        }
        break;
    case WM_ERASEBKGND:
        if (description_.backColor) {
            RECT client{};
            GetClientRect(window_, &client);
            FillRect(reinterpret_cast<HDC>(wParam), &client, Brush(*description_.backColor));
            return 1;
        }
        break;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE) {
            HWND focus = GetFocus();
            if (focus && IsChild(window_, focus)) {
                lastFocus_ = focus;
            }
        } else {
            // The focus comes back where it was; the window itself has it at
            // first, since a position button with the focus would call the
            // server.
            activating_ = true;
            SetFocus(lastFocus_ && IsWindow(lastFocus_) ? lastFocus_ : window_);
            activating_ = false;
        }
        return 0;
    case WM_CLOSE:
        if (onClose) {
            onClose();
        }
        return 0;
    default: break;
    }
    return DefWindowProcW(window_, message, wParam, lParam);
}

}  // namespace vantrel::win32
