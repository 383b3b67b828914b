#pragma once

#include "base/console.h"
#include "app/all_forms.h"
#include "base/ports.h"
#include "server/fault_injection.h"
#include "server/server_calls.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantrel::testing {

// Byte-exact comparison that prints both texts escaped, so a failure names
// the character that differs.
::testing::AssertionResult SameText(const char* expectedExpression, const char* actualExpression, const Text& expected,
                                    const Text& actual);
#define EXPECT_TEXT(expected, actual) EXPECT_PRED_FORMAT2(::vantrel::testing::SameText, expected, actual)
#define ASSERT_TEXT(expected, actual) ASSERT_PRED_FORMAT2(::vantrel::testing::SameText, expected, actual)

// One server call as the recording server saw it.
struct RecordedCall {
    enum class Kind {
        Put,
        Call,
        CallWithArgument,
        CallByRef,
    };
    Kind kind;
    std::string member;
    std::optional<Variant> value;  // the put value or the argument

    // The text that was assigned or passed; empty when the value is no text.
    const Text& text() const;
};

// A server that records every put and call with its exact argument, answers
// from a queue (an empty value otherwise), and can fail on demand.
class RecordingServer final : public AutomationObject, public FaultInjection {
public:
    void Put(std::string_view member, const Variant& value) override;
    Variant Call(std::string_view member) override;
    Variant Call(std::string_view member, const Variant& argument) override;
    Variant CallByRef(std::string_view member, Variant& argument) override;

    bool Knows(std::string_view) const override { return true; }
    void QueueAnswer(std::string_view member, Variant answer) override;
    void QueueFailure(std::string_view member, RuntimeError error) override;

    std::vector<RecordedCall> calls;
    // Runs inside each put and call, while the console waits for the answer.
    std::function<void()> during;

private:
    Variant Next(std::string_view member);
    std::vector<std::pair<std::string, std::variant<Variant, RuntimeError>>> queued_;
};

// The calls were exactly one assignment of this text to this member.
::testing::AssertionResult SinglePut(const std::vector<RecordedCall>& calls, std::string_view member, const Text& text);

// Replies queued for the modal boxes, and a record of every box shown.
class ScriptedPrompter final : public Prompter {
public:
    struct Box {
        enum class Kind {
            Message,
            Question,
            Input,
        };
        Kind kind;
        Text text;
        Text title;
    };

    // Queue replies: Ok() for a message box, Yes()/No(), Enter("text") or
    // Cancel() for an input box.
    ScriptedPrompter& Ok();
    ScriptedPrompter& Yes();
    ScriptedPrompter& No();
    ScriptedPrompter& Enter(Text text);
    ScriptedPrompter& Cancel();
    // Runs while the next box is up, before it is answered.
    ScriptedPrompter& During(std::function<void()> action);

    void Message(const Text& text, const Text& title) override;
    Answer Ask(const Text& text, const Text& title) override;
    Text Input(const Text& prompt, const Text& title) override;

    std::vector<Box> boxes;
    std::size_t pending() const { return replies_.size(); }

private:
    struct Reply {
        std::variant<Answer, Text> value;
        std::function<void()> during;
    };
    ScriptedPrompter& Queue(std::variant<Answer, Text> value);
    Reply Take(Box::Kind kind, const Text& text, const Text& title);
    std::deque<Reply> replies_;
    std::function<void()> during_;
};

class RecordingReport final : public ErrorReport {
public:
    void Report(const RuntimeError& error) override { errors.push_back(error); }
    std::vector<RuntimeError> errors;
};

class WindowRecorder final : public WindowHost {
public:
    void ShowModal(std::string_view form) override { shown.emplace_back(form); }
    void Hide(std::string_view form) override { hidden.emplace_back(form); }
    std::vector<std::string> shown;
    std::vector<std::string> hidden;
};

// What a command must leave alone when it does not touch it: both echo
// boxes and CommandData hold these texts.
inline constexpr char16_t kFunctionBefore[] = u"function before";
inline constexpr char16_t kDataBefore[] = u"data before";
inline constexpr char16_t kCommandDataBefore[] = u"command data before";
void MarkUntouched(Console& console);

// A loaded console over a recording server, with every window's form.
class TestConsole {
public:
    TestConsole();

    Console& console() { return console_; }
    RecordingServer& server() { return *server_; }
    ScriptedPrompter& prompter() { return prompter_; }
    WindowRecorder& windows() { return windows_; }
    RecordingReport& report() { return report_; }

    // Runs the handler of a control as a UI event would (errors go to the
    // report). Fails the test if the form or the control has no such handler.
    void Click(std::string_view control, std::string_view form = kConsoleForm);
    void DblClick(std::string_view control, std::string_view form = kConsoleForm);
    void Focus(std::string_view control, std::string_view form = kConsoleForm);
    void Blur(std::string_view control, std::string_view form = kConsoleForm);
    void Type(std::string_view control, Text text, std::string_view form = kConsoleForm);
    void Tick(std::string_view timer = "Timer1", std::string_view form = kConsoleForm);
    void Select(int position);  // focus, click, leave: a person's click

    // Calls made since the console's load (the creation is not a call).
    const std::vector<RecordedCall>& calls() { return server_->calls; }
    std::vector<std::string> members();

private:
    void Run(std::string_view control, std::string_view form, Handler Control::*which);

    RecordingServer* server_ = nullptr;
    ServerRegistry servers_;
    CallEvents events_;
    ScriptedPrompter prompter_;
    WindowRecorder windows_;
    RecordingReport report_;
    Console console_;
};

}  // namespace vantrel::testing
