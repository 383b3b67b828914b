#pragma once

#include "base/form.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

// What a window shows, as exact values: the text of every text box and label
// (control characters included), colours that handlers change, and which
// option buttons are selected. The Qt layer renders it and feeds typing and
// selection back; handlers and tests read and write it directly.
class FormState {
public:
    enum class Property {
        Text,
        BackColor,
        Checked,
    };
    using Listener = std::function<void(const std::string& control, Property property)>;

    explicit FormState(const FormDescription& description);

    const std::string& name() const { return name_; }
    bool Has(std::string_view control) const;

    // Reading or writing a control the window does not have is a programming
    // error; it throws std::out_of_range.
    const Text& TextOf(std::string_view control) const;
    // Copies only when the text changes, into the room the old one had.
    void SetText(std::string_view control, TextView value);
    // The same for a text that is not kept elsewhere: moved in, not copied.
    void SetText(std::string_view control, Text&& value);
    template <std::size_t N>
    void SetText(std::string_view control, const char16_t (&value)[N]) {
        SetText(control, TextView(value, N - 1));
    }
    std::optional<Color> BackColorOf(std::string_view control) const;
    void SetBackColor(std::string_view control, Color color);
    bool Checked(std::string_view control) const;
    // Selecting an option button deselects the others of its group, as the
    // toolkit does.
    void SetChecked(std::string_view control, bool checked);

    void SetListener(Listener listener) { listener_ = std::move(listener); }

private:
    struct ControlState {
        std::string name;
        Text text;
        std::optional<Color> backColor;
        bool checked = false;
        bool option = false;    // an option button: one of its group selected at most
        std::string container;  // the group is the container
    };
    ControlState& At(std::string_view control);
    const ControlState& At(std::string_view control) const;
    void Notify(std::string_view control, Property property);

    ControlState* Find(std::string_view control);

    std::string name_;
    std::vector<ControlState> controls_;  // in creation order
    // Every echo looks its box up by name among a hundred and more controls:
    // an open-addressed table of indices into controls_, a power of two in
    // size and at most half full, probed from the name's hash. A seam for
    // bench/run's "handler vs the same texts by plain appends" (at most 3x):
    // iXCAT_FUNC measured 75 ns against 36 ns with it, 122 ns with a
    // standard hashed map, 131 ns with an ordered one.
    std::vector<std::int32_t> slots_;
    Listener listener_;
};

}  // namespace vantrel
