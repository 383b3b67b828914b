#pragma once

#include "command_survey.h"

namespace vantrel::bench {

// The benchmarks that are made from the command survey rather than written
// out: a click and its plain appends for every surveyed command, and the
// simulator's assignments replayed from what the commands sent.
void RegisterSurveyBenchmarks(const CommandSurvey& survey);
void RegisterSimulatorBenchmark(const CommandSurvey& survey);

}  // namespace vantrel::bench
