#pragma once

#include "server/text.h"
#include "server/variant.h"

#include <string>
#include <utility>
#include <vector>

namespace vantrel::bench {

// One console command as one click of it went: the texts it made (the
// blocks it sent and the texts it showed, each once, in order) and its
// assignments to the server.
struct SurveyedCommand {
    std::string form;
    std::string control;
    std::vector<Text> texts;
    std::vector<std::pair<std::string, Variant>> assignments;  // member, value
};

// The commands whose handler work is timed: every button of every window
// that sends at least one command data block (key=value lines) and opens
// neither a box nor a window (the fixed blocks), and the two larger commands
// that have figures of their own, the nine preloaded messages and PRICE SET.
struct CommandSurvey {
    std::vector<SurveyedCommand> fixedBlocks;
    SurveyedCommand preloadedMessages;
    SurveyedCommand priceSet;
};

// Clicks every button once on a fresh quiet console and sorts them.
CommandSurvey SurveyCommands();

// The floor a handler is held against: the same texts built anew with plain
// appends, one line (with its own terminator) at a time, into an empty text.
class AppendPlan {
public:
    explicit AppendPlan(std::vector<Text> texts);

    std::size_t size() const { return texts_.size(); }
    // Builds text `index` from its lines.
    Text Build(std::size_t index) const;

private:
    std::vector<Text> texts_;
    std::vector<std::vector<TextView>> lines_;
};

}  // namespace vantrel::bench
