#pragma once

#include <string>
#include <string_view>

namespace vantrel::simulation {

// Where the model reports what it could not do, as a controller on a serial
// link reports it: an entry in the error queue, never an error thrown back.
class ErrorSink {
public:
    virtual ~ErrorSink() = default;
    // source: the member or "Forecourt"; message: one readable line.
    virtual void Report(std::string_view source, const std::string& message) = 0;
};

}  // namespace vantrel::simulation
