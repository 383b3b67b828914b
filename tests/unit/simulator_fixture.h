#pragma once

#include "simulator/simulator.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <memory>
#include <string_view>
#include <vector>

namespace vantrel::testing {

// A block as the console sends it: the lines, then one NUL.
inline Text Nul(TextView lines) {
    Text block(lines);
    block.push_back(u'\0');
    return block;
}

// The value of the first line KEY=... of an answer; "<missing>" when there
// is none, so that a missing line fails a comparison clearly.
inline Text Value(TextView answer, std::string_view key) {
    const Text prefix = FromUtf8(key) + u"=";
    std::size_t start = 0;
    while (start < answer.size()) {
        const std::size_t end = answer.find(u"\r\n", start);
        const TextView line = answer.substr(start, end == TextView::npos ? TextView::npos : end - start);
        if (line.substr(0, prefix.size()) == prefix) {
            return Text(line.substr(prefix.size()));
        }
        if (end == TextView::npos) {
            break;
        }
        start = end + 2;
    }
    return u"<missing>";
}

// The simulator on a manual clock: nothing moves unless a test says so.
class SimulatorHarness {
public:
    SimulatorHarness()
        : simulator_(std::make_unique<simulation::ManualClock>()) {}

    Simulator& simulator() { return simulator_; }
    simulation::ManualClock& clock() { return *simulator_.manualClock(); }
    void Seconds(double seconds) { simulator_.AdvanceTime(std::chrono::milliseconds(std::llround(seconds * 1000))); }

    void Put(std::string_view member, TextView value) { simulator_.Put(member, Variant::OfText(Text(value))); }
    Text Call(std::string_view member) { return ToText(simulator_.Call(member)); }
    std::int16_t Number(std::string_view member) { return ToInt16(simulator_.Call(member)); }
    Text About(std::string_view member, int position) {
        return ToText(simulator_.Call(member, Variant::OfInt16(static_cast<std::int16_t>(position))));
    }
    Text Position(int position) { return About("FuelingPositionInformation", position); }
    Text Position(int position, std::string_view key) { return Value(Position(position), key); }

    // The entries of the error queue, oldest first.
    std::vector<Text> Errors() {
        std::vector<Text> entries;
        const Text answer = Call("ReadErrorQue");
        for (std::size_t at = answer.find(u"Error="); at != Text::npos; at = answer.find(u"Error=", at + 1)) {
            if (at == 0 || answer[at - 1] == u'\n') {
                entries.push_back(answer.substr(at + 6, answer.find(u"\r\n", at) - at - 6));
            }
        }
        return entries;
    }

private:
    Simulator simulator_;
};

class SimulatorTest : public ::testing::Test, public SimulatorHarness {};

}  // namespace vantrel::testing
