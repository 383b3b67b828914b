#include "win32_control_look.h"

#include "win32/win32_text.h"

namespace vantrel::win32 {

namespace {

int ScreenDpi() {
    static const int dpi = [] {
        HDC screen = GetDC(nullptr);
        const int found = GetDeviceCaps(screen, LOGPIXELSX);
        ReleaseDC(nullptr, screen);
        return found > 0 ? found : 96;
    }();
    return dpi;
}

}  // namespace

int Pixels(int twips) { return MulDiv(twips, ScreenDpi(), 1440); }

HWND CreateFormWindow(const wchar_t* type, TextView caption, int clientWidth, int clientHeight, HWND owner, bool menu) {
    const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
    RECT frame{0, 0, Pixels(clientWidth), Pixels(clientHeight)};
    AdjustWindowRectEx(&frame, style, menu, 0);
    return CreateWindowExW(0, type, Wide(caption).c_str(), style, CW_USEDEFAULT, CW_USEDEFAULT,
                           frame.right - frame.left, frame.bottom - frame.top, owner, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

bool Editable(const vantrel::Control& control) {
    return control.kind == ControlKind::TextBox && !control.multiLine && !control.readOnly;
}

std::wstring ShownText(const vantrel::Control& control, TextView text) {
    if (control.kind != ControlKind::Label && control.kind != ControlKind::TextBox) {
        return Wide(control.caption);
    }
    if (Editable(control)) {
        return Wide(text);
    }
    return ShownWide(text,
                     control.kind == ControlKind::Label || control.multiLine ? LineBreaks::AtCrLf : LineBreaks::None);
}

HFONT CreateFormFont() {
    return CreateFontW(-MulDiv(11, ScreenDpi(), 96), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                       OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS,
                       L"MS Sans Serif");
}

int FontHeight(const Font& font) { return -MulDiv(static_cast<int>(font.points * 10 + 0.5), ScreenDpi(), 720); }

HFONT CreateRowFont(const Font& font) {
    return CreateFontW(FontHeight(font), 0, 0, 0, font.bold ? FW_BOLD : FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                       OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS,
                       WideFromUtf8(font.family).c_str());
}

HWND CreateControl(HWND window, const vantrel::Control& control, int left, int top, const std::wstring& text,
                   HFONT font, UINT id) {
    const wchar_t* type = L"BUTTON";
    DWORD style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS;
    DWORD extended = 0;
    switch (control.kind) {
    case ControlKind::CommandButton:
        style |= WS_TABSTOP | BS_NOTIFY |
                 (control.style == ButtonStyle::Graphical ? BS_OWNERDRAW : BS_PUSHBUTTON | BS_MULTILINE);
        break;
    case ControlKind::OptionButton: style |= WS_TABSTOP | BS_NOTIFY | BS_RADIOBUTTON; break;
    case ControlKind::Label:
        type = L"STATIC";
        style |= SS_LEFT | SS_NOPREFIX | (control.click ? SS_NOTIFY : 0);
        break;
    case ControlKind::TextBox:
        type = L"EDIT";
        extended = WS_EX_CLIENTEDGE;
        style |= WS_TABSTOP | (control.readOnly ? ES_READONLY : 0) | (control.centred ? ES_CENTER : 0);
        if (control.multiLine) {
            const bool vertical = control.scrollBars == ScrollBars::Vertical || control.scrollBars == ScrollBars::Both;
            const bool horizontal =
                control.scrollBars == ScrollBars::Horizontal || control.scrollBars == ScrollBars::Both;
            style |= ES_MULTILINE | ES_AUTOVSCROLL | (vertical ? WS_VSCROLL : 0) |
                     (horizontal ? WS_HSCROLL | ES_AUTOHSCROLL : 0);
        } else {
            style |= ES_AUTOHSCROLL;
        }
        break;
    case ControlKind::Frame: style |= BS_GROUPBOX; break;
    case ControlKind::Timer: return nullptr;
    }
    HWND handle = CreateWindowExW(extended, type, text.c_str(), style, Pixels(left), Pixels(top), Pixels(control.width),
                                  Pixels(control.height), window, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)),
                                  GetModuleHandleW(nullptr), nullptr);
    SendMessageW(handle, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    if (control.kind == ControlKind::TextBox) {
        // What is typed is what is sent: no limit of the system's own.
        SendMessageW(handle, EM_SETLIMITTEXT, 0, 0);
    }
    return handle;
}

HBRUSH SetControlColors(HDC dc, const vantrel::Control& control, std::optional<Color> own, std::optional<Color> form,
                        const std::function<HBRUSH(Color)>& brush) {
    const bool textBox = control.kind == ControlKind::TextBox;
    std::optional<Color> back = own;
    if (!back && !textBox) {
        back = form;  // labels and options lie on the form
    }
    if (control.foreColor) {
        SetTextColor(dc, *control.foreColor);
    }
    if (back) {
        SetBkColor(dc, *back);
        return brush(*back);
    }
    if (textBox) {
        // A read-only box keeps the white of a text box.
        SetBkColor(dc, GetSysColor(COLOR_WINDOW));
        return GetSysColorBrush(COLOR_WINDOW);
    }
    return nullptr;
}

void DrawGraphicalButton(const DRAWITEMSTRUCT& item, HBRUSH back, std::optional<Color> fore) {
    HDC dc = item.hDC;
    RECT area = item.rcItem;
    FillRect(dc, &area, back ? back : GetSysColorBrush(COLOR_BTNFACE));
    DrawEdge(dc, &area, (item.itemState & ODS_SELECTED) ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT);
    const int length = GetWindowTextLengthW(item.hwndItem);
    std::wstring caption(static_cast<std::size_t>(length) + 1, L'\0');
    caption.resize(static_cast<std::size_t>(GetWindowTextW(item.hwndItem, caption.data(), length + 1)));
    RECT text = area;
    InflateRect(&text, -3, -2);
    RECT measured = text;
    DrawTextW(dc, caption.c_str(), -1, &measured, DT_CENTER | DT_WORDBREAK | DT_CALCRECT);
    const int spare = (text.bottom - text.top) - (measured.bottom - measured.top);
    if (spare > 0) {
        text.top += spare / 2;
    }
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, fore ? *fore : GetSysColor(COLOR_BTNTEXT));
    DrawTextW(dc, caption.c_str(), -1, &text, DT_CENTER | DT_WORDBREAK);
    if (item.itemState & ODS_FOCUS) {
        RECT focus = area;
        InflateRect(&focus, -3, -3);
        DrawFocusRect(dc, &focus);
    }
}

}  // namespace vantrel::win32
