// The replay of a recorded session against the in-process simulator, beside
// its yardstick: the same puts and calls made directly from memory, with no
// reading and no comparing. And the replay's peak memory for a record of
// 1 GiB, against the program's own at start.
#include "monitor/replay.h"
#include "peak_memory.h"
#include "replay_rows.h"
#include "server/trace_json.h"
#include "simulator/simulator.h"

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <memory>

namespace vantrel::bench {

namespace {

std::unique_ptr<Simulator> NewServer() {
    return std::make_unique<Simulator>(std::make_unique<simulation::ManualClock>());
}

// A session's worth of server events, as the console sends them: a fill-up
// authorized, the position asked by value, the dispenser and the reader by
// reference, the versions, the queue counts, the authorization taken back.
std::vector<CallEvent> Session(long count) {
    std::vector<CallEvent> events;
    auto server = NewServer();
    for (long i = 0; static_cast<long>(events.size()) < count; ++i) {
        const int position = static_cast<int>(i % 32) + 1;
        const Text two = position < 10 ? Text(u"0") + char16_t(u'0' + position)
                                       : Text(1, char16_t(u'0' + position / 10)) + char16_t(u'0' + position % 10);
        const auto put = [&](const char* member, Text value) {
            CallEvent event;
            event.op = CallEvent::Op::Put;
            event.member = member;
            event.argument = Variant::OfText(std::move(value));
            server->Put(event.member, *event.argument);
            events.push_back(std::move(event));
        };
        const auto call = [&](const char* member, std::optional<Variant> argument, bool byRef) {
            CallEvent event;
            event.op = CallEvent::Op::Call;
            event.member = member;
            event.argument = argument;
            event.byRef = byRef;
            Variant copy = argument ? *argument : Variant();
            event.result = !argument ? server->Call(member)
                           : byRef   ? server->CallByRef(member, copy)
                                     : server->Call(member, *argument);
            events.push_back(std::move(event));
        };
        put("Authorize", u"FuelingPosition=" + two + u"\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n" + Text(1, u'\0'));
        call("FuelingPositionInformation", Variant::OfInt16(static_cast<std::int16_t>(position)), false);
        call("DispenserInformation", Variant::OfInt16(static_cast<std::int16_t>(position)), true);
        call("ReaderInformation", Variant::OfInt16(static_cast<std::int16_t>(position)), true);
        call("SystemVersions", std::nullopt, false);
        call("QueCountQuery", std::nullopt, false);
        put("Deauthorize", two);
    }
    events.resize(static_cast<std::size_t>(count));
    return events;
}

// Writes the session as a record until it holds at least `bytes`.
bool WriteRecord(const std::string& path, const std::vector<CallEvent>& events, std::uintmax_t bytes) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (!file) {
        return false;
    }
    CallEvent create;
    create.op = CallEvent::Op::Create;
    create.member = "Vantrel.Application";
    const auto sink = [file](std::string_view piece) {
        return std::fwrite(piece.data(), 1, piece.size(), file) == piece.size();
    };
    bool ok = WriteJsonLine(create, sink);
    std::uintmax_t written = 0;
    while (ok && written < bytes) {
        for (const CallEvent& event : events) {
            ok = ok && WriteJsonLine(event, [&](std::string_view piece) {
                     written += piece.size();
                     return sink(piece);
                 });
        }
    }
    return std::fclose(file) == 0 && ok;
}

std::string ScratchFolder() {
    const auto folder = std::filesystem::temp_directory_path() / ("vantrel-replay-bench-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    return folder.string();
}

class Quiet final : public ReplayObserver {
public:
    void OnReplayed(const RecordReader::Entry&, const Outcome&, const Outcome&, const Comparison& comparison) override {
        changed += comparison.verdict != Verdict::Same;
    }
    void OnSkipped(const RecordReader::Entry&) override {}
    long changed = 0;
};

void ReplayFromRecord(benchmark::State& state) {
    const std::vector<CallEvent> events = Session(state.range(0));
    const std::string path = ScratchFolder() + "/record.jsonl";
    if (!WriteRecord(path, events, 1)) {
        state.SkipWithError("cannot write the record");
        return;
    }
    for (auto _ : state) {
        std::string problem;
        auto record = RecordReader::Open(path, problem);
        ReplayReport report;
        const ReplayEnd end = Replay(
            *record, [] { return NewServer(); }, nullptr, report);
        if (!end.problem.empty() || report.counts().same != report.counts().replayed) {
            state.SkipWithError(("the replay did not give the record again: " + end.problem).c_str());
            break;
        }
    }
    std::filesystem::remove_all(std::filesystem::path(path).parent_path());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ReplayDirectFromMemory(benchmark::State& state) {
    const std::vector<CallEvent> events = Session(state.range(0));
    for (auto _ : state) {
        auto server = NewServer();
        for (const CallEvent& event : events) {
            if (event.op == CallEvent::Op::Put) {
                server->Put(event.member, *event.argument);
            } else if (!event.argument) {
                benchmark::DoNotOptimize(server->Call(event.member));
            } else if (event.byRef) {
                Variant argument = *event.argument;
                benchmark::DoNotOptimize(server->CallByRef(event.member, argument));
            } else {
                benchmark::DoNotOptimize(server->Call(event.member, *event.argument));
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(ReplayFromRecord)->Name(kReplay)->Arg(kReplayEvents)->Unit(benchmark::kMillisecond);
BENCHMARK(ReplayDirectFromMemory)->Name(kReplayDirect)->Arg(kReplayEvents)->Unit(benchmark::kMillisecond);

// The peak resident size of `console --replay record`, in bytes; negative
// when it could not be run. A change found is no failure here.
double PeakOfReplay(const std::string& console, const std::string& record) {
    return PeakOfCommand("exec '" + console + "' --replay '" + record + "' > /dev/null 2>&1 < /dev/null", 1);
}

}  // namespace

void AddReplayRows(std::vector<Row>& rows, const Medians& medians, const std::string& console,
                   const std::string& folder) {
    const std::string name = WithArgument(kReplay, kReplayEvents);
    const std::string direct = WithArgument(kReplayDirect, kReplayEvents);
    const auto replay = medians.find(name);
    const auto yardstick = medians.find(direct);
    const double events = static_cast<double>(kReplayEvents);
    const double perEvent = replay == medians.end() ? std::nan("") : replay->second / events;
    const double directPerEvent = yardstick == medians.end() ? std::nan("") : yardstick->second / events;
    rows.push_back(Within("replay of a 100,000-event record against the in-process simulator, per event", perEvent,
                          directPerEvent, 1.5,
                          Duration(perEvent) + " vs " + Duration(directPerEvent) + " for the same puts and calls"));

    const std::vector<CallEvent> session = Session(7 * 32);
    const std::string small = folder + "/replay-small.jsonl";
    const std::string large = folder + "/replay-1GiB.jsonl";
    const bool written = WriteRecord(small, session, 1) && WriteRecord(large, session, 1ull << 30);
    const double start = written ? PeakOfReplay(console, small) : -1;
    const double peak = written ? PeakOfReplay(console, large) : -1;
    std::filesystem::remove(small);
    std::filesystem::remove(large);
    const bool measured = start > 0 && peak > 0;
    Row row{"peak memory added by the replay of a 1 GiB record, vs a record of one session", "at most 64 MiB",
            measured ? Mebibytes(peak - start) + " (" + Mebibytes(peak) + " vs " + Mebibytes(start) + ")"
                     : "not measured: the record could not be written or replayed",
            measured && peak - start <= 64.0 * 1024 * 1024};
    rows.push_back(row);
}

}  // namespace vantrel::bench
