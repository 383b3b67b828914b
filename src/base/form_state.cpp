#include "form_state.h"

#include <stdexcept>

namespace vantrel {

FormState::FormState(const FormDescription& description)
    : name_(description.name) {
    for (const Control& row : description.controls) {
        if (!indexOf_.emplace(row.name, controls_.size()).second) {
            continue;  // a name given twice: the first row holds it
        }
        ControlState state;
        state.name = row.name;
        state.text = row.caption;
        state.backColor = row.backColor;
        state.checked = row.checked;
        state.option = row.kind == ControlKind::OptionButton;
        state.container = row.container;
        controls_.push_back(std::move(state));
    }
}

FormState::ControlState* FormState::Find(std::string_view control) {
    const auto found = indexOf_.find(control);
    return found == indexOf_.end() ? nullptr : &controls_[found->second];
}

bool FormState::Has(std::string_view control) const { return const_cast<FormState*>(this)->Find(control) != nullptr; }

FormState::ControlState& FormState::At(std::string_view control) {
    ControlState* state = Find(control);
    if (!state) {
        throw std::out_of_range(name_ + " has no control " + std::string(control));
    }
    return *state;
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

void FormState::SetText(std::string_view control, TextView value) {
    ControlState& state = At(control);
    if (TextView(state.text) == value) {
        return;
    }
    state.text.assign(value);
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
        for (ControlState& other : controls_) {
            if (other.name != control && other.option && other.container == state.container && other.checked) {
                other.checked = false;
                Notify(other.name, Property::Checked);
            }
        }
    }
}

}  // namespace vantrel
