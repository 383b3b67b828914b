#include "script_runner.h"

#include "base/console.h"
#include "script/simulator_steering.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace vantrel {

ScriptCommand ScriptPrompter::Take(const std::string& box, const Text& text) {
    if (replies_.empty()) {
        fail_("the " + box + " \"" + Escaped(text) + "\" has no reply queued");
        return {};
    }
    ScriptCommand reply = replies_.front();
    replies_.pop_front();
    if (tick_ && reply.count > 0) {
        tick_(reply.count);  // the timer goes on while a box is up
    }
    return reply;
}

void ScriptPrompter::Message(const Text& text, const Text&) {
    const ScriptCommand reply = Take("message box", text);
    if (reply.reply != ScriptCommand::Reply::Ok) {
        fail_("the message box \"" + Escaped(text) + "\" has only OK; the reply queued does not fit");
    }
}

Answer ScriptPrompter::Ask(const Text& text, const Text&) {
    const ScriptCommand reply = Take("question", text);
    if (reply.reply == ScriptCommand::Reply::Yes) {
        return Answer::Yes;
    }
    if (reply.reply == ScriptCommand::Reply::No) {
        return Answer::No;
    }
    fail_("the question \"" + Escaped(text) + "\" takes yes or no");
    return Answer::No;
}

Text ScriptPrompter::Input(const Text& prompt, const Text&) {
    const ScriptCommand reply = Take("input box", prompt);
    if (reply.reply == ScriptCommand::Reply::Text) {
        return reply.text;
    }
    if (reply.reply == ScriptCommand::Reply::Cancel) {
        return {};
    }
    fail_("the input box \"" + Escaped(prompt) + "\" takes a text or cancel");
    return {};
}

ScriptRunner::ScriptRunner(std::string fileName, std::vector<std::string> lines, Console& console,
                           ScriptFrontEnd& frontEnd, ScriptPrompter& prompter, SimulatorSteering* steering)
    : fileName_(std::move(fileName))
    , lines_(std::move(lines))
    , console_(console)
    , frontEnd_(frontEnd)
    , prompter_(prompter)
    , steering_(steering) {
    prompter_.SetFailure([this](const std::string& message) { Fail(message); });
    prompter_.SetTicker([this](int count) { Tick(count); });
}

void ScriptRunner::Start() {
    frontEnd_.Later([this] { Step(); });
}

void ScriptRunner::Fail(const std::string& message) const {
    std::fflush(stdout);
    const std::string line = WithControlsEscaped(fileName_, ControlEscapes::All) + ":" + std::to_string(current_ + 1) +
                             ": " + WithControlsEscaped(message, ControlEscapes::ButLineFeeds) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(nullptr);
    std::_Exit(2);
}

void ScriptRunner::CheckStandardOutput() const {
    errno = 0;
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
        const int reason = errno;
        Fail(std::string("cannot write to standard output: ") +
             (reason != 0 ? std::strerror(reason) : "the write failed"));
    }
}

void ScriptRunner::Step() {
    while (next_ < lines_.size()) {
        current_ = next_++;
        const ParsedLine parsed = ParseScriptLine(lines_[current_]);
        if (const auto* error = std::get_if<ScriptError>(&parsed)) {
            Fail(error->message);
        }
        if (const auto* command = std::get_if<ScriptCommand>(&parsed)) {
            // The next line is queued first: if this one opens a modal
            // window, the window's event loop runs it.
            frontEnd_.Later([this] { Step(); });
            Execute(*command);
            return;
        }
    }
    // The end of the script: every queued reply must have found its box.
    if (prompter_.pending() > 0) {
        Fail(std::to_string(prompter_.pending()) + " queued replies were never used");
    }
    CheckStandardOutput();
    frontEnd_.Quit(0);
}

