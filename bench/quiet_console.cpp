#include "quiet_console.h"

#include "app/all_forms.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace vantrel::bench {

DoNothingServer::DoNothingServer(Variant answer, Observed* observed)
    : answer_(std::move(answer))
    , observed_(observed) {}

void DoNothingServer::Saw(const Variant& value) {
    if (observed_ && value.is(Variant::Kind::Text)) {
        observed_->texts.push_back(value.text());
    }
}

void DoNothingServer::Put(std::string_view member, const Variant& value) {
    if (observed_) {
        observed_->assignments.emplace_back(member, value);
        Saw(value);
    }
}

Variant DoNothingServer::Call(std::string_view) { return answer_; }

Variant DoNothingServer::Call(std::string_view, const Variant& argument) {
    Saw(argument);
    return answer_;
}

Variant DoNothingServer::CallByRef(std::string_view, Variant& argument) {
    Saw(argument);
    return answer_;
}

void QuietBoxes::Message(const Text&, const Text&) {
    if (observed_) {
        ++observed_->boxes;
    }
}

Answer QuietBoxes::Ask(const Text&, const Text&) {
    if (observed_) {
        ++observed_->boxes;
    }
    return Answer::No;
}

Text QuietBoxes::Input(const Text&, const Text&) {
    if (observed_) {
        ++observed_->boxes;
    }
    return {};
}

void NoWindows::ShowModal(std::string_view) {
    if (observed_) {
        ++observed_->windows;
    }
}

QuietConsole::QuietConsole(Variant answer, Observed* observed)
    : boxes_(observed)
    , windows_(observed)
    , console_(Console::Ports{servers_, events_, boxes_, windows_}, AllForms()) {
    servers_.Register(std::string(kServerProgId), [answer = std::move(answer), observed] {
        return std::make_unique<DoNothingServer>(answer, observed);
    });
    console_.Load();
    // Every window as it is after its first showing, so that the buttons of
    // the secondary windows work on loaded state.
    for (const FormDescription& form : console_.Descriptions()) {
        if (form.name != kConsoleForm) {
            console_.ShowModal(form.name);
        }
    }
    if (observed) {
        *observed = {};
        for (const FormDescription& form : console_.Descriptions()) {
            FormState& state = console_.Form(form.name);
            state.SetListener([&state, observed](const std::string& control, FormState::Property property) {
                if (property == FormState::Property::Text) {
                    observed->texts.push_back(state.TextOf(control));
                }
            });
        }
    }
}

const Handler& QuietConsole::Click(std::string_view form, std::string_view control) const {
    const Control* row = console_.Description(form).Find(control);
    if (!row || !row->click) {
        throw std::out_of_range(std::string(form) + " has no clickable " + std::string(control));
    }
    return row->click;
}

}  // namespace vantrel::bench
