#include "console/console.h"
#include "console/console_form.h"
#include "queues/packet_view.h"
#include "server/command_block.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace vantrel {
namespace {

// A packet answer with `count` data characters of every 8-bit code, its
// count field written as the server would ("003", "999", "3E4").
Text PacketAnswer(std::int64_t count) {
    Text answer =
        u"ReaderPosition=05\r\nPacketCount=" + (count == 30000 ? Text(u"3E4") : ZeroPad(count, 3)) + u"\r\nPacketData=";
    for (std::int64_t i = 0; i < count; ++i) {
        answer.push_back(static_cast<char16_t>(i % 256));
    }
    answer.append(u"\r\n");
    answer.push_back(kNul);
    return answer;
}

void ReportPerCharacter(benchmark::State& state) {
    // Seconds per data character: equal figures at every size mean linear work.
    state.counters["per_char"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void PacketInputView(benchmark::State& state) {
    const Text answer = PacketAnswer(state.range(0));
    for (auto _ : state) {
        PacketView view = ViewPacketInput(answer);
        benchmark::DoNotOptimize(view.text.data());
    }
    ReportPerCharacter(state);
}
BENCHMARK(PacketInputView)->Arg(3)->Arg(999)->Arg(30000);

// The whole click: the call, the conversion, the view and the data box.
class FixedAnswer final : public AutomationObject {
public:
    explicit FixedAnswer(Variant answer)
        : answer_(std::move(answer)) {}
    void Put(std::string_view, const Variant&) override {}
    Variant Call(std::string_view) override { return answer_; }
    Variant Call(std::string_view, const Variant&) override { return answer_; }
    Variant CallByRef(std::string_view, Variant&) override { return answer_; }

private:
    Variant answer_;
};

class SilentPrompter final : public Prompter {
public:
    void Message(const Text&, const Text&) override {}
    Answer Ask(const Text&, const Text&) override { return Answer::No; }
    Text Input(const Text&, const Text&) override { return {}; }
};

class NoWindows final : public WindowHost {
public:
    void ShowModal(std::string_view) override {}
    void Hide(std::string_view) override {}
};

void PacketQueClick(benchmark::State& state) {
    const Variant answer = Variant::OfText(PacketAnswer(state.range(0)));
    ServerRegistry servers;
    servers.Register(std::string(kServerProgId), [&] { return std::make_unique<FixedAnswer>(answer); });
    CallEvents events;
    SilentPrompter prompter;
    NoWindows windows;
    Console console(Console::Ports{servers, events, prompter, windows}, AllForms());
    console.Load();
    const Handler click = console.Description(kConsoleForm).Find("PacketQue")->click;
    for (auto _ : state) {
        click(console);
        benchmark::DoNotOptimize(console.DataBox().data());
    }
    ReportPerCharacter(state);
}
BENCHMARK(PacketQueClick)->Arg(3)->Arg(999)->Arg(30000);

}  // namespace
}  // namespace vantrel
