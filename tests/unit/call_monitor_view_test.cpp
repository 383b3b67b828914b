// What the call monitor window says and keeps, whatever toolkit draws it:
// the status line, follow and pause, the selection through a filter, the
// detail line, the member list, search, export and Send again.
#include "monitor/call_monitor_view.h"

#include "support/call_events.h"
#include "support/drive_folder.h"
#include "support/test_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace vantrel {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::Field;
using Direction = CallMonitorModel::Direction;

const auto kWhen = std::chrono::system_clock::time_point() + 1h;

CallEvent Put(std::string member, Text value) {
    return testing::PutEvent(std::move(member), Variant::OfText(std::move(value)), {kWhen, 10us});
}

CallEvent Message(Text title) {
    return testing::BoxEvent(CallEvent::Op::MessageBox, u"Done", std::move(title), u"ok", CallEvent::Buttons::Ok,
                             kWhen);
}

class CallMonitorViewTest : public ::testing::Test {
protected:
    explicit CallMonitorViewTest(MonitorLimits limits = {})
        : feed_(limits)
        , view_(feed_, limits) {}

    CallMonitorView::Taken Feed(const std::vector<CallEvent>& events) {
        for (const CallEvent& event : events) {
            feed_.OnEvent(event);
        }
        return view_.Flush();
    }

    CallMonitorFeed feed_;
    CallMonitorView view_;
};

TEST_F(CallMonitorViewTest, ScrollingBackPausesAndCountsTheRowsThatCameBelow) {
    Feed({Put("Stop", u"05"), Put("Resume", u"05")});
    EXPECT_EQ("2 events", view_.StatusLine());
    EXPECT_FALSE(view_.ScrolledTo(true));  // already following

    EXPECT_TRUE(view_.ScrolledTo(false));
    Feed({Put("Stop", u"06")});
    Feed({Put("Resume", u"06"), Put("Stop", u"07")});
    EXPECT_EQ("5 events  \u00B7  auto-scroll paused, 3 new below", view_.StatusLine());

    EXPECT_TRUE(view_.ScrolledTo(true));
    EXPECT_EQ("5 events", view_.StatusLine());
    EXPECT_EQ("", view_.DroppedNote());
}

class CallMonitorViewAtItsLimits : public CallMonitorViewTest {
protected:
    CallMonitorViewAtItsLimits()
        : CallMonitorViewTest(MonitorLimits{3, 1000}) {}
};

TEST_F(CallMonitorViewAtItsLimits, SaysHowManyRowsLeftTheTopSoAPausedViewStaysPut) {
    Feed({Put("Stop", u"01"), Put("Stop", u"02")});
    view_.SetFollowing(false);
    const CallMonitorView::Taken taken = Feed({Put("Stop", u"03"), Put("Stop", u"04"), Put("Stop", u"05")});
    EXPECT_TRUE(taken.any);
    EXPECT_EQ(2u, taken.removedFront);
    EXPECT_EQ("3 events  \u00B7  auto-scroll paused, 3 new below", view_.StatusLine());
    EXPECT_EQ("2 older events dropped: the monitor keeps the newest 3 events and 1,000 characters",
              view_.DroppedNote());
    EXPECT_FALSE(view_.Flush().any);  // nothing queued
}

TEST_F(CallMonitorViewTest, TheSelectionOutlivesAFilterThatStillShowsIt) {
    Feed({Put("Stop", u"05"), Put("Resume", u"05"), Put("Stop", u"06")});
    view_.Select(2);
    view_.SetFilter("Stop", u"", false);
    EXPECT_EQ(std::optional<std::size_t>(1), view_.SelectedRow());
    EXPECT_EQ("3 events, 2 shown", view_.StatusLine());

    view_.SetFilter("", u"\\x30\\x35", false);  // "05" typed as escapes
    EXPECT_FALSE(view_.hasSelection());
    EXPECT_EQ("", view_.CurrentDetail().line);
}

TEST_F(CallMonitorViewTest, TheDetailNamesTheRowAndFallsBackToThePartThereIs) {
    Feed({Put("Authorize", Text(u"FuelingPosition=07\r\n") + u'\0')});
    view_.Select(0);
    view_.SetPart(EventPart::Answer);  // a put has none: what was sent shows
    CallMonitorView::Detail detail = view_.CurrentDetail();
    EXPECT_EQ("#1 put Authorize \u2014 sent: 21 characters", detail.line);
    EXPECT_EQ(u"FuelingPosition=07«CR»«LF»\n«NUL»", detail.text);
    EXPECT_EQ(2u, detail.hex.lineCount());

    Feed({Put("PrintOutput", Text(CallMonitorView::kDetailLimit + 1, u'A'))});
    view_.Select(1);
    detail = view_.CurrentDetail();
    EXPECT_EQ(
        "#2 put PrintOutput \u2014 sent: 16,385 characters (the text view draws the first 16,384, the hex view all)",
        detail.line);
    EXPECT_EQ(1025u, detail.hex.lineCount());
}

