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
std::vector<Row> TargetRows(const Medians& medians, const CommandSurvey& survey, const LaunchSeries& launches,
                            const PeakMemory& peaks, const Medians& spreads = {});

}  // namespace vantrel::bench
