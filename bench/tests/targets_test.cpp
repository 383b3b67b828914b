#include "targets.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vantrel::bench {
namespace {

SurveyedCommand Command(const std::string& control) { return {"VantrelTest", control, {}, {}}; }

CommandSurvey SmallSurvey() {
    CommandSurvey survey;
    survey.fixedBlocks = {Command("Fillup"), Command("Price6"), Command("Beeper")};
    survey.preloadedMessages = Command("PreLoadMSGs");
    survey.priceSet = {"OtherDevicesForm", "SETPRICEBUTTON", {}, {}};
    return survey;
}

// Everything well inside its target.
Medians GoodMedians(const CommandSurvey& survey) {
    Medians medians;
    for (const SurveyedCommand& command : survey.fixedBlocks) {
        medians[ClickName(command)] = 200e-9;
        medians[AppendsName(command)] = 100e-9;
    }
    for (const SurveyedCommand* command : {&survey.preloadedMessages, &survey.priceSet}) {
        medians[ClickName(*command)] = 1e-6;
        medians[AppendsName(*command)] = 0.5e-6;
    }
    for (const int count : kPacketCounts) {
        medians[WithArgument(kPacketClick, count)] = count * 5e-9;
    }
    for (const long size : kImageSizes) {
        medians[WithArgument(kSetImage, size)] = static_cast<double>(size) * 1.8e-9;
        medians[WithArgument(kReadAndWiden, size)] = static_cast<double>(size) * 1.6e-9;
    }
    medians[kStressTick] = 1e-6;
    medians[kSimulatorPut] = 200e-9;
    return medians;
}

LaunchSeries GoodLaunches() {
    LaunchSeries launches;
    for (int i = 0; i < 3; ++i) {
        launches.console.push_back({true, 0.30 + i * 0.01, 0.060 + i * 0.002, 40e6, 0, ""});
        launches.minimal.push_back({true, 0.25, 0.050, 36e6, 0, ""});
    }
    return launches;
}

// Within the bounds: twice the image packet's size and 2.5 times the answer's.
PeakMemory GoodPeaks() { return {30e6, 2 * kImagePacketBytes, 2.5 * kAnswerBytes, ""}; }

const Row& RowStarting(const std::vector<Row>& rows, const std::string& start) {
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&start](const Row& row) { return row.figure.rfind(start, 0) == 0; });
    if (found == rows.end()) {
        throw std::runtime_error("no row " + start);
    }
    return *found;
}

TEST(TargetRows, OneRowPerTargetAllPassingOnGoodFigures) {
    const CommandSurvey survey = SmallSurvey();
    const std::vector<Row> rows =
        TargetRows(GoodMedians(survey), survey, GoodLaunches(), GoodPeaks(), {}, GoodMedians(survey));
    EXPECT_EQ(15u, rows.size());
    for (const Row& row : rows) {
        EXPECT_TRUE(row.pass) << row.figure << ": " << row.measured;
    }
    // CPU time decides; the wall time and each side's spread are shown.
    EXPECT_EQ("1.24x (62.0 ms vs 50.0 ms CPU (310 ms vs 250 ms wall), medians of 3 (spread \u00b12 % / \u00b10 %))",
              RowStarting(rows, "start-up").measured);
}

TEST(TargetRows, TheSlowestAndTheFurthestCommandAreNamed) {
    const CommandSurvey survey = SmallSurvey();
    Medians medians = GoodMedians(survey);
    medians["Click/VantrelTest.Price6"] = 2.5e-6;  // slowest, 2.5x
    medians["Appends/VantrelTest.Price6"] = 1e-6;
    medians["Click/VantrelTest.Beeper"] = 450e-9;  // fast, but 4.5x
    const std::vector<Row> rows = TargetRows(medians, survey, GoodLaunches(), GoodPeaks(), {}, medians);
    const Row& slowest = RowStarting(rows, "handler's own work, 3 fixed-block commands");
    EXPECT_FALSE(slowest.pass);
    EXPECT_EQ("2.50 µs (Price6)", slowest.measured);
    const Row& furthest = RowStarting(rows, "handler vs the same texts by plain appends, 3 fixed-block commands");
    EXPECT_FALSE(furthest.pass);
    EXPECT_EQ("4.50x (Beeper: 450 ns vs 100 ns)", furthest.measured);
}

