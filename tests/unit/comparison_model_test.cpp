// The call monitor's comparison rows: verdicts as the view names them, and
// the characters of the old and new answer that the views mark.
#include "monitor/comparison_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantrel {
namespace {

using Ranges = std::vector<std::pair<std::size_t, std::size_t>>;

RecordReader::Entry Called(std::uint64_t number, const char* member, Text answer) {
    RecordReader::Entry entry;
    entry.number = number;
    entry.event.op = CallEvent::Op::Call;
    entry.event.member = member;
    entry.event.result = Variant::OfText(std::move(answer));
    return entry;
}

Outcome Now(Variant result) {
    Outcome outcome;
    outcome.result = std::move(result);
    return outcome;
}

TEST(ComparisonModel, RowsKeepTheVerdictAndMarkWhatDiffers) {
    ComparisonModel model;
    const RecordReader::Entry same = Called(2, "SystemVersions", u"App=10.29\r\n");
    model.OnReplayed(same, Now(*same.event.result), Now(Variant::OfText(u"App=10.29\r\n")),
                     Comparison{Verdict::Same, {}});
    const RecordReader::Entry changed = Called(5, "FuelingPositionInformation", u"Volume=1.000\r\nState=Idle\r\n");
    model.OnReplayed(changed, Now(*changed.event.result), Now(Variant::OfText(u"Volume=12.500\r\nState=Idle\r\n")),
                     Comparison{Verdict::Changed, {"key Volume changed"}});
    Outcome raised;
    raised.error = RuntimeError(57, "Device I/O error");
    model.OnReplayed(Called(7, "CardQue", u""), Now(Variant::OfText(u"")), raised,
                     Comparison{Verdict::NewError, {"new error"}});

    ASSERT_EQ(model.size(), 3u);
    EXPECT_EQ(model.row(1).number, 5u);
    EXPECT_EQ(model.row(1).member, "FuelingPositionInformation");
    EXPECT_EQ(VerdictText(model.row(1).verdict), "changed");
    EXPECT_EQ(VerdictText(model.row(2).verdict), "new error");

    const auto [oldSame, newSame] = model.Sides(0);
    EXPECT_EQ(oldSame.text, u"App=10.29\r\n");
    EXPECT_TRUE(oldSame.marked.empty());
    EXPECT_TRUE(newSame.marked.empty());

    // Both start "Volume=1" (8 characters) and end "00\r\nState=Idle\r\n";
    // between them the old answer has ".0", the new one "2.5".
    const auto [oldChanged, newChanged] = model.Sides(1);
    EXPECT_EQ(oldChanged.marked, (Ranges{{8, 10}}));  // ".0"
    EXPECT_EQ(newChanged.marked, (Ranges{{8, 11}}));  // "2.5"

    const auto [oldError, newError] = model.Sides(2);
    EXPECT_EQ(oldError.text, u"");
    EXPECT_TRUE(oldError.marked.empty());
    EXPECT_EQ(newError.text, u"error 57 Device I/O error");
    EXPECT_EQ(newError.marked, (Ranges{{0, 25}}));
}

}  // namespace
}  // namespace vantrel