TEST_F(CallMonitorViewTest, ListsMembersThenBoxTitlesAndKeepsTheChosenOneThroughAClear) {
    using Choice = CallMonitorView::MemberChoice;
    Feed({Put("Stop", u"05"), Message(u"VantrelTest"), Put("Authorize", u"x")});
    const auto choices = view_.MemberChoices("");
    ASSERT_TRUE(choices);
    EXPECT_THAT(*choices, ElementsAre(Field(&Choice::label, "All members"), Field(&Choice::label, "Authorize"),
                                      Field(&Choice::label, "Stop"), Field(&Choice::label, "box: VantrelTest")));
    EXPECT_TRUE(choices->back().separatorBefore);
    EXPECT_EQ("VantrelTest", choices->back().member);
    EXPECT_FALSE(view_.MemberChoices(""));  // nothing new

    view_.Clear();
    const auto cleared = view_.MemberChoices("Stop");
    ASSERT_TRUE(cleared);
    EXPECT_THAT(*cleared, ElementsAre(Field(&Choice::member, ""), Field(&Choice::member, "Stop")));
}

TEST_F(CallMonitorViewTest, SearchesFromTheCurrentRowAndSaysWhenNoRowHoldsTheText) {
    Feed({Put("Stop", u"05"), Put("Resume", u"05"), Put("Stop", u"06")});
    EXPECT_EQ(std::optional<std::size_t>(0), view_.Find(u"stop", std::nullopt, Direction::Forward));
    EXPECT_EQ(std::optional<std::size_t>(2), view_.Find(u"stop", 0, Direction::Forward));
    EXPECT_EQ(std::optional<std::size_t>(2), view_.Find(u"stop", 0, Direction::Backward));
    EXPECT_FALSE(view_.Find(u"Price\\r", 1, Direction::Forward));
    EXPECT_EQ("3 events  \u00B7  No row holds \u201CPrice\\r\u201D.", view_.StatusLine());
}

TEST_F(CallMonitorViewTest, ExportsByTheFilesEndingAndSaysWhereTheRowsWent) {
    const testing::DriveFolder folder;  // a fresh folder of the test's own
    Feed({Put("Stop", u"05")});
    const std::filesystem::path log = folder.root() / "calls.LOG";
    ASSERT_TRUE(view_.ExportTo(log));
    std::ifstream in(log, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    EXPECT_THAT(text.str(), ::testing::HasSubstr("\tStop\tput\t05\t05\t\t0.010 ms\n"));
    EXPECT_EQ("1 event  \u00B7  1 row written to " + log.string(), view_.StatusLine());

    EXPECT_FALSE(view_.ExportTo(folder.root() / "missing" / "calls.jsonl"));
    EXPECT_THAT(view_.StatusLine(), ::testing::HasSubstr("Cannot write "));
    const char* zone = std::getenv("TZ");
    const std::optional<std::string> saved = zone ? std::optional<std::string>(zone) : std::nullopt;
    setenv("TZ", "UTC0", 1);
    tzset();
    EXPECT_EQ("vantrel-calls-1970-01-01T01-00-00.jsonl", CallMonitorView::ExportName(kWhen));
    saved ? setenv("TZ", saved->c_str(), 1) : unsetenv("TZ");
    tzset();
}

TEST_F(CallMonitorViewTest, SendsTheSelectedRowAgainOrSaysWhyNot) {
    testing::RecordingServer server;
    view_.SendSelectedAgain(&server);
    EXPECT_THAT(view_.StatusLine(), ::testing::EndsWith("Select a put or call to send it again"));

    Feed({Put("Stop", u"05"), Message(u"VantrelTest")});
    view_.Select(0);
    view_.SendSelectedAgain(nullptr);
    EXPECT_THAT(view_.StatusLine(), ::testing::EndsWith("Not sent: there is no server"));
    view_.SendSelectedAgain(&server);
    EXPECT_THAT(view_.StatusLine(), ::testing::EndsWith("#1 sent again"));
    server.QueueFailure("Stop", RuntimeError(438, "Object doesn't support this property or method"));
    view_.SendSelectedAgain(&server);
    EXPECT_THAT(view_.StatusLine(), ::testing::EndsWith("#1 sent again: error 438"));
    ASSERT_EQ(2u, server.calls.size());
    EXPECT_EQ(u"05", server.calls[1].text());

    view_.Select(1);
    view_.SendSelectedAgain(&server);
    EXPECT_THAT(view_.StatusLine(), ::testing::HasSubstr("Not sent: "));
    EXPECT_EQ(2u, server.calls.size());
}

}  // namespace
}  // namespace vantrel
