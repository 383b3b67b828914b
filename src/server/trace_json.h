#pragma once

#include "server_calls.h"

#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

// One event as one JSON object, without the line end. Texts are written with
// JSON escapes (\r, \n, \u0000, \u001b ...) so every character survives.
std::string ToJsonLine(const CallEvent& event);
std::string ToJson(const Variant& value);
std::string JsonString(TextView text);

// Writes the event as one line, its end included, in pieces of bounded size
// to the sink: an event of many megabytes is never held as one string.
// False once the sink has refused a piece.
bool WriteJsonLine(const CallEvent& event, const std::function<bool(std::string_view piece)>& sink);

// What a replay adds to a line of its own record, in fields that plain
// traces never carry: how long the server took, and a by-reference argument
// as the server wrote it back. The line is the trace's line otherwise.
struct LineExtras {
    std::optional<double> serverMs;
    std::optional<Variant> writtenBack;
};
bool WriteJsonLine(const CallEvent& event, const LineExtras& extras,
                   const std::function<bool(std::string_view piece)>& sink);

// One line of a record read back: a trace, a session log, a monitor export
// or a replay's own record. Fields it does not know are passed over; a
// "server_ms" and a "byref_back" are kept as extras.
struct ReadEvent {
    enum class Status {
        Read,
        NotARecord,   // not one JSON object of the trace's shape
        UnknownKind,  // a JSON object whose "op" this program does not know
    };
    Status status = Status::Read;
    std::string problem;  // what is wrong, for the two failures
    CallEvent event;
    LineExtras extras;
};
ReadEvent ReadJsonLine(std::string_view line);
// The same for a line laid out any way JSON allows (blanks, keys in any
// order). ReadJsonLine reads the trace's own layout without building a tree
// of values and hands every other line to this one; both read a line alike.
ReadEvent ReadAnyJsonLine(std::string_view line);

// Writes each event as a line and flushes it at once, so that the trace is
// complete even when the program ends through the error report. Every write
// and flush is checked: the first that fails is reported once, through the
// failure handler, and nothing more is written.
class TraceFile final : public CallListener {
public:
    using Failure = std::function<void(const std::string& message)>;

    // Takes the open file; path names it in the message.
    TraceFile(std::FILE* file, std::string path);
    ~TraceFile() override;
    TraceFile(const TraceFile&) = delete;
    TraceFile& operator=(const TraceFile&) = delete;

    void SetFailure(Failure failure) { onFailure_ = std::move(failure); }
    bool failed() const { return failed_; }
    const std::string& path() const { return path_; }
    void OnEvent(const CallEvent& event) override;

private:
    std::FILE* file_ = nullptr;
    std::string path_;
    bool failed_ = false;
    Failure onFailure_;
};

}  // namespace vantrel
