// vantrel_bench: Google Benchmark's own command line for any benchmark, or,
// with --table, the targets table that bench/run prints: every figure with
// its target, measured against its yardstick in the same run.

#include "benchmarks.h"
#include "command_survey.h"
#include "process_launch.h"
#include "replay_rows.h"
#include "targets.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::bench {

namespace {

constexpr char kUsage[] =
    "Usage: vantrel_bench [Google Benchmark options]\n"
    "       vantrel_bench --table --console PROGRAM --minimal PROGRAM [--launches N] [--log FILE]\n"
    "                     [--windows-console PROGRAM --windows-controls PROGRAM --windows-minimal PROGRAM\n"
    "                      --windows-exe FILE]\n"
    "\n"
    "With --table: runs the benchmarks the targets are read from (15 repetitions\n"
    "each in random order, medians of CPU time), starts PROGRAM --exit-when-shown and the minimal\n"
    "Qt program N times each in turn (9 by default, after one start of each to\n"
    "warm the caches), prints the targets table and exits with 0 when every\n"
    "target is met, 1 when one is not, 2 for a bad command line. The benchmarks'\n"
    "own output goes to FILE (default: standard error). The --windows- options\n"
    "add the Windows program's rows: its start (a command that runs it under\n"
    "Wine), that of the plain Win32 program with the same window's controls,\n"
    "that of the minimal Win32 program, and its exe for the size.\n";

struct TableOptions {
    std::string console;
    std::string minimal;
    std::string windowsConsole;
    std::string windowsControls;
    std::string windowsMinimal;
    std::string windowsExe;
    int launches = 9;
    std::string log;
};

// Keeps every repetition's CPU time per iteration, and shows the runs as the
// console reporter does.
class Collector final : public benchmark::ConsoleReporter {
public:
    Collector()
        : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
                // By name and arguments, without the "/iterations:N" that a
                // benchmark of a fixed count has.
                const std::string name =
                    run.run_name.function_name + (run.run_name.args.empty() ? "" : "/" + run.run_name.args);
                samples_[name].push_back(run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit));
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }

    Medians medians() const {
        Medians result;
        for (const auto& [name, samples] : samples_) {
            result[name] = Median(samples);
        }
        return result;
    }
    Medians lowerQuartiles() const {
        Medians result;
        for (const auto& [name, samples] : samples_) {
            result[name] = LowerQuartile(samples);
        }
        return result;
    }
    Medians spreads() const {
        Medians result;
        for (const auto& [name, samples] : samples_) {
            result[name] = Spread(samples);
        }
        return result;
    }

private:
    std::map<std::string, std::vector<double>> samples_;
};

struct Figures {
    Medians medians;
    Medians spreads;
    Medians lowerQuartiles;
};

Figures RunBenchmarks(std::ostream& log) {
    std::vector<std::string> flags = {
        "vantrel_bench",
        std::string("--benchmark_filter=^(Click|Appends|") + kPacketClick + "|" + kSetImage + "|" + kReadAndWiden +
            "|" + kStressTick + "|" + kSimulatorPut + "|" + kReplay + "|" + kReplayDirect + ")(/|$)",
        // Repetitions in random order, so that what the machine's other work
        // takes away falls alike on a figure and its yardstick.
        "--benchmark_repetitions=15",
        "--benchmark_enable_random_interleaving=true",
        "--benchmark_min_time=0.02",
    };
    std::vector<char*> argv;
    for (std::string& flag : flags) {
        argv.push_back(flag.data());
    }
    int argc = static_cast<int>(argv.size());
    argv.push_back(nullptr);
    benchmark::Initialize(&argc, argv.data());
    Collector collector;
    collector.SetOutputStream(&log);
    collector.SetErrorStream(&log);
    benchmark::RunSpecifiedBenchmarks(&collector);
    benchmark::Shutdown();
    return {collector.medians(), collector.spreads(), collector.lowerQuartiles()};
}

