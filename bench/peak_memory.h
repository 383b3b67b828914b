#pragma once

#include <string>

namespace vantrel::bench {

// The console's peak resident memory for big data, each a run of the program
// in script mode with its trace written: SET IMAGE of a 64 MiB file (a
// packet of 128 MiB in 16-bit characters), and a 16 MiB answer shown in the
// data box (32 MiB). What each adds to the peak of a run without big data is
// compared with the size of its text.
struct PeakMemory {
    double baselineBytes = 0;
    double imageBytes = 0;   // added by the image
    double answerBytes = 0;  // added by the answer
    std::string problem;     // why it was not measured; empty when it was
};

inline constexpr double kImagePacketBytes = 2.0 * (64 << 20);
inline constexpr double kAnswerBytes = 2.0 * (16 << 20);

PeakMemory MeasurePeakMemory(const std::string& console);

// The peak resident size of a shell command's run, in bytes; negative when
// it could not be run or ended with an exit code above `highestExit`.
double PeakOfCommand(const std::string& command, int highestExit);

}  // namespace vantrel::bench
