#include "app/replay_run.h"

#include "app/trace_output.h"
#include "monitor/replay.h"
#include "script/simulator_steering.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>

namespace vantrel {

namespace {

std::optional<Mask> ReadMask(const std::string& path, std::string& problem) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        problem = "cannot open the mask " + path;
        return std::nullopt;
    }
    std::ostringstream text;
    text << in.rdbuf();
    auto mask = Mask::Parse(text.str(), problem);
    if (!mask) {
        problem = "the mask " + path + " " + problem;
    }
    return mask;
}

int Learn(const ProgramOptions& options, const ServerMaker& make) {
    const std::string& path = *options.learnMask;
    const Learned learned = LearnMask(*options.replay, make, path + ".first-run.jsonl");
    if (!learned.problem.empty()) {
        return Refused(learned.problem);
    }
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << "# Learned from two replays of " << *options.replay << " against the same server:\n"
        << "# what differed between them. Read it before keeping it (vantrel-test --mask).\n";
    for (const std::string& rule : learned.rules) {
        out << rule << '\n';
    }
    out.flush();
    if (!out) {
        return Refused("cannot write the mask " + path);
    }
    std::printf("learned %zu mask lines, written to %s\n", learned.rules.size(), path.c_str());
    return std::fflush(stdout) == 0 ? 0 : 2;
}

}  // namespace

int RunReplay(const ProgramOptions& options) {
    IgnoreBrokenPipes();
    ServerRegistry servers;
    ServerReached reached;
    RegisterServers(servers, options, reached);
    const ServerMaker make = [&servers] { return servers.Create(kServerProgId); };
    if (options.learnMask) {
        return Learn(options, make);
    }
    std::string problem;
    std::optional<Mask> mask;
    if (options.mask && !(mask = ReadMask(*options.mask, problem))) {
        return Refused(problem);
    }
    auto record = RecordReader::Open(*options.replay, problem);
    if (!record) {
        return Refused(problem);
    }
    std::FILE* own = nullptr;
    if (options.trace) {
        // Never the record being read.
        const OpenedTrace opened = OpenTrace(*options.trace, options.replay);
        if (!opened.problem.empty()) {
            return Refused(opened.problem);
        }
        own = opened.file;
    }
    ReplayReport report;
    report.WriteRecordTo(own);
    if (options.junit) {
        report.CollectJUnit();
    }
    const ReplayEnd end = Replay(*record, make, mask ? &*mask : nullptr, report);
    bool failed = !report.WriteReport(stdout);
    if (mask) {
        for (std::size_t i = 0; i < mask->rules().size(); ++i) {
            if (!mask->used()[i]) {
                std::fprintf(stderr, "vantrel-test: warning: the mask %s line %zu matches nothing\n",
                             options.mask->c_str(), mask->rules()[i].line);
            }
        }
    }
    if (own && (std::fclose(own) != 0 || report.recordFailed())) {
        failed = true;
        std::fprintf(stderr, "vantrel-test: cannot write the record %s\n", options.trace->c_str());
    }
    if (options.junit) {
        std::FILE* junit = std::fopen(options.junit->c_str(), "wb");
        if (!junit || !report.WriteJUnit(junit, "replay of " + *options.replay) || std::fclose(junit) != 0) {
            failed = true;
            std::fprintf(stderr, "vantrel-test: cannot write the JUnit file %s\n", options.junit->c_str());
        }
    }
    if (!end.problem.empty()) {
        return Refused(end.problem);
    }
    if (failed) {
        return 2;
    }
    return report.anyChange() ? 1 : 0;
}

}  // namespace vantrel
