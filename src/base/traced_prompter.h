#pragma once

#include "base/ports.h"
#include "server/server_calls.h"

namespace vantrel {

// Reports every modal box with the reply it got, then passes it on.
class TracedPrompter final : public Prompter {
public:
    TracedPrompter(Prompter& inner, CallListener& listener);

    void Message(const Text& text, const Text& title) override;
    Answer Ask(const Text& text, const Text& title) override;
    Text Input(const Text& prompt, const Text& title) override;

private:
    Prompter& inner_;
    CallListener& listener_;
};

}  // namespace vantrel
