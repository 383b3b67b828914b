#include "command_survey.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vantrel::bench {
namespace {

const CommandSurvey& Survey() {
    static const CommandSurvey survey = SurveyCommands();
    return survey;
}

const SurveyedCommand* FixedBlock(const std::string& control) {
    const auto& commands = Survey().fixedBlocks;
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&control](const SurveyedCommand& command) { return command.control == control; });
    return found == commands.end() ? nullptr : &*found;
}

TEST(SurveyCommands, FixedBlocksAreTheButtonsThatSendABlockAndAskNothing) {
    // Sends a block: in, whatever window it is on.
    for (const char* control : {"Fillup", "Price6", "PRICE_SIGN_SEND_PRICES", "iXCAT_FORMAT_LINE", "PACKETPRN"}) {
        EXPECT_NE(nullptr, FixedBlock(control)) << control;
    }
    // A bare value, a number, a read, a box, a window, a file: out.
    for (const char* control : {"Stop", "TMStartReport", "SystemVersions", "MultiHoseLock", "OTHERDEVICESBUTTON",
                                "SET_IMAGE_BUTTON", "STRESS_BUTTON"}) {
        EXPECT_EQ(nullptr, FixedBlock(control)) << control;
    }
    // The two with figures of their own are not counted twice.
    EXPECT_EQ(nullptr, FixedBlock("PreLoadMSGs"));
    EXPECT_EQ(nullptr, FixedBlock("SETPRICEBUTTON"));
}

TEST(SurveyCommands, ACommandsTextsAreWhatItShowedAndSentEachOnce) {
    const SurveyedCommand* fillup = FixedBlock("Fillup");
    ASSERT_NE(nullptr, fillup);
    const Text block = u"FuelingPosition=01\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n" + Text(1, kNul);
    // The block went to CommandData and the data box too; it is built once.
    EXPECT_EQ((std::vector<Text>{u"<Object>.Authorize = (data)", block}), fillup->texts);
    ASSERT_EQ(1u, fillup->assignments.size());
    EXPECT_EQ("Authorize", fillup->assignments[0].first);
}

TEST(SurveyCommands, ThePreloadedMessagesAndPriceSetAreFoundWithAllTheyDo) {
    const SurveyedCommand& preloaded = Survey().preloadedMessages;
    EXPECT_EQ("PreLoadMSGs", preloaded.control);
    ASSERT_EQ(9u, preloaded.assignments.size());
    for (const auto& [member, value] : preloaded.assignments) {
        EXPECT_EQ("PreloadDisplayMessage", member);
    }
    EXPECT_EQ(10u, preloaded.texts.size());  // the echo and nine blocks; the shown ninth is one of them

    const SurveyedCommand& priceSet = Survey().priceSet;
    EXPECT_EQ("SETPRICEBUTTON", priceSet.control);
    ASSERT_EQ(1u, priceSet.assignments.size());
    EXPECT_EQ("CarWashInformationRequest", priceSet.assignments[0].first);
}

TEST(AppendPlan, BuildsEverySurveyedTextExactly) {
    std::vector<const SurveyedCommand*> commands = {&Survey().preloadedMessages, &Survey().priceSet};
    for (const SurveyedCommand& command : Survey().fixedBlocks) {
        commands.push_back(&command);
    }
    for (const SurveyedCommand* command : commands) {
        const AppendPlan plan(command->texts);
        ASSERT_EQ(command->texts.size(), plan.size());
        for (std::size_t index = 0; index < plan.size(); ++index) {
            EXPECT_EQ(command->texts[index], plan.Build(index)) << command->control << " text " << index;
        }
    }
}

TEST(AppendPlan, MixedLineEndsAndATextWithoutAnEndSurviveTheSplit) {
    const std::vector<Text> texts = {u"A=1\r\nB=2\nC=3", u"\n\n", u"", Text(u"D\r\n") + kNul};
    const AppendPlan plan(texts);
    for (std::size_t index = 0; index < texts.size(); ++index) {
        EXPECT_EQ(texts[index], plan.Build(index)) << index;
    }
}

}  // namespace
}  // namespace vantrel::bench
