#include "target_table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace vantrel::bench {

namespace {

constexpr char kNotMeasured[] = "not measured";

std::string ThreeDigits(double value, const char* unit) {
    char buffer[64];
    const char* format = value >= 100 ? "%.0f %s" : value >= 10 ? "%.1f %s" : "%.2f %s";
    std::snprintf(buffer, sizeof buffer, format, value, unit);
    return buffer;
}

bool Measured(double value) { return std::isfinite(value) && value >= 0; }

// Characters as a reader counts them: UTF-8 continuation bytes add nothing.
std::size_t Width(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string Padded(const std::string& text, std::size_t width) {
    return text + std::string(width - std::min(width, Width(text)), ' ');
}

}  // namespace

double Median(std::vector<double> samples) {
    if (samples.empty()) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const std::size_t middle = samples.size() / 2;
    std::nth_element(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(middle), samples.end());
    const double upper = samples[middle];
    if (samples.size() % 2 == 1) {
        return upper;
    }
    const double lower = *std::max_element(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(middle));
    return (lower + upper) / 2;
}

namespace {

// The value at that share of the sorted samples, between two samples where
// it falls between them.
double At(const std::vector<double>& sorted, double share) {
    const double place = share * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    return sorted[below] + (sorted[above] - sorted[below]) * (place - static_cast<double>(below));
}

}  // namespace

double Spread(std::vector<double> samples) {
    if (samples.size() < 2) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    std::sort(samples.begin(), samples.end());
    const double median = Median(samples);
    return median > 0 ? (At(samples, 0.75) - At(samples, 0.25)) / 2 / median : std::numeric_limits<double>::quiet_NaN();
}

double LowerQuartile(std::vector<double> samples) {
    if (samples.empty()) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    std::sort(samples.begin(), samples.end());
    return At(samples, 0.25);
}

std::string SpreadText(double spread) {
    if (std::isnan(spread)) {
        return {};
    }
    char text[32];
    std::snprintf(text, sizeof text, "\u00b1%.0f %%", spread * 100);
    return text;
}

std::string Duration(double seconds) {
    if (!Measured(seconds)) {
        return kNotMeasured;
    }
    if (seconds < 1e-6) {
        return ThreeDigits(seconds * 1e9, "ns");
    }
    if (seconds < 1e-3) {
        return ThreeDigits(seconds * 1e6, "µs");
    }
    if (seconds < 1) {
        return ThreeDigits(seconds * 1e3, "ms");
    }
    return ThreeDigits(seconds, "s");
}

std::string Mebibytes(double bytes) {
    return Measured(bytes) ? ThreeDigits(bytes / (1024.0 * 1024.0), "MiB") : kNotMeasured;
}

std::string Times(double ratio) {
    if (!Measured(ratio)) {
        return kNotMeasured;
    }
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.2fx", ratio);
    return buffer;
}

Row Under(std::string figure, double seconds, double limitSeconds, const std::string& detail) {
    Row row{std::move(figure), "< " + Duration(limitSeconds), Duration(seconds), false};
    row.pass = Measured(seconds) && seconds < limitSeconds;
    if (Measured(seconds) && !detail.empty()) {
        row.measured += " (" + detail + ")";
    }
    return row;
}

Row Within(std::string figure, double measured, double baseline, double limitRatio, const std::string& detail) {
    const double ratio = Measured(measured) && Measured(baseline) && baseline > 0
                             ? measured / baseline
                             : std::numeric_limits<double>::quiet_NaN();
    Row row{std::move(figure), "≤ " + Times(limitRatio), Times(ratio), false};
    row.pass = Measured(ratio) && ratio <= limitRatio;
    if (Measured(ratio)) {
        row.measured += " (" + detail + ")";
    }
    return row;
}

Row AtLeast(std::string figure, double perSecond, double limitPerSecond, const std::string& what) {
    const auto millions = [&what](double value) {
        return ThreeDigits(value / 1e6, ("million " + what + "/s").c_str());
    };
    Row row{std::move(figure), "≥ " + millions(limitPerSecond),
            Measured(perSecond) ? millions(perSecond) : kNotMeasured, false};
    row.pass = Measured(perSecond) && perSecond >= limitPerSecond;
    return row;
}

std::string Render(const std::vector<Row>& rows) {
    const std::vector<std::string> header = {"figure", "target", "measured", "result"};
    std::vector<std::vector<std::string>> cells = {header};
    for (const Row& row : rows) {
        cells.push_back({row.figure, row.target, row.measured, row.pass ? "pass" : "FAIL"});
    }
    std::vector<std::size_t> widths(header.size(), 3);
    for (const auto& line : cells) {
        for (std::size_t column = 0; column < line.size(); ++column) {
            widths[column] = std::max(widths[column], Width(line[column]));
        }
    }
    std::string table;
    const auto addLine = [&table, &widths](const std::vector<std::string>& line) {
        table += "|";
        for (std::size_t column = 0; column < line.size(); ++column) {
            table.append(" ").append(Padded(line[column], widths[column])).append(" |");
        }
        table += "\n";
    };
    addLine(cells.front());
    std::vector<std::string> rule;
    for (const std::size_t width : widths) {
        rule.push_back(std::string(width, '-'));
    }
    addLine(rule);
    for (std::size_t line = 1; line < cells.size(); ++line) {
        addLine(cells[line]);
    }
    return table;
}

}  // namespace vantrel::bench
