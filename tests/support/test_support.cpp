#include "support/test_support.h"

#include <algorithm>

namespace vantrel::testing {

::testing::AssertionResult SameText(const char* expectedExpression, const char* actualExpression, const Text& expected,
                                    const Text& actual) {
    if (expected == actual) {
        return ::testing::AssertionSuccess();
    }
    std::size_t at = 0;
    while (at < expected.size() && at < actual.size() && expected[at] == actual[at]) {
        ++at;
    }
    return ::testing::AssertionFailure() << actualExpression << " differs from " << expectedExpression
                                         << " at character " << at << " (of " << expected.size() << " expected, "
                                         << actual.size() << " actual)\n  expected \"" << Escaped(expected)
                                         << "\"\n  actual   \"" << Escaped(actual) << "\"";
}

const Text& RecordedCall::text() const {
    static const Text none;
    return value && value->is(Variant::Kind::Text) ? value->text() : none;
}

::testing::AssertionResult SinglePut(const std::vector<RecordedCall>& calls, std::string_view member,
                                     const Text& text) {
    if (calls.size() != 1 || calls[0].kind != RecordedCall::Kind::Put || calls[0].member != member) {
        auto failure = ::testing::AssertionFailure() << "expected one assignment to " << member << ", got";
        for (const RecordedCall& call : calls) {
            failure << " " << call.member << (call.kind == RecordedCall::Kind::Put ? "=" : "()");
        }
        return failure;
    }
    return SameText("text", "the assigned text", text, calls[0].text());
}

void MarkUntouched(Console& console) {
    console.SetFunctionBox(kFunctionBefore);
    console.SetDataBox(kDataBefore);
    console.CommandData = Variant::OfText(kCommandDataBefore);
}

void RecordingServer::Put(std::string_view member, const Variant& value) {
    calls.push_back({RecordedCall::Kind::Put, std::string(member), value});
    Next(member);
}

Variant RecordingServer::Call(std::string_view member) {
    calls.push_back({RecordedCall::Kind::Call, std::string(member), std::nullopt});
    return Next(member);
}

Variant RecordingServer::Call(std::string_view member, const Variant& argument) {
    calls.push_back({RecordedCall::Kind::CallWithArgument, std::string(member), argument});
    return Next(member);
}

Variant RecordingServer::CallByRef(std::string_view member, Variant& argument) {
    calls.push_back({RecordedCall::Kind::CallByRef, std::string(member), argument});
    return Next(member);
}

void RecordingServer::QueueAnswer(std::string_view member, Variant answer) {
    queued_.emplace_back(std::string(member), std::move(answer));
}

void RecordingServer::QueueFailure(std::string_view member, RuntimeError error) {
    queued_.emplace_back(std::string(member), std::move(error));
}

Variant RecordingServer::Next(std::string_view member) {
    if (during) {
        during();
    }
    const auto found =
        std::find_if(queued_.begin(), queued_.end(), [&](const auto& entry) { return entry.first == member; });
    if (found == queued_.end()) {
        return {};
    }
    auto outcome = std::move(found->second);
    queued_.erase(found);
    if (auto* error = std::get_if<RuntimeError>(&outcome)) {
        throw *error;
    }
    return std::get<Variant>(std::move(outcome));
}

ScriptedPrompter& ScriptedPrompter::Queue(std::variant<Answer, Text> value) {
    replies_.push_back({std::move(value), std::move(during_)});
    during_ = {};
    return *this;
}

ScriptedPrompter& ScriptedPrompter::Ok() { return Queue(Answer::Ok); }
ScriptedPrompter& ScriptedPrompter::Yes() { return Queue(Answer::Yes); }
ScriptedPrompter& ScriptedPrompter::No() { return Queue(Answer::No); }
ScriptedPrompter& ScriptedPrompter::Enter(Text text) { return Queue(std::move(text)); }
ScriptedPrompter& ScriptedPrompter::Cancel() { return Enter({}); }

ScriptedPrompter& ScriptedPrompter::During(std::function<void()> action) {
    during_ = std::move(action);
    return *this;
}

ScriptedPrompter::Reply ScriptedPrompter::Take(Box::Kind kind, const Text& text, const Text& title) {
    boxes.push_back({kind, text, title});
    if (replies_.empty()) {
        ADD_FAILURE() << "no reply queued for the box \"" << Escaped(text) << "\"";
        return {Text(), {}};
    }
    Reply reply = std::move(replies_.front());
    replies_.pop_front();
    if (reply.during) {
        reply.during();
    }
    return reply;
}

void ScriptedPrompter::Message(const Text& text, const Text& title) {
    const Reply reply = Take(Box::Kind::Message, text, title);
    const auto* answer = std::get_if<Answer>(&reply.value);
    EXPECT_TRUE(answer && *answer == Answer::Ok) << "message box \"" << Escaped(text) << "\" answered with no OK";
}

Answer ScriptedPrompter::Ask(const Text& text, const Text& title) {
    const Reply reply = Take(Box::Kind::Question, text, title);
    const auto* answer = std::get_if<Answer>(&reply.value);
    EXPECT_TRUE(answer && *answer != Answer::Ok) << "question \"" << Escaped(text) << "\" needs Yes or No";
    return answer ? *answer : Answer::No;
}

Text ScriptedPrompter::Input(const Text& prompt, const Text& title) {
    const Reply reply = Take(Box::Kind::Input, prompt, title);
    const auto* entry = std::get_if<Text>(&reply.value);
    EXPECT_TRUE(entry != nullptr) << "input box \"" << Escaped(prompt) << "\" needs a text or Cancel";
    return entry ? *entry : Text();
}

TestConsole::TestConsole()
    : console_(Console::Ports{servers_, events_, prompter_, windows_}, AllForms()) {
    servers_.Register(std::string(kServerProgId), [this] {
        auto server = std::make_unique<RecordingServer>();
        server_ = server.get();
        return server;
    });
    console_.Load();
}

void TestConsole::Run(std::string_view control, std::string_view form, Handler Control::*which) {
    const Control* row = console_.Description(form).Find(control);
    ASSERT_NE(row, nullptr) << form << " has no control " << control;
    const Handler& handler = row->*which;
    ASSERT_TRUE(static_cast<bool>(handler)) << control << " has no such handler";
    Dispatch(console_, handler, report_);
}

void TestConsole::Click(std::string_view control, std::string_view form) { Run(control, form, &Control::click); }
void TestConsole::DblClick(std::string_view control, std::string_view form) { Run(control, form, &Control::dblClick); }
void TestConsole::Focus(std::string_view control, std::string_view form) { Run(control, form, &Control::gotFocus); }
void TestConsole::Blur(std::string_view control, std::string_view form) { Run(control, form, &Control::lostFocus); }
void TestConsole::Tick(std::string_view timer, std::string_view form) { Run(timer, form, &Control::tick); }

void TestConsole::Type(std::string_view control, Text text, std::string_view form) {
    console_.Form(form).SetText(control, std::move(text));
    const Control* row = console_.Description(form).Find(control);
    ASSERT_NE(row, nullptr);
    if (row->change) {
        Dispatch(console_, row->change, report_);
    }
}

void TestConsole::Select(int position) {
    const std::string button = "Button" + std::to_string(position);
    Focus(button);
    console_.Window().SetChecked(button, true);
    Click(button);
    Blur(button);
}

std::vector<std::string> TestConsole::members() {
    std::vector<std::string> names;
    for (const RecordedCall& call : server_->calls) {
        names.push_back(call.member);
    }
    return names;
}

}  // namespace vantrel::testing
