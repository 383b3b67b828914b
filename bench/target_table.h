#pragma once

#include <string>
#include <vector>

namespace vantrel::bench {

// One line of the targets table: what was measured, the goal, the figure
// with what it was compared against, and whether the goal was met.
struct Row {
    std::string figure;
    std::string target;
    std::string measured;
    bool pass = false;
};

// The middle sample (the mean of the middle two for an even count); NaN for
// no samples, which every row below reports as not measured.
double Median(std::vector<double> samples);
// Half the interquartile range as a share of the median: 0.05 when the middle
// half of the samples lies within 5 % of it. NaN for fewer than two.
double Spread(std::vector<double> samples);
// The value a quarter of the way up the sorted samples (between two of them
// where it falls between); NaN for no samples.
double LowerQuartile(std::vector<double> samples);
// "±3 %" of a spread; empty for NaN.
std::string SpreadText(double spread);

// "840 ns", "1.24 µs", "12.3 ms", "1.20 s": three significant digits.
std::string Duration(double seconds);
std::string Mebibytes(double bytes);
std::string Times(double ratio);

// seconds < limit
Row Under(std::string figure, double seconds, double limitSeconds, const std::string& detail = {});
// measured / baseline <= limit; the detail says what the two were.
Row Within(std::string figure, double measured, double baseline, double limitRatio, const std::string& detail);
// perSecond >= limit
Row AtLeast(std::string figure, double perSecond, double limitPerSecond, const std::string& what);

// The rows as one Markdown table, columns padded to line up.
std::string Render(const std::vector<Row>& rows);

}  // namespace vantrel::bench
