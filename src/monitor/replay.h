#pragma once

#include "monitor/record_reader.h"
#include "monitor/replay_compare.h"

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// A recorded session sent again to a server, event by event, and each
// outcome compared with the record. Boxes and error reports are not sent:
// their answers are already in the events that followed them.
namespace vantrel {

using ServerMaker = std::function<std::unique_ptr<AutomationObject>()>;

// A call is markedly slower at twice the recorded time and 10 ms more.
bool MarkedlySlower(double recordedMs, double nowMs);

// Told of every event of the record in turn.
class ReplayObserver {
public:
    virtual ~ReplayObserver() = default;
    // A put or call (or the creation) sent again: what the record says it
    // gave, what it gives now, and how the two compare. The entry's event
    // holds what was sent; its answer is in `recorded`.
    virtual void OnReplayed(const RecordReader::Entry& entry, const Outcome& recorded, const Outcome& now,
                            const Comparison& comparison) = 0;
    // A box or an error report, not sent.
    virtual void OnSkipped(const RecordReader::Entry& entry) = 0;
};

struct ReplayEnd {
    // Empty when the record was read to its end; else why the replay
    // stopped there (bad input, a server that cannot be created).
    std::string problem;
};

// Replays the record against servers that `make` creates (at the record's
// creation, or before its first call when it has none), going on past
// every error the server raises.
ReplayEnd Replay(RecordReader& record, const ServerMaker& make, const Mask* mask, ReplayObserver& observer);

// The report of a replay: counts, changes, slower calls; the replay's own
// record and JUnit XML on request. Changes are held in a temporary file
// until the summary line that stands before them is known.
class ReplayReport final : public ReplayObserver {
public:
    struct Counts {
        std::uint64_t replayed = 0;
        std::uint64_t same = 0;
        std::uint64_t masked = 0;
        std::uint64_t changed = 0;
        std::uint64_t newErrors = 0;
        std::uint64_t errorsGone = 0;
    };

    ReplayReport();
    ~ReplayReport() override;
    ReplayReport(const ReplayReport&) = delete;
    ReplayReport& operator=(const ReplayReport&) = delete;

    // The replay's own record, written as it goes: each put and call with
    // the time the server took, boxes and reports as they were recorded.
    void WriteRecordTo(std::FILE* file) { record_ = file; }
    // Collects JUnit test cases, written whole by WriteJUnit.
    void CollectJUnit();

    void OnReplayed(const RecordReader::Entry& entry, const Outcome& recorded, const Outcome& now,
                    const Comparison& comparison) override;
    void OnSkipped(const RecordReader::Entry& entry) override;

    const Counts& counts() const { return counts_; }
    std::uint64_t slowerCount() const { return slower_; }
    bool recordFailed() const { return recordFailed_; }
    // Something changed: an answer, an error, or a call markedly slower.
    bool anyChange() const;

    // The summary line, then each change, then the slower calls.
    bool WriteReport(std::FILE* out);
    // One test case per server event, the difference in its failure.
    bool WriteJUnit(std::FILE* out, const std::string& suiteName);

private:
    // Lines kept for later: in a temporary file, or in memory where the
    // system gives none (the C library's temporary files on Windows go to
    // the root of the drive, which a user may not write).
    class Spool {
    public:
        void Line(const std::string& text);
        bool CopyTo(std::FILE* out);

    private:
        std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_{std::tmpfile(), &std::fclose};
        std::string memory_;
        bool failed_ = false;
    };

    Counts counts_;
    Spool changes_;
    Spool slowerLines_;
    std::unique_ptr<Spool> junitCases_;
    std::FILE* record_ = nullptr;
    std::uint64_t slower_ = 0;
    std::uint64_t junitFailures_ = 0;
    bool recordFailed_ = false;
};

// The learning run: the record replayed twice against servers of one
// release; what differs between the two runs becomes mask rules, one per
// member and key (the whole answer where it is no key=value text), sorted.
struct Learned {
    std::vector<std::string> rules;
    std::string problem;  // as ReplayEnd's
};
Learned LearnMask(const std::string& recordPath, const ServerMaker& make, const std::string& scratchPath);

}  // namespace vantrel
