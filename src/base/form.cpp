#include "form.h"

#include <utility>

namespace vantrel {

Control& Control::Back(Color color) {
    backColor = color;
    return *this;
}

Control& Control::Fore(Color color) {
    foreColor = color;
    return *this;
}

Control& Control::Graphical(Color color) {
    style = ButtonStyle::Graphical;
    backColor = color;
    return *this;
}

Control& Control::In(std::string frame) {
    container = std::move(frame);
    return *this;
}

Control& Control::OnClick(Handler handler) {
    click = std::move(handler);
    return *this;
}

Control& Control::OnDblClick(Handler handler) {
    dblClick = std::move(handler);
    return *this;
}

Control& Control::OnGotFocus(Handler handler) {
    gotFocus = std::move(handler);
    return *this;
}

Control& Control::OnLostFocus(Handler handler) {
    lostFocus = std::move(handler);
    return *this;
}

Control& Control::OnChange(Handler handler) {
    change = std::move(handler);
    return *this;
}

namespace {

Control Make(ControlKind kind, std::string name, Text caption, int left, int top, int width, int height) {
    Control control;
    control.kind = kind;
    control.name = std::move(name);
    control.caption = std::move(caption);
    control.left = left;
    control.top = top;
    control.width = width;
    control.height = height;
    return control;
}

}  // namespace

Control CommandButton(std::string name, Text caption, int left, int top, int width, int height, Handler click) {
    Control control = Make(ControlKind::CommandButton, std::move(name), std::move(caption), left, top, width, height);
    control.click = std::move(click);
    return control;
}

Control OptionButton(std::string name, Text caption, int left, int top, int width, int height, Handler click) {
    Control control = Make(ControlKind::OptionButton, std::move(name), std::move(caption), left, top, width, height);
    control.click = std::move(click);
    return control;
}

Control Label(std::string name, Text caption, int left, int top, int width, int height) {
    return Make(ControlKind::Label, std::move(name), std::move(caption), left, top, width, height);
}

Control TextBox(std::string name, Text text, int left, int top, int width, int height) {
    return Make(ControlKind::TextBox, std::move(name), std::move(text), left, top, width, height);
}

Control Frame(std::string name, Text caption, int left, int top, int width, int height) {
    return Make(ControlKind::Frame, std::move(name), std::move(caption), left, top, width, height);
}

Control Timer(std::string name, int intervalMs, Handler tick) {
    Control control = Make(ControlKind::Timer, std::move(name), {}, 0, 0, 0, 0);
    control.intervalMs = intervalMs;
    control.tick = std::move(tick);
    return control;
}

FormDescription MakeForm(std::string name, Text caption, int clientWidth, int clientHeight,
                         std::optional<Color> backColor) {
    FormDescription form;
    form.name = std::move(name);
    form.caption = std::move(caption);
    form.clientWidth = clientWidth;
    form.clientHeight = clientHeight;
    form.backColor = backColor;
    return form;
}

const Control* FormDescription::Find(std::string_view control) const {
    for (const Control& row : controls) {
        if (row.name == control) {
            return &row;
        }
    }
    return nullptr;
}

}  // namespace vantrel