LaunchSeries RunLaunches(const TableOptions& options) {
    // Both on the offscreen platform, whatever display this shell has.
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    constexpr double kTimeout = 60;
    LaunchSeries series;
    for (int round = 0; round <= options.launches; ++round) {
        Launch console = LaunchUntilShown({options.console, "--exit-when-shown"}, kTimeout);
        Launch minimal = LaunchUntilShown({options.minimal}, kTimeout);
        if (round > 0) {  // the first round only fills the caches
            series.console.push_back(std::move(console));
            series.minimal.push_back(std::move(minimal));
        }
        if (!options.windowsConsole.empty()) {
            Launch windows = LaunchUntilShown({options.windowsConsole, "--exit-when-shown"}, kTimeout);
            Launch windowsControls = LaunchUntilShown({options.windowsControls}, kTimeout);
            Launch windowsMinimal = LaunchUntilShown({options.windowsMinimal}, kTimeout);
            if (round > 0) {
                series.windowsConsole.push_back(std::move(windows));
                series.windowsControls.push_back(std::move(windowsControls));
                series.windowsMinimal.push_back(std::move(windowsMinimal));
            }
        }
    }
    return series;
}

int RunTable(const TableOptions& options) {
    const CommandSurvey survey = SurveyCommands();
    RegisterSurveyBenchmarks(survey);
    std::ofstream logFile;
    if (!options.log.empty()) {
        logFile.open(options.log);
    }
    std::ostream& log = options.log.empty() ? std::cerr : logFile;
    const Figures figures = RunBenchmarks(log);
    LaunchSeries launches = RunLaunches(options);
    if (!options.windowsExe.empty()) {
        std::error_code error;
        const auto size = std::filesystem::file_size(options.windowsExe, error);
        launches.windowsExeBytes = error ? -1 : static_cast<double>(size);
    }
    const PeakMemory peaks = MeasurePeakMemory(options.console);
    std::vector<Row> rows =
        TargetRows(figures.medians, survey, launches, peaks, figures.spreads, figures.lowerQuartiles);
    AddReplayRows(rows, figures.medians, options.console, std::filesystem::temp_directory_path().string());
    std::cout << Render(rows) << std::flush;
    for (const Row& row : rows) {
        if (!row.pass) {
            return 1;
        }
    }
    return 0;
}

int BadCommandLine(const std::string& message) {
    std::fprintf(stderr, "vantrel_bench: %s\n\n%s", message.c_str(), kUsage);
    return 2;
}

}  // namespace

}  // namespace vantrel::bench

int main(int argc, char* argv[]) {
    using namespace vantrel::bench;
    bool table = false;
    TableOptions options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--table") {
            table = true;
        } else if (argument == "--console" || argument == "--minimal" || argument == "--launches" ||
                   argument == "--log" || argument == "--windows-console" || argument == "--windows-controls" ||
                   argument == "--windows-minimal" || argument == "--windows-exe") {
            if (i + 1 >= argc) {
                return BadCommandLine(std::string(argument) + " needs a value");
            }
            const std::string value = argv[++i];
            if (argument == "--console") {
                options.console = value;
            } else if (argument == "--minimal") {
                options.minimal = value;
            } else if (argument == "--log") {
                options.log = value;
            } else if (argument == "--windows-console") {
                options.windowsConsole = value;
            } else if (argument == "--windows-controls") {
                options.windowsControls = value;
            } else if (argument == "--windows-minimal") {
                options.windowsMinimal = value;
            } else if (argument == "--windows-exe") {
                options.windowsExe = value;
            } else {
                options.launches = std::atoi(value.c_str());
            }
        } else if (argument == "--help" && !table) {
            std::fputs(kUsage, stdout);
        }
    }
    if (table) {
        if (options.console.empty() || options.minimal.empty() || options.launches < 1) {
            return BadCommandLine("--table needs --console, --minimal and at least one launch");
        }
        if (options.windowsConsole.empty() != options.windowsControls.empty() ||
            options.windowsConsole.empty() != options.windowsMinimal.empty() ||
            options.windowsConsole.empty() != options.windowsExe.empty()) {
            return BadCommandLine(
                "--windows-console, --windows-controls, --windows-minimal and --windows-exe go together");
        }
        return RunTable(options);
    }
    RegisterSurveyBenchmarks(SurveyCommands());
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
