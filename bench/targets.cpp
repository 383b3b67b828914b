#include "targets.h"

#include <cmath>
#include <limits>

namespace vantrel::bench {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double Find(const Medians& medians, const std::string& name) {
    const auto found = medians.find(name);
    return found == medians.end() ? kNaN : found->second;
}

// " (spread ±2 % / ±5 %)" of a ratio's two figures; empty when unknown.
std::string Spreads(const Medians& spreads, const std::string& measured, const std::string& baseline) {
    const std::string a = SpreadText(Find(spreads, measured));
    const std::string b = SpreadText(Find(spreads, baseline));
    return a.empty() || b.empty() ? std::string() : " (spread " + a + " / " + b + ")";
}

// The handler rows of one command or a group: the slowest command against
// the time limit, and the command furthest from its plain appends against
// the ratio.
void AddHandlerRows(std::vector<Row>& rows, const std::string& what, const std::vector<SurveyedCommand>& commands,
                    const Medians& medians, const Medians& spreads) {
    double slowest = commands.empty() ? kNaN : 0;
    double worstClick = commands.empty() ? kNaN : 0;
    double worstAppends = commands.empty() ? kNaN : 1;
    std::string slowestName;
    std::string worstName;
    std::string worstSpreads;
    for (const SurveyedCommand& command : commands) {
        const double click = Find(medians, ClickName(command));
        const double appends = Find(medians, AppendsName(command));
        if (std::isnan(click) || std::isnan(appends)) {
            slowest = worstClick = worstAppends = kNaN;
            break;
        }
        if (click > slowest) {
            slowest = click;
            slowestName = command.control;
        }
        if (click / appends > worstClick / worstAppends) {
            worstClick = click;
            worstAppends = appends;
            worstName = command.control;
            worstSpreads = Spreads(spreads, ClickName(command), AppendsName(command));
        }
    }
    const bool group = commands.size() > 1;
    rows.push_back(Under("handler's own work, " + what + (group ? ", slowest" : ""), slowest, 2e-6,
                         group ? slowestName : std::string()));
    rows.push_back(Within("handler vs the same texts by plain appends, " + what + (group ? ", furthest" : ""),
                          worstClick, worstAppends, 3,
                          (group ? worstName + ": " : std::string()) + Duration(worstClick) + " vs " +
                              Duration(worstAppends) + worstSpreads));
}

// Medians of the launches that count; NaN, and the first problem, when any
// launch went wrong.
struct LaunchMedians {
    double seconds = kNaN;     // wall time to the window shown
    double cpuSeconds = kNaN;  // user and system time
    double cpuSpread = kNaN;
    double bytes = kNaN;
    std::string problem;
};

LaunchMedians MediansOf(const std::vector<Launch>& launches) {
    LaunchMedians result;
    if (launches.empty()) {
        result.problem = "no launches";
        return result;
    }
    std::vector<double> seconds;
    std::vector<double> cpuSeconds;
    std::vector<double> bytes;
    for (const Launch& launch : launches) {
        if (!launch.problem.empty()) {
            result.problem = launch.problem;
            return result;
        }
        seconds.push_back(launch.secondsToShown);
        cpuSeconds.push_back(launch.cpuSeconds);
        bytes.push_back(launch.residentBytes);
    }
    result.seconds = Median(seconds);
    result.cpuSeconds = Median(cpuSeconds);
    result.cpuSpread = Spread(cpuSeconds);
    result.bytes = Median(bytes);
    return result;
}

Row WithProblem(Row row, const std::string& problem) {
    if (!problem.empty()) {
        row.measured = "not measured: " + problem;
        row.pass = false;
    }
    return row;
}

// A program's start-up (CPU time, the wall time beside it) and resident
// memory, each against its yardstick's, started in turn.
void AddLaunchRows(std::vector<Row>& rows, const std::string& startFigure, const std::string& memoryFigure,
                   double startLimit, double memoryLimit, const std::vector<Launch>& program,
                   const std::vector<Launch>& yardstick) {
    const LaunchMedians console = MediansOf(program);
    const LaunchMedians minimal = MediansOf(yardstick);
    const std::string problem = console.problem.empty() ? minimal.problem : console.problem;
    const std::string count = std::to_string(program.size());
    rows.push_back(WithProblem(
        Within(startFigure, console.cpuSeconds, minimal.cpuSeconds, startLimit,
               Duration(console.cpuSeconds) + " vs " + Duration(minimal.cpuSeconds) + " CPU (" +
                   Duration(console.seconds) + " vs " + Duration(minimal.seconds) + " wall), medians of " + count +
                   (std::isnan(console.cpuSpread) || std::isnan(minimal.cpuSpread)
                        ? std::string()
                        : " (spread " + SpreadText(console.cpuSpread) + " / " + SpreadText(minimal.cpuSpread) + ")")),
        problem));
    if (memoryFigure.empty()) {
        return;
    }
    rows.push_back(WithProblem(Within(memoryFigure, console.bytes, minimal.bytes, memoryLimit,
                                      Mebibytes(console.bytes) + " vs " + Mebibytes(minimal.bytes) + ", medians"),
                               problem));
}

}  // namespace

