#pragma once

#include "server_calls.h"

#include <cstdio>
#include <functional>
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
