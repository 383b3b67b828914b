#include "traced_prompter.h"

namespace vantrel {

TracedPrompter::TracedPrompter(Prompter& inner, CallListener& listener)
    : inner_(inner)
    , listener_(listener) {}

namespace {

CallEvent BoxEvent(CallEvent::Op op, const Text& text, const Text& title) {
    CallEvent event;
    event.op = op;
    event.text = text;
    event.title = title;
    event.when = std::chrono::system_clock::now();
    return event;
}

}  // namespace

void TracedPrompter::Message(const Text& text, const Text& title) {
    CallEvent event = BoxEvent(CallEvent::Op::MessageBox, text, title);
    inner_.Message(text, title);
    event.answer = u"ok";
    listener_.OnEvent(event);
}

Answer TracedPrompter::Ask(const Text& text, const Text& title) {
    CallEvent event = BoxEvent(CallEvent::Op::MessageBox, text, title);
    event.buttons = CallEvent::Buttons::YesNo;
    const Answer answer = inner_.Ask(text, title);
    event.answer = answer == Answer::Yes ? u"yes" : u"no";
    listener_.OnEvent(event);
    return answer;
}

Text TracedPrompter::Input(const Text& prompt, const Text& title) {
    CallEvent event = BoxEvent(CallEvent::Op::InputBox, prompt, title);
    Text answer = inner_.Input(prompt, title);
    event.answer = answer;
    listener_.OnEvent(event);
    return answer;
}

}  // namespace vantrel
