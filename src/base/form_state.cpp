#include "form_state.h"

#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace vantrel {

namespace {

// Equal as stored: the standard comparison of 16-bit texts goes character by
// character, and a data box may hold tens of thousands of them.
bool SameCharacters(const Text& stored, TextView value) {
    return stored.size() == value.size() &&
           std::memcmp(stored.data(), value.data(), value.size() * sizeof(char16_t)) == 0;
}

constexpr std::int32_t kFree = -1;

// FNV-1a: cheap for short names.
std::size_t NameHash(std::string_view name) {
    std::uint64_t hash = 14695981039346656037ULL;
    for (const char character : name) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 1099511628211ULL;
    }
    return static_cast<std::size_t>(hash);
}

}  // namespace

FormState::FormState(const FormDescription& description)
    : name_(description.name) {
    std::size_t size = 16;
    while (size < 2 * description.controls.size()) {
        size *= 2;
    }
    slots_.assign(size, kFree);
    for (const Control& row : description.controls) {
        if (Find(row.name)) {
            continue;  // a name given twice: the first row holds it
        }
        ControlState state;
        state.name = row.name;
        state.text = row.caption;
        state.backColor = row.backColor;
        state.checked = row.checked;
        state.option = row.kind == ControlKind::OptionButton;
        state.container = row.container;
        std::size_t slot = NameHash(row.name) & (size - 1);
        while (slots_[slot] != kFree) {
            slot = (slot + 1) & (size - 1);
        }
        slots_[slot] = static_cast<std::int32_t>(controls_.size());
        controls_.push_back(std::move(state));
    }
}

FormState::ControlState* FormState::Find(std::string_view control) {
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = NameHash(control) & mask; slots_[slot] != kFree; slot = (slot + 1) & mask) {
        ControlState& state = controls_[static_cast<std::size_t>(slots_[slot])];
        if (state.name == control) {
            return &state;
        }
    }
    return nullptr;
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
    if (SameCharacters(state.text, value)) {
        return;
    }
    state.text.assign(value);
    Notify(control, Property::Text);
}

void FormState::SetText(std::string_view control, Text&& value) {
    ControlState& state = At(control);
    if (SameCharacters(state.text, value)) {
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
        for (ControlState& other : controls_) {
            if (other.name != control && other.option && other.container == state.container && other.checked) {
                other.checked = false;
                Notify(other.name, Property::Checked);
            }
        }
    }
}

}  // namespace vantrel
