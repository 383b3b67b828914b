#pragma once

#include "server_calls.h"

#include <cstdio>
#include <string>

namespace vantrel {

// One event as one JSON object, without the line end. Texts are written with
// JSON escapes (\r, \n, \u0000, \u001b ...) so every character survives.
std::string ToJsonLine(const CallEvent& event);
std::string ToJson(const Variant& value);
std::string JsonString(TextView text);

// Writes each event as a line and flushes it at once, so that the trace is
// complete even when the program ends through the error report.
class TraceFile final : public CallListener {
public:
    explicit TraceFile(const std::string& path);
    ~TraceFile() override;
    TraceFile(const TraceFile&) = delete;
    TraceFile& operator=(const TraceFile&) = delete;

    bool isOpen() const { return file_ != nullptr; }
    void OnEvent(const CallEvent& event) override;

private:
    std::FILE* file_ = nullptr;
};

}  // namespace vantrel
