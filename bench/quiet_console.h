#pragma once

#include "base/console.h"
#include "base/ports.h"
#include "server/server_calls.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantrel::bench {

// What a command did, seen from outside the console: the boxes and windows
// it opened, every text it sent or showed, and its assignments, in order.
struct Observed {
    int boxes = 0;
    int windows = 0;
    std::vector<Text> texts;
    std::vector<std::pair<std::string, Variant>> assignments;  // member, value
};

// A server that does nothing: assignments vanish and every call returns the
// same answer (empty unless given). With it, what a click costs is the
// console's own work.
class DoNothingServer final : public AutomationObject {
public:
    explicit DoNothingServer(Variant answer = {}, Observed* observed = nullptr);

    void Put(std::string_view member, const Variant& value) override;
    Variant Call(std::string_view member) override;
    Variant Call(std::string_view member, const Variant& argument) override;
    Variant CallByRef(std::string_view member, Variant& argument) override;

private:
    void Saw(const Variant& value);

    Variant answer_;
    Observed* observed_;
};

// Boxes that answer at once: No to a question, an empty entry (cancel) to
// an input box.
class QuietBoxes final : public Prompter {
public:
    explicit QuietBoxes(Observed* observed = nullptr)
        : observed_(observed) {}
    void Message(const Text&, const Text&) override;
    Answer Ask(const Text&, const Text&) override;
    Text Input(const Text&, const Text&) override;

private:
    Observed* observed_;
};

// Windows that are hidden again as soon as they are shown.
class NoWindows final : public WindowHost {
public:
    explicit NoWindows(Observed* observed = nullptr)
        : observed_(observed) {}
    void ShowModal(std::string_view) override;
    void Hide(std::string_view) override {}

private:
    Observed* observed_;
};

// A loaded console over a do-nothing server, every window loaded, with quiet
// boxes and windows. With an Observed, it notes what each command does.
class QuietConsole {
public:
    explicit QuietConsole(Variant answer = {}, Observed* observed = nullptr);
    QuietConsole(const QuietConsole&) = delete;
    QuietConsole& operator=(const QuietConsole&) = delete;

    Console& console() { return console_; }
    // The click handler of a control; throws std::out_of_range when the
    // window has no such control or it has no click.
    const Handler& Click(std::string_view form, std::string_view control) const;

private:
    ServerRegistry servers_;
    CallEvents events_;
    QuietBoxes boxes_;
    NoWindows windows_;
    Console console_;
};

}  // namespace vantrel::bench
