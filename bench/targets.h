#pragma once

#include "command_survey.h"
#include "peak_memory.h"
#include "process_launch.h"
#include "target_table.h"

#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace vantrel::bench {

// Benchmark names the targets are read from. Times are CPU seconds per
// iteration, the median of the repetitions.
inline constexpr char kPacketClick[] = "PacketQueClick";  // /count
inline constexpr char kSetImage[] = "SetImage";           // /bytes
inline constexpr char kReadAndWiden[] = "ReadAndWiden";   // /bytes
inline constexpr char kStressTick[] = "StressTick";
inline constexpr char kSimulatorPut[] = "SimulatorPut";  // one assignment
inline constexpr int kPacketCounts[] = {3, 999, 30000};
inline constexpr long kImageSizes[] = {1L << 20, 64L << 20};

std::string ClickName(const SurveyedCommand& command);    // "Click/<form>.<control>"
std::string AppendsName(const SurveyedCommand& command);  // "Appends/<form>.<control>"
std::string WithArgument(const char* name, long argument);

using Medians = std::map<std::string, double, std::less<>>;

// Start-ups of the console and of the minimal Qt program, taken in turn.
// The Windows program, the same window's controls in a plain Win32 program
// and the one-button Win32 program under Wine likewise, when measured (else
// empty), with the exe's size (NaN when not measured, negative when it could
// not be read).
struct LaunchSeries {
    std::vector<Launch> console;
    std::vector<Launch> minimal;
    std::vector<Launch> windowsConsole;
    std::vector<Launch> windowsControls;
    std::vector<Launch> windowsMinimal;
    double windowsExeBytes = std::numeric_limits<double>::quiet_NaN();
};

// Every row of the targets table, in the order of the table.
// spreads: each figure's half interquartile range as a share of its median,
// by the same names; a ratio's row shows the spreads of both its figures.
// lowerQuartiles: the SET IMAGE rows at 64 MiB and more compare these
// instead of medians (see kFreshMemoryGroups).
std::vector<Row> TargetRows(const Medians& medians, const CommandSurvey& survey, const LaunchSeries& launches,
                            const PeakMemory& peaks, const Medians& spreads = {}, const Medians& lowerQuartiles = {});

// From this size on, a SET IMAGE repetition and its yardstick's fall into
// two groups on this virtual machine, whichever program runs: the memory
// they touch first is at hand (tens of milliseconds), or the host must find
// it again (hundreds). Both sides take their room the same way and land in
// either group by chance, so the medians of 15 compare one side's fast group
// with the other's slow one about as often as not; the lower quartiles
// compare the two fast groups, each program's own work. The spreads stay
// printed. docs/performance.md has the measurements.
inline constexpr long kFreshMemoryGroups = 32L << 20;

}  // namespace vantrel::bench
