#pragma once

#include "base/form.h"

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

namespace vantrel::win32 {

// How a row of a form becomes one of the system's controls: its class,
// styles, place, text and font, and how a graphical button is painted. The
// console's windows make their controls this way, and so does bench/run's
// yardstick for the Windows program's start-up, which makes the console
// window's controls from a list with nothing behind them.

// Pixels at the system's DPI for a length in twips.
int Pixels(int twips);

// A form's own window, of a class the caller registered, with its client
// area in twips (before a menu bar wraps), hidden.
HWND CreateFormWindow(const wchar_t* type, TextView caption, int clientWidth, int clientHeight, HWND owner, bool menu);

// A one-line box the technician types into: it holds the exact text, so
// what is typed is what is read back.
bool Editable(const vantrel::Control& control);

// What a control shows for its text: a label's or a box's text as the
// system control shows it, a button's or frame's caption as it is.
std::wstring ShownText(const vantrel::Control& control, TextView text);

// The font of the rows that name none, and a row's own; the caller owns it.
// FontHeight is the height CreateRowFont gives the font, in pixels.
HFONT CreateFormFont();
int FontHeight(const Font& font);
HFONT CreateRowFont(const Font& font);

// The system control of a row (not a timer), a child of the window with the
// given identifier, at its place in twips from the window's corner.
HWND CreateControl(HWND window, const vantrel::Control& control, int left, int top, const std::wstring& text,
                   HFONT font, UINT id);

// Sets a control's colours on its device context for the system's painting
// and gives the brush of its back: its own colour, else, but for a text
// box, the form's; a text box without one keeps the white of a text box.
// nullptr: the system's own colours.
HBRUSH SetControlColors(HDC dc, const vantrel::Control& control, std::optional<Color> own, std::optional<Color> form,
                        const std::function<HBRUSH(Color)>& brush);

// A graphical button: its back colour (the button face without one),
// raised or sunken, its caption centred, and the focus.
void DrawGraphicalButton(const DRAWITEMSTRUCT& item, HBRUSH back, std::optional<Color> fore);

}  // namespace vantrel::win32
