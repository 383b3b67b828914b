#include "target_table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace vantrel::bench {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(Median, MiddleOfOddCountsMeanOfMiddleTwoOfEvenNoneForNothing) {
    EXPECT_EQ(3, Median({9, 3, 1}));
    EXPECT_EQ(2.5, Median({4, 1, 3, 2}));
    EXPECT_EQ(7, Median({7}));
    EXPECT_TRUE(std::isnan(Median({})));
}

TEST(Spread, HalfTheInterquartileRangeAsAShareOfTheMedian) {
    EXPECT_DOUBLE_EQ(1.0 / 3, Spread({5, 1, 4, 2, 3}));  // quartiles 2 and 4, median 3
    EXPECT_EQ(0, Spread({10, 10}));
    EXPECT_TRUE(std::isnan(Spread({5})));
    EXPECT_EQ("\u00b133 %", SpreadText(1.0 / 3));
    EXPECT_EQ("", SpreadText(std::nan("")));
}

TEST(LowerQuartile, AQuarterOfTheWayUpTheSortedSamples) {
    EXPECT_EQ(2, LowerQuartile({5, 1, 4, 2, 3}));
    EXPECT_EQ(1.75, LowerQuartile({4, 1, 3, 2}));  // three quarters of the way from 1 to 2
    // Nine samples, five fast: the third smallest.
    EXPECT_EQ(31, LowerQuartile({30, 200, 31, 250, 29, 300, 33, 35, 220}));
    EXPECT_TRUE(std::isnan(LowerQuartile({})));
}

TEST(Duration, ThreeSignificantDigitsInTheFittingUnit) {
    const struct {
        double seconds;
        const char* text;
    } cases[] = {
        {840e-9, "840 ns"}, {1.234e-6, "1.23 µs"}, {12.34e-3, "12.3 ms"}, {1.2, "1.20 s"}, {kNaN, "not measured"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.text, Duration(c.seconds)) << c.seconds;
    }
    EXPECT_EQ("40.0 MiB", Mebibytes(40.0 * 1024 * 1024));
}

TEST(Rows, LimitsHoldAtTheBoundaryOnlyWhereTheTargetSaysSo) {
    // "under" is strict; "within" and "at least" include the limit.
    EXPECT_FALSE(Under("f", 2e-6, 2e-6).pass);
    EXPECT_TRUE(Under("f", 1.99e-6, 2e-6).pass);
    EXPECT_TRUE(Within("f", 3, 1, 3, "").pass);
    EXPECT_FALSE(Within("f", 3.01, 1, 3, "").pass);
    EXPECT_TRUE(AtLeast("f", 2e6, 2e6, "assignments").pass);
    EXPECT_FALSE(AtLeast("f", 1.99e6, 2e6, "assignments").pass);
}

TEST(Rows, WhatWasNotMeasuredFailsAndSaysSo) {
    for (const Row& row :
         {Under("f", kNaN, 1), Within("f", kNaN, 1, 2, "x"), Within("f", 1, 0, 2, "x"), AtLeast("f", kNaN, 1, "a")}) {
        EXPECT_FALSE(row.pass);
        EXPECT_EQ("not measured", row.measured);
    }
}

TEST(Rows, RatiosShowBothSidesOfTheComparison) {
    const Row row = Within("start-up", 0.3, 0.2, 1.5, "300 ms vs 200 ms");
    EXPECT_EQ("≤ 1.50x", row.target);
    EXPECT_EQ("1.50x (300 ms vs 200 ms)", row.measured);
    EXPECT_EQ("< 50.0 µs", Under("tick", 1e-6, 50e-6).target);
    EXPECT_EQ("4.25 million assignments/s", AtLeast("puts", 4.25e6, 2e6, "assignments").measured);
}

TEST(Render, OneAlignedMarkdownTableWithFailuresInCapitals) {
    const std::string table = Render({Under("tick", 1e-6, 50e-6), Within("start-up µ", 2, 1, 1.5, "2 vs 1")});
    std::istringstream lines(table);
    std::vector<std::string> rows;
    for (std::string line; std::getline(lines, line);) {
        rows.push_back(line);
    }
    ASSERT_EQ(4u, rows.size());
    EXPECT_EQ(0u, rows[0].find("| figure"));
    EXPECT_NE(std::string::npos, rows[2].find("| pass"));
    EXPECT_NE(std::string::npos, rows[3].find("| FAIL"));
    // Equal widths as a reader counts characters: every "|" lines up.
    const auto bars = [](const std::string& row) {
        std::vector<std::size_t> at;
        std::size_t column = 0;
        for (const char c : row) {
            if ((static_cast<unsigned char>(c) & 0xC0) == 0x80) {
                continue;
            }
            if (c == '|') {
                at.push_back(column);
            }
            ++column;
        }
        return at;
    };
    for (const std::string& row : rows) {
        EXPECT_EQ(bars(rows[0]), bars(row)) << row;
    }
}

}  // namespace
}  // namespace vantrel::bench