void ScriptRunner::Execute(const ScriptCommand& command) {
    using Verb = ScriptCommand::Verb;
    switch (command.verb) {
    case Verb::Click: Click(command.name, false); break;
    case Verb::DblClick: Click(command.name, true); break;
    case Verb::Type: Type(command.name, command.text); break;
    case Verb::Menu: Menu(command.name, command.text); break;
    case Verb::Answer: prompter_.Queue(command); break;
    case Verb::Tick: Tick(command.count); break;
    case Verb::Expect: {
        const Text& actual = TextOf(command.name);
        if (actual != command.text) {
            Fail("expect " + command.name + "\n  expected \"" + Escaped(command.text) + "\"\n  actual   \"" +
                 Escaped(actual) + "\"");
        }
        break;
    }
    case Verb::Print: {
        const std::string line = command.name + " \"" + Escaped(TextOf(command.name)) + "\"\n";
        std::fwrite(line.data(), 1, line.size(), stdout);
        CheckStandardOutput();
        break;
    }
    case Verb::Shot: Shot(command.name, command.file); break;
    case Verb::ServerAnswerText:
    case Verb::ServerAnswerNumber:
    case Verb::ServerAnswerHuge:
    case Verb::ServerFail:
    case Verb::ServerDelay:
    case Verb::ServerTime:
    case Verb::ServerAuto:
    case Verb::ServerDie: Steer(command, "server"); break;
    case Verb::ForecourtLift:
    case Verb::ForecourtHang:
    case Verb::ForecourtCard:
    case Verb::ForecourtKeys:
    case Verb::ForecourtCash:
    case Verb::ForecourtPacket:
    case Verb::ForecourtWash: Steer(command, "forecourt"); break;
    }
}

void ScriptRunner::Steer(const ScriptCommand& command, const char* lines) {
    if (!steering_) {
        Fail(std::string(lines) + " lines need the built-in simulator");
    }
    const std::string failure = steering_->Steer(command, lines_[current_]);
    if (!failure.empty()) {
        Fail(failure);
    }
}

void ScriptRunner::Click(const std::string& name, bool twice) {
    const std::string form = frontEnd_.ActiveForm();
    if (!console_.Description(form).Find(name)) {
        Fail("no control " + name + " in the shown window " + form);
    }
    if (!frontEnd_.Click(name, twice)) {
        Fail("the control " + name + " cannot be clicked now");
    }
}

void ScriptRunner::Type(const std::string& name, const Text& text) {
    const std::string form = frontEnd_.ActiveForm();
    const Control* row = console_.Description(form).Find(name);
    // What a person can type into: a single-line box that is not an echo box.
    if (!row || row->kind != ControlKind::TextBox || row->multiLine || row->readOnly) {
        Fail("no text box " + name + " to type into in the shown window " + form);
    }
    frontEnd_.Type(name, text);
}

void ScriptRunner::Menu(const std::string& menu, const Text& entry) {
    const std::string form = frontEnd_.ActiveForm();
    if (form != kConsoleForm) {
        Fail("the console's menu cannot be used while " + form + " is shown");
    }
    if (!frontEnd_.Menu(menu, entry)) {
        Fail("no menu entry \"" + menu + "\" \"" + ToUtf8(entry) + "\" on the console");
    }
}

void ScriptRunner::Shot(const std::string& window, const std::string& file) {
    switch (frontEnd_.Shot(window, file)) {
    case ScriptFrontEnd::Picture::Written: break;
    case ScriptFrontEnd::Picture::NoWindow: Fail("no window " + window + " has been shown yet");
    case ScriptFrontEnd::Picture::NotWritten: Fail("cannot write the picture " + file);
    }
}

const Text& ScriptRunner::TextOf(const std::string& name) {
    std::string form;
    std::string control = name;
    if (const auto dot = name.find('.'); dot != std::string::npos) {
        form = name.substr(0, dot);
        control = name.substr(dot + 1);
    }
    FormState* state = nullptr;
    const FormDescription* description = nullptr;
    try {
        description = form.empty() ? &console_.Description(frontEnd_.ActiveForm()) : &console_.Description(form);
        state = &console_.Form(description->name);
    } catch (const std::out_of_range&) {
        Fail("no window " + form);
    }
    const Control* row = description->Find(control);
    if (!row || (row->kind != ControlKind::TextBox && row->kind != ControlKind::Label)) {
        Fail("no text box or label " + control + " in the window " + description->name);
    }
    return state->TextOf(control);
}

void ScriptRunner::Tick(int count) {
    for (int i = 0; i < count; ++i) {
        frontEnd_.Tick();
    }
}

}  // namespace vantrel
