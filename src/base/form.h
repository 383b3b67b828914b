#pragma once

#include "server/text.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

class Console;

// Colours as the layouts write them: 0x00BBGGRR.
using Color = std::uint32_t;
using Handler = std::function<void(Console&)>;

enum class ControlKind {
    CommandButton,
    OptionButton,
    Label,
    TextBox,
    Frame,
    Timer,
};

enum class ButtonStyle {
    Standard,
    Graphical,  // painted with its own background colour
};

enum class ScrollBars {
    None,
    Horizontal,
    Vertical,
    Both,
};

struct Font {
    std::string family;
    double points = 8.25;
    bool bold = false;
};

// One row of a window's table of controls. Positions and sizes in twips.
struct Control {
    ControlKind kind = ControlKind::CommandButton;
    std::string name;
    Text caption;  // caption, or the initial text of a text box
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    std::optional<Color> backColor;
    std::optional<Color> foreColor;
    ButtonStyle style = ButtonStyle::Standard;
    bool multiLine = false;
    ScrollBars scrollBars = ScrollBars::None;
    bool centred = false;
    bool readOnly = false;  // echo boxes: their exact text lives in the model
    std::optional<Font> font;
    bool checked = false;   // option button selected in the layout
    std::string container;  // the frame that holds it; empty for the window
    int intervalMs = 0;     // timers

    Handler click;
    Handler dblClick;
    Handler gotFocus;
    Handler lostFocus;
    Handler change;
    Handler tick;

    // Chainable setters, so a table of rows reads as a table.
    Control& Back(Color color);
    Control& Fore(Color color);
    Control& Graphical(Color color);
    Control& In(std::string frame);
    Control& OnClick(Handler handler);
    Control& OnDblClick(Handler handler);
    Control& OnGotFocus(Handler handler);
    Control& OnLostFocus(Handler handler);
    Control& OnChange(Handler handler);
};

Control CommandButton(std::string name, Text caption, int left, int top, int width, int height, Handler click = {});
Control OptionButton(std::string name, Text caption, int left, int top, int width, int height, Handler click = {});
Control Label(std::string name, Text caption, int left, int top, int width, int height);
Control TextBox(std::string name, Text text, int left, int top, int width, int height);
Control Frame(std::string name, Text caption, int left, int top, int width, int height);
Control Timer(std::string name, int intervalMs, Handler tick);

// A window: caption, client area in twips, background, controls in creation
// order (a later control is drawn above an earlier one), and what its load
// does when it is first shown.
struct FormDescription {
    std::string name;
    Text caption;
    int clientWidth = 0;
    int clientHeight = 0;
    std::optional<Color> backColor;
    std::vector<Control> controls;
    Handler load;

    const Control* Find(std::string_view control) const;
};

// A window with no controls yet: name, caption, client area in twips and
// background colour.
FormDescription MakeForm(std::string name, Text caption, int clientWidth, int clientHeight,
                         std::optional<Color> backColor = std::nullopt);

inline constexpr int kTwipsPerPixel = 15;

}  // namespace vantrel