TEST(TargetRows, AMissingFigureFailsItsRowAndNoOther) {
    const CommandSurvey survey = SmallSurvey();
    Medians medians = GoodMedians(survey);
    medians.erase("Appends/VantrelTest.Beeper");
    medians.erase(WithArgument(kReadAndWiden, kImageSizes[1]));
    const std::vector<Row> rows = TargetRows(medians, survey, GoodLaunches(), GoodPeaks(), {}, medians);
    int failed = 0;
    for (const Row& row : rows) {
        failed += row.pass ? 0 : 1;
    }
    EXPECT_EQ(3, failed);  // the group's two handler rows, the 64 MiB image
    EXPECT_FALSE(RowStarting(rows, "SET IMAGE, 64 MiB").pass);
    EXPECT_TRUE(RowStarting(rows, "SET IMAGE, 1 MiB").pass);
}

TEST(TargetRows, PacketLinearityIsTimePerCharacterAt30000AgainstAt999) {
    const CommandSurvey survey = SmallSurvey();
    Medians medians = GoodMedians(survey);
    medians[WithArgument(kPacketClick, 30000)] = 30000 * 10.5e-9;  // 2.1x the 5 ns at 999
    const std::vector<Row> rows = TargetRows(medians, survey, GoodLaunches(), GoodPeaks(), {}, medians);
    const Row& packet = RowStarting(rows, "packet input view");
    EXPECT_FALSE(packet.pass);
    EXPECT_EQ(0u, packet.measured.find("2.10x")) << packet.measured;
}

TEST(TargetRows, ALaunchThatWentWrongFailsStartUpAndMemoryWithItsProblem) {
    const CommandSurvey survey = SmallSurvey();
    LaunchSeries launches = GoodLaunches();
    launches.minimal[1].problem = "vantrel_minimal_window ended (exit code 134) without showing";
    const std::vector<Row> rows =
        TargetRows(GoodMedians(survey), survey, launches, GoodPeaks(), {}, GoodMedians(survey));
    for (const char* figure : {"start-up", "resident memory"}) {
        const Row& row = RowStarting(rows, figure);
        EXPECT_FALSE(row.pass);
        EXPECT_EQ("not measured: vantrel_minimal_window ended (exit code 134) without showing", row.measured);
    }
}

TEST(TargetRows, MemoryAndSimulatorRowsReadTheirOwnFigures) {
    const CommandSurvey survey = SmallSurvey();
    Medians medians = GoodMedians(survey);
    medians[kSimulatorPut] = 600e-9;  // 1.67 million a second
    LaunchSeries launches = GoodLaunches();
    for (Launch& launch : launches.console) {
        launch.residentBytes = 48e6;  // 1.33x the minimal program
    }
    const std::vector<Row> rows = TargetRows(medians, survey, launches, GoodPeaks(), {}, medians);
    EXPECT_FALSE(RowStarting(rows, "resident memory").pass);
    EXPECT_FALSE(RowStarting(rows, "built-in simulator").pass);
    EXPECT_TRUE(RowStarting(rows, "start-up").pass);
}

// SET IMAGE may take a quarter more than reading the file and widening it
// into fresh room, at each size on its own.
TEST(TargetRows, SetImageIsWithinAQuarterOfReadingAndWidening) {
    const CommandSurvey survey = SmallSurvey();
    Medians medians = GoodMedians(survey);
    medians[WithArgument(kSetImage, kImageSizes[0])] = 100e-6;
    medians[WithArgument(kReadAndWiden, kImageSizes[0])] = 80e-6;  // 1.25x: still within
    // At 64 MiB the lower quartiles count, whatever the medians say.
    medians[WithArgument(kSetImage, kImageSizes[1])] = 40e-3;
    medians[WithArgument(kReadAndWiden, kImageSizes[1])] = 200e-3;
    Medians quartiles = medians;
    quartiles[WithArgument(kSetImage, kImageSizes[1])] = 19e-3;
    quartiles[WithArgument(kReadAndWiden, kImageSizes[1])] = 15e-3;  // 1.27x
    const std::vector<Row> rows = TargetRows(medians, survey, GoodLaunches(), GoodPeaks(), {}, quartiles);
    const Row& small = RowStarting(rows, "SET IMAGE, 1 MiB file, vs reading it and widening it into fresh room");
    EXPECT_TRUE(small.pass);
    EXPECT_EQ("\u2264 1.25x", small.target);
    EXPECT_EQ("1.25x (100 \u00b5s vs 80.0 \u00b5s)", small.measured);
    const Row& large = RowStarting(rows, "SET IMAGE, 64 MiB file");
    EXPECT_FALSE(large.pass);
    EXPECT_EQ("1.27x (19.0 ms vs 15.0 ms, lower quartiles)", large.measured);
}

