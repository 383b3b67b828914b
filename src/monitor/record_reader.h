#pragma once

#include "server/trace_json.h"

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace vantrel {

// A record (a --trace file, a session log, a monitor export, a replay's own
// record) read one event at a time: only the current line is in memory, so
// a record of any size streams.
class RecordReader {
public:
    struct Entry {
        std::uint64_t line = 0;    // in the file, 1 for the first
        std::uint64_t number = 0;  // the event's number in the session, 1 for the first
        CallEvent event;
        LineExtras extras;
    };
    enum class Next {
        Event,
        End,
        Stopped,  // bad input: problem() says where and why
    };

    // Nothing, and why in `problem`, when the file cannot be opened.
    static std::unique_ptr<RecordReader> Open(const std::string& path, std::string& problem);

    Next Read(Entry& entry);
    // Why reading stopped, naming the file and the line.
    const std::string& problem() const { return problem_; }
    // The record's last line was cut short, as a killed session leaves it.
    bool cut() const { return cut_; }

private:
    explicit RecordReader(std::string path);
    Next Stop(std::string problem);

    std::string path_;
    std::vector<char> buffer_;  // the stream's, large enough to read in few calls
    std::ifstream in_;
    std::string line_;
    std::uint64_t lineNumber_ = 0;
    std::uint64_t events_ = 0;
    std::string problem_;
    bool cut_ = false;
    bool stopped_ = false;
};

}  // namespace vantrel
