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

// The handler rows of one command or a group: the slowest command against
// the time limit, and the command furthest from its plain appends against
// the ratio.
void AddHandlerRows(std::vector<Row>& rows, const std::string& what, const std::vector<SurveyedCommand>& commands,
                    const Medians& medians) {
    double slowest = commands.empty() ? kNaN : 0;
    double worstClick = commands.empty() ? kNaN : 0;
    double worstAppends = commands.empty() ? kNaN : 1;
    std::string slowestName;
    std::string worstName;
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
        }
    }
    const bool group = commands.size() > 1;
    rows.push_back(Under("handler's own work, " + what + (group ? ", slowest" : ""), slowest, 2e-6,
                         group ? slowestName : std::string()));
    rows.push_back(Within(
        "handler vs the same texts by plain appends, " + what + (group ? ", furthest" : ""), worstClick, worstAppends,
        3, (group ? worstName + ": " : std::string()) + Duration(worstClick) + " vs " + Duration(worstAppends)));
}

// Medians of the launches that count; NaN, and the first problem, when any
// launch went wrong.
struct LaunchMedians {
    double seconds = kNaN;
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
    std::vector<double> bytes;
    for (const Launch& launch : launches) {
        if (!launch.problem.empty()) {
            result.problem = launch.problem;
            return result;
        }
        seconds.push_back(launch.secondsToShown);
        bytes.push_back(launch.residentBytes);
    }
    result.seconds = Median(seconds);
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

}  // namespace

std::string ClickName(const SurveyedCommand& command) { return "Click/" + command.form + "." + command.control; }
std::string AppendsName(const SurveyedCommand& command) { return "Appends/" + command.form + "." + command.control; }
std::string WithArgument(const char* name, long argument) { return std::string(name) + "/" + std::to_string(argument); }

std::vector<Row> TargetRows(const Medians& medians, const CommandSurvey& survey, const LaunchSeries& launches) {
    std::vector<Row> rows;
    AddHandlerRows(rows, std::to_string(survey.fixedBlocks.size()) + " fixed-block commands", survey.fixedBlocks,
                   medians);
    AddHandlerRows(rows, "nine preloaded messages", {survey.preloadedMessages}, medians);
    AddHandlerRows(rows, "PRICE SET", {survey.priceSet}, medians);

    std::vector<double> perCharacter;
    std::string perCharacterDetail;
    for (const int count : kPacketCounts) {
        perCharacter.push_back(Find(medians, WithArgument(kPacketClick, count)) / count);
        perCharacterDetail +=
            (perCharacterDetail.empty() ? "" : ", ") + std::to_string(count) + ": " + Duration(perCharacter.back());
    }
    rows.push_back(Within("packet input view, time per data character at 30000 (\"3E4\") vs at 999", perCharacter[2],
                          perCharacter[1], 2, perCharacterDetail + " per character"));

    for (const long size : kImageSizes) {
        const double setImage = Find(medians, WithArgument(kSetImage, size));
        const double oneRead = Find(medians, WithArgument(kOneRead, size));
        rows.push_back(Within("SET IMAGE, " + std::to_string(size >> 20) + " MiB file, vs one read() into memory",
                              setImage, oneRead, 2, Duration(setImage) + " vs " + Duration(oneRead)));
    }

    const LaunchMedians console = MediansOf(launches.console);
    const LaunchMedians minimal = MediansOf(launches.minimal);
    const std::string problem = console.problem.empty() ? minimal.problem : console.problem;
    const std::string count = std::to_string(launches.console.size());
    rows.push_back(WithProblem(
        Within("start-up to the window first shown (offscreen) vs minimal Qt program", console.seconds, minimal.seconds,
               1.5, Duration(console.seconds) + " vs " + Duration(minimal.seconds) + ", medians of " + count),
        problem));
    rows.push_back(
        WithProblem(Within("resident memory after start-up vs minimal Qt program", console.bytes, minimal.bytes, 1.3,
                           Mebibytes(console.bytes) + " vs " + Mebibytes(minimal.bytes) + ", medians"),
                    problem));

    rows.push_back(Under("stress tick, the console's own time", Find(medians, kStressTick), 50e-6,
                         "two assignments, timer to handler"));
    const double put = Find(medians, kSimulatorPut);
    rows.push_back(AtLeast("built-in simulator, property assignments in-process", 1 / put, 2e6, "assignments"));
    return rows;
}

}  // namespace vantrel::bench