// The Windows program's rows come only when it was measured: its start-up
// and memory against the same window's controls in a plain Win32 program
// (1.2x each), its start-up against the one-button program's as printed,
// and its exe's size as printed.
TEST(TargetRows, TheWindowsProgramHasItsOwnRowsWhenMeasured) {
    const CommandSurvey survey = SmallSurvey();
    EXPECT_THROW(
        RowStarting(TargetRows(GoodMedians(survey), survey, GoodLaunches(), GoodPeaks(), {}, GoodMedians(survey)),
                    "Windows"),
        std::runtime_error);
    LaunchSeries launches = GoodLaunches();
    for (int i = 0; i < 3; ++i) {
        launches.windowsConsole.push_back({true, 0.12, 0.040, 25e6, 0, ""});   // 1.25x the CPU, 1.19x the memory
        launches.windowsControls.push_back({true, 0.10, 0.032, 21e6, 0, ""});  // of the same controls
        launches.windowsMinimal.push_back({true, 0.05, 0.010, 20e6, 0, ""});   // 4x the CPU of one button
    }
    launches.windowsExeBytes = 4.5 * 1024 * 1024;
    const std::vector<Row> rows =
        TargetRows(GoodMedians(survey), survey, launches, GoodPeaks(), {}, GoodMedians(survey));
    EXPECT_EQ(19u, rows.size());
    struct Expected {
        const char* figure;  // the row's start
        bool pass;
        const char* target;
        const char* measured;  // the measured text's start
    };
    for (const Expected& expected : {
             Expected{"Windows program under Wine: start-up to the window first shown, CPU time, vs its window's "
                      "controls in a plain Win32 program",
                      false, "\u2264 1.20x",
                      "1.25x (40.0 ms vs 32.0 ms CPU (120 ms vs 100 ms wall), medians of 3 (spread \u00b10 % / "
                      "\u00b10 %))"},
             Expected{"Windows program under Wine: resident memory", true, "\u2264 1.20x",
                      "1.19x (23.8 MiB vs 20.0 MiB, medians)"},
             Expected{"Windows program under Wine: start-up, CPU time, vs one-button", true, "printed",
                      "4.00x (40.0 ms vs 10.0 ms CPU"},
             Expected{"Windows program: size", true, "printed", "4.50 MiB"},
         }) {
        const Row& row = RowStarting(rows, expected.figure);
        EXPECT_EQ(expected.pass, row.pass) << expected.figure;
        EXPECT_EQ(expected.target, row.target) << expected.figure;
        EXPECT_EQ(0u, row.measured.find(expected.measured)) << row.measured;
    }
    // A one-button start that went wrong is no figure to print.
    launches.windowsMinimal[0].problem = "vantrel_win32_minimal_window ended without showing";
    EXPECT_FALSE(RowStarting(TargetRows(GoodMedians(survey), survey, launches, GoodPeaks(), {}, GoodMedians(survey)),
                             "Windows program under Wine: start-up, CPU time, vs one-button")
                     .pass);
}

TEST(TargetRows, PeakMemoryIsWhatBigDataAddsAgainstItsText) {
    const CommandSurvey survey = SmallSurvey();
    PeakMemory peaks = GoodPeaks();
    peaks.answerBytes = 3.2 * kAnswerBytes;
    std::vector<Row> rows = TargetRows(GoodMedians(survey), survey, GoodLaunches(), peaks, {}, GoodMedians(survey));
    EXPECT_TRUE(RowStarting(rows, "peak memory added by SET IMAGE").pass);
    EXPECT_EQ("2.00x (256 MiB added)", RowStarting(rows, "peak memory added by SET IMAGE").measured);
    EXPECT_FALSE(RowStarting(rows, "peak memory added by a 16 MiB answer").pass);
    peaks.problem = "a script run did not end with 0";
    rows = TargetRows(GoodMedians(survey), survey, GoodLaunches(), peaks, {}, GoodMedians(survey));
    EXPECT_EQ("not measured: a script run did not end with 0",
              RowStarting(rows, "peak memory added by SET IMAGE").measured);
}

TEST(TargetRows, ARatioShowsTheSpreadOfBothItsFigures) {
    const CommandSurvey survey = SmallSurvey();
    const Medians medians = GoodMedians(survey);
    Medians spreads;
    spreads[WithArgument(kSetImage, kImageSizes[0])] = 0.04;
    spreads[WithArgument(kReadAndWiden, kImageSizes[0])] = 0.125;
    const std::vector<Row> rows = TargetRows(medians, survey, GoodLaunches(), GoodPeaks(), spreads, medians);
    const std::string measured = RowStarting(rows, "SET IMAGE, 1 MiB").measured;
    EXPECT_NE(std::string::npos, measured.find("(spread \u00b14 % / \u00b112 %)")) << measured;
    // Without a spread for one of its figures a row shows none.
    EXPECT_EQ(std::string::npos, RowStarting(rows, "SET IMAGE, 64 MiB").measured.find("spread"));
}

}  // namespace
}  // namespace vantrel::bench
