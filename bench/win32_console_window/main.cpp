// The yardstick for the Windows console's start-up and memory: the least a
// program must do to show the console window. The window's own system
// controls (the same classes, styles, places, texts and fonts) and its menu
// bar, made by a loop over the list written from the window's description
// at build time (console_window_list.h), painted in the window's colours,
// with nothing behind them: no state, no server, no handlers. It reports
// "shown" the way the console does once the window has been painted.

#include "console_window_list.h"
#include "win32/win32_control_look.h"
#include "win32/win32_process.h"
#include "win32/win32_text.h"

#include <windows.h>

#include <map>
#include <optional>
#include <vector>

namespace {

using namespace vantrel;
using namespace vantrel::bench;

constexpr wchar_t kClass[] = L"VantrelConsoleYardstick";
constexpr UINT kFirstControlId = 100;

std::optional<Color> ColorOrNone(long long color) {
    return color < 0 ? std::nullopt : std::optional<Color>(static_cast<Color>(color));
}

// The row a control was made from, as the system control needs it.
Control RowOf(const ListedControl& listed) {
    Control row;
    row.kind = listed.kind;
    row.style = listed.style;
    row.multiLine = listed.multiLine;
    row.scrollBars = listed.scrollBars;
    row.centred = listed.centred;
    row.readOnly = listed.readOnly;
    if (listed.clickable) {
        row.click = [](Console&) {};  // only that it has one: a label then notifies
    }
    row.width = listed.width;
    row.height = listed.height;
    row.foreColor = ColorOrNone(listed.foreColor);
    row.caption.assign(listed.text);
    return row;
}

std::vector<Control> gRows;  // by control identifier less kFirstControlId
std::map<Color, HBRUSH> gBrushes;
WNDPROC gButtonProcedure = nullptr;

HBRUSH Brush(Color color) {
    HBRUSH& brush = gBrushes[color];
    if (!brush) {
        brush = CreateSolidBrush(color);
    }
    return brush;
}

HBRUSH Colors(HWND control, HDC dc) {
    const auto index = static_cast<std::size_t>(GetDlgCtrlID(control)) - kFirstControlId;
    if (index >= gRows.size()) {
        return nullptr;
    }
    return win32::SetControlColors(dc, gRows[index], ColorOrNone(kListedControls[index].backColor),
                                   ColorOrNone(kListedBackColor), Brush);
}

// A frame fills its inside with its colour, as the console's do.
LRESULT CALLBACK FrameProcedure(HWND frame, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND) {
        HDC dc = reinterpret_cast<HDC>(wParam);
        if (HBRUSH brush = Colors(frame, dc)) {
            RECT inside{};
            GetClientRect(frame, &inside);
            FillRect(dc, &inside, brush);
            return 1;
        }
    }
    return CallWindowProcW(gButtonProcedure, frame, message, wParam, lParam);
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DRAWITEM) {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        const std::size_t index = item.CtlID - kFirstControlId;
        const std::optional<Color> back = ColorOrNone(kListedControls[index].backColor);
        win32::DrawGraphicalButton(item, back ? Brush(*back) : nullptr, gRows[index].foreColor);
        return TRUE;
    }
    const bool colors = message == WM_CTLCOLORSTATIC || message == WM_CTLCOLOREDIT || message == WM_CTLCOLORBTN;
    HBRUSH brush = colors ? Colors(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam)) : nullptr;
    return brush ? reinterpret_cast<LRESULT>(brush) : DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
    win32::UseStartingConsole();
    WNDCLASSEXW type{};
    type.cbSize = sizeof(type);
    type.style = CS_DBLCLKS;
    type.lpfnWndProc = Procedure;
    type.hInstance = instance;
    type.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    type.hbrBackground = kListedBackColor < 0 ? reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1)
                                              : Brush(static_cast<Color>(kListedBackColor));
    type.lpszClassName = kClass;
    if (!RegisterClassExW(&type)) {
        return 1;
    }
    HWND window = win32::CreateFormWindow(kClass, Text(kListedCaption), kListedWidth, kListedHeight, nullptr, true);
    if (!window) {
        return 1;
    }
    HMENU bar = CreateMenu();
    UINT entry = 40000;
    for (const ListedMenu& menu : kListedMenus) {
        HMENU popup = CreatePopupMenu();
        for (std::size_t i = menu.first; i < menu.first + menu.count; ++i) {
            AppendMenuW(popup, MF_STRING, entry++, win32::Wide(kListedMenuEntries[i]).c_str());
        }
        AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), win32::Wide(menu.caption).c_str());
    }
    SetMenu(window, bar);

    HFONT formFont = win32::CreateFormFont();
    std::vector<HFONT> fonts;
    for (const ListedFont& font : kListedFonts) {
        fonts.push_back(win32::CreateRowFont(Font{std::string(font.family), font.points, font.bold}));
    }
    for (const ListedControl& listed : kListedControls) {
        gRows.push_back(RowOf(listed));
    }
    // Last to first, as the console makes them: each new one lies below.
    for (std::size_t index = gRows.size(); index-- > 0;) {
        const ListedControl& listed = kListedControls[index];
        const Control& row = gRows[index];
        HWND control = win32::CreateControl(window, row, listed.left, listed.top, win32::ShownText(row, row.caption),
                                            listed.font < 0 ? formFont : fonts[static_cast<std::size_t>(listed.font)],
                                            static_cast<UINT>(kFirstControlId + index));
        if (listed.kind == ControlKind::Frame) {
            gButtonProcedure = reinterpret_cast<WNDPROC>(
                SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&FrameProcedure)));
        }
        if (listed.kind == ControlKind::OptionButton && listed.checked) {
            SendMessageW(control, BM_SETCHECK, BST_CHECKED, 0);
        }
    }
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    SetActiveWindow(window);
    return win32::ReportShown();
}
