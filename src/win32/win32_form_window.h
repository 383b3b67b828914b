#pragma once

#include "base/form.h"
#include "base/form_state.h"

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <string_view>
#include <vector>

namespace vantrel::win32 {

using EventDispatcher = std::function<void(const Handler&)>;

// A menu of the console's menu bar: its entries run as user-interface events.
struct MenuItem {
    std::string name;
    Text caption;  // with "&" before the access key
    std::function<void()> action;
    bool checkable = false;
    bool checked = false;
};
struct MenuBar {
    struct Menu {
        Text caption;
        std::vector<MenuItem> items;
    };
    std::vector<Menu> menus;
};

// One window of the console, rendered from its form description with the
// system's own controls: buttons (owner-drawn where a back colour must
// show), labels, edit boxes, option buttons and frames, at their twips
// converted at the system's DPI, in the forms' fonts. The window shows the
// form state and feeds clicks, typing and focus back as user-interface
// events; the state keeps the exact texts.
class FormWindow {
public:
    FormWindow(const FormDescription& description, FormState& state, EventDispatcher dispatch, HWND owner,
               const MenuBar* menu = nullptr);
    ~FormWindow();
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;

    HWND handle() const { return window_; }
    const FormDescription& description() const { return description_; }
    // The window of a control, or nullptr when the form has none (timers).
    HWND Control(std::string_view name) const;
    const vantrel::Control* RowOf(HWND control) const;

    // Replaces an edit box's text as typing would: the exact text goes to
    // the state and the change handler runs, unless it is the same text.
    void Type(std::string_view control, const Text& text);

    // Runs a timer's handler once, as its interval would.
    bool FireTimer(std::string_view name);
    void SetTimersRunning(bool running);
    // Runs the menu entry with that caption (without "&"); false when none.
    bool RunMenu(std::string_view menu, TextView entry);

    // What closing the window from its frame does (the console ends, a
    // secondary window hides).
    std::function<void()> onClose;

    // Pixels at the system's DPI for a length in twips.
    static int Pixels(int twips);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    // A frame's own: the system's group box paints its border and caption
    // only, and the form does not paint under its children, so the frame
    // fills its inside with its colour.
    static LRESULT CALLBACK FrameProcedure(HWND frame, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void Create(const vantrel::Control& control);
    void Sync(const std::string& control, FormState::Property property);
    // The text a label or text box shows for the model's.
    std::wstring Shown(const vantrel::Control& control) const;
    void SyncText(const vantrel::Control& control, HWND handle);
    void Command(HWND control, UINT code);
    void Focus(const vantrel::Control& control, bool gained);
    bool DrawButton(const DRAWITEMSTRUCT& item);
    HBRUSH Colors(HWND control, HDC dc);
    HBRUSH Brush(Color color);
    HFONT FontFor(const vantrel::Control& control);
    void BuildMenu(const MenuBar& menu);

    const FormDescription& description_;
    FormState& state_;
    EventDispatcher dispatch_;
    HWND window_ = nullptr;
    std::map<std::string, HWND, std::less<>> controls_;
    std::map<HWND, const vantrel::Control*> rows_;
    std::map<UINT_PTR, const vantrel::Control*> timers_;
    std::map<Color, HBRUSH> brushes_;
    // One font per family, size and weight: a form asks for few, on many
    // controls.
    std::map<std::tuple<std::string, int, bool>, HFONT> fonts_;
    HFONT formFont_ = nullptr;
    HMENU menuBar_ = nullptr;
    std::map<UINT, MenuItem> menuItems_;
    HWND lastFocus_ = nullptr;      // restored when the window is activated again
    bool syncing_ = false;          // the window itself writes a control
    bool activating_ = false;       // focus that comes back with the window
    const Text* typing_ = nullptr;  // the exact text a script types now
};

}  // namespace vantrel::win32
