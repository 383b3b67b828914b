#pragma once

#include <string>
#include <vector>

namespace vantrel::bench {

// A program under measurement writes the line "shown 41236 KiB" to standard
// output once its first window has been shown, with its resident size at
// that moment, and then ends. (Its own report, since the peak the system
// keeps for a child counts the memory of the parent it was started from.)
struct Launch {
    bool shown = false;
    double secondsToShown = 0;  // from the start to the line
    double cpuSeconds = 0;      // user and system time of the whole run
    double residentBytes = 0;   // as the line reported it
    int exitCode = -1;          // -1 when it ended through a signal
    std::string problem;        // why it does not count; empty when it does
};

// Starts command[0] with the rest as its arguments and the environment of
// this process, standard input and error on /dev/null, and waits for the
// line and for the end. A program that has not ended after the time-out is
// killed and reported.
Launch LaunchUntilShown(const std::vector<std::string>& command, double timeoutSeconds);

}  // namespace vantrel::bench
