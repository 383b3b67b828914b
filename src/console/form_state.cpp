#include "form_state.h"

#include <stdexcept>

namespace vantrel {

FormState::FormState(const FormDescription& description)
    : name_(description.name) {
    for (const Control& row : description.controls) {
        ControlState state;
        state.text = row.caption;
        state.backColor = row.backColor;
        state.checked = row.checked;
        state.option = row.kind == ControlKind::OptionButton;
        state.container = row.container;
        controls_.emplace(row.name, std::move(state));
    }
}

bool FormState::Has(std::string_view control) const { return controls_.find(control) != controls_.end(); }

FormState::ControlState& FormState::At(std::string_view control) {
    const auto found = controls_.find(control);
    if (found == controls_.end()) {
        throw std::out_of_range(name_ + " has no control " + std::string(control));
    }
    return found->second;
}

const FormState::ControlState& FormState::At(std::string_view control) const {
    return const_cast<FormState*>(this)->At(control);
}

void FormState::Notify(std::string_view control, Property property) {
    if (listener_) {
        listener_(std::string(control), property);
    }
}

const Text& FormState::TextOf(std::string_view control) const { return At(control).text; }

void FormState::SetText(std::string_view control, Text value) {
    ControlState& state = At(control);
    if (state.text == value) {
        return;
    }
    state.text = std::move(value);
    Notify(control, Property::Text);
}

std::optional<Color> FormState::BackColorOf(std::string_view control) const { return At(control).backColor; }

void FormState::SetBackColor(std::string_view control, Color color) {
    ControlState& state = At(control);
    if (state.backColor == color) {
        return;
    }
    state.backColor = color;
    Notify(control, Property::BackColor);
}

bool FormState::Checked(std::string_view control) const { return At(control).checked; }

void FormState::SetChecked(std::string_view control, bool checked) {
    ControlState& state = At(control);
    if (state.checked == checked) {
        return;
    }
    state.checked = checked;
    Notify(control, Property::Checked);
    if (checked && state.option) {
        for (auto& [other, otherState] : controls_) {
            if (other != control && otherState.option && otherState.container == state.container &&
                otherState.checked) {
                otherState.checked = false;
                Notify(other, Property::Checked);
            }
        }
    }
}

}  // namespace vantrel