std::string ClickName(const SurveyedCommand& command) { return "Click/" + command.form + "." + command.control; }
std::string AppendsName(const SurveyedCommand& command) { return "Appends/" + command.form + "." + command.control; }
std::string WithArgument(const char* name, long argument) { return std::string(name) + "/" + std::to_string(argument); }

std::vector<Row> TargetRows(const Medians& medians, const CommandSurvey& survey, const LaunchSeries& launches,
                            const PeakMemory& peaks, const Medians& spreads, const Medians& lowerQuartiles) {
    std::vector<Row> rows;
    AddHandlerRows(rows, std::to_string(survey.fixedBlocks.size()) + " fixed-block commands", survey.fixedBlocks,
                   medians, spreads);
    AddHandlerRows(rows, "nine preloaded messages", {survey.preloadedMessages}, medians, spreads);
    AddHandlerRows(rows, "PRICE SET", {survey.priceSet}, medians, spreads);

    std::vector<double> perCharacter;
    std::string perCharacterDetail;
    for (const int count : kPacketCounts) {
        perCharacter.push_back(Find(medians, WithArgument(kPacketClick, count)) / count);
        perCharacterDetail +=
            (perCharacterDetail.empty() ? "" : ", ") + std::to_string(count) + ": " + Duration(perCharacter.back());
    }
    rows.push_back(Within("packet input view, time per data character at 30000 (\"3E4\") vs at 999", perCharacter[2],
                          perCharacter[1], 2,
                          perCharacterDetail + " per character" +
                              Spreads(spreads, WithArgument(kPacketClick, kPacketCounts[2]),
                                      WithArgument(kPacketClick, kPacketCounts[1]))));

    for (const long size : kImageSizes) {
        const bool groups = size >= kFreshMemoryGroups;
        const Medians& figures = groups ? lowerQuartiles : medians;
        const double setImage = Find(figures, WithArgument(kSetImage, size));
        const double yardstick = Find(figures, WithArgument(kReadAndWiden, size));
        rows.push_back(Within(
            "SET IMAGE, " + std::to_string(size >> 20) + " MiB file, vs reading it and widening it into fresh room",
            setImage, yardstick, 1.25,
            Duration(setImage) + " vs " + Duration(yardstick) + (groups ? ", lower quartiles" : "") +
                Spreads(spreads, WithArgument(kSetImage, size), WithArgument(kReadAndWiden, size))));
    }

    AddLaunchRows(rows, "start-up to the window first shown (offscreen), CPU time, vs minimal Qt program",
                  "resident memory after start-up vs minimal Qt program", 1.5, 1.3, launches.console, launches.minimal);
    if (!launches.windowsConsole.empty() || !std::isnan(launches.windowsExeBytes)) {
        AddLaunchRows(rows,
                      "Windows program under Wine: start-up to the window first shown, CPU time, vs its window's "
                      "controls in a plain Win32 program",
                      "Windows program under Wine: resident memory after start-up vs its window's controls in a "
                      "plain Win32 program",
                      1.2, 1.2, launches.windowsConsole, launches.windowsControls);
        // What Wine costs for the window's controls: no target.
        AddLaunchRows(rows, "Windows program under Wine: start-up, CPU time, vs one-button Win32 program", {},
                      std::numeric_limits<double>::infinity(), 0, launches.windowsConsole, launches.windowsMinimal);
        rows.back().target = "printed";
        const bool read = launches.windowsExeBytes >= 0;
        rows.push_back(Row{"Windows program: size of vantrel-test.exe, no DLL beside it", "printed",
                           read ? Mebibytes(launches.windowsExeBytes) : "could not be read", read});
    }

    rows.push_back(WithProblem(Within("peak memory added by SET IMAGE of a 64 MiB file, trace written, vs its "
                                      "packet's 128 MiB",
                                      peaks.imageBytes, kImagePacketBytes, 3, Mebibytes(peaks.imageBytes) + " added"),
                               peaks.problem));
    rows.push_back(WithProblem(Within("peak memory added by a 16 MiB answer shown, trace written, vs its 32 MiB",
                                      peaks.answerBytes, kAnswerBytes, 3, Mebibytes(peaks.answerBytes) + " added"),
                               peaks.problem));

    rows.push_back(Under("stress tick, the console's own time", Find(medians, kStressTick), 50e-6,
                         "two assignments, timer to handler"));
    const double put = Find(medians, kSimulatorPut);
    rows.push_back(AtLeast("built-in simulator, property assignments in-process", 1 / put, 2e6, "assignments"));
    return rows;
}

}  // namespace vantrel::bench
