#pragma once

#include "server/server_calls.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

// The call monitor's data, without Qt: what each event looks like as a row,
// how a text is drawn with visible control characters and as hex lines, the
// filter, the search and the limits. The window only renders what this gives.
namespace vantrel {

using EventPointer = std::shared_ptr<const CallEvent>;

// How much the monitor keeps. Older events are dropped first; the newest one
// is always kept, however large.
struct MonitorLimits {
    std::size_t rows = 50'000;
    std::size_t characters = 64u * 1024 * 1024;  // texts sent and answered, summed
};

// An event with its number in the session (1 for the first), counted when
// it happened, so numbers stay true when older events are dropped.
struct MonitorEntry {
    std::uint64_t number = 0;
    EventPointer event;
};

// Events in arrival order, trimmed from the front to the limits.
class BoundedEvents {
public:
    explicit BoundedEvents(MonitorLimits limits);

    void Push(MonitorEntry entry);
    // How many events from the front must go so that the rest fits.
    std::size_t Excess() const;
    void DropFront(std::size_t count);
    void Clear();

    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    const MonitorEntry& operator[](std::size_t index) const { return entries_[index]; }
    std::deque<MonitorEntry> TakeAll();

private:
    MonitorLimits limits_;
    std::deque<MonitorEntry> entries_;
    std::size_t characters_ = 0;
};

// The listener registered from start-up. It only copies the event into a
// queue, so a command never waits for the view; the window takes the queue
// in batches. While no window takes it, the queue keeps to the limits.
class CallMonitorFeed final : public CallListener {
public:
    explicit CallMonitorFeed(MonitorLimits limits = {});

    void OnEvent(const CallEvent& event) override;
    void OnSharedEvent(const std::shared_ptr<const CallEvent>& event) override;

    struct Batch {
        std::deque<MonitorEntry> entries;
        std::uint64_t dropped = 0;  // events lost before they were taken
    };
    Batch Take();

private:
    std::mutex mutex_;
    BoundedEvents pending_;
    std::uint64_t count_ = 0;
    std::uint64_t dropped_ = 0;
};

// Number of characters a text part of the event holds (sent, answered,
// message); what the character limit counts.
std::size_t CharactersOf(const CallEvent& event);

enum class SymbolLines {
    BreakAfterCrLf,  // the detail view: a line ends after each CR LF
    OneLine,         // a table cell
};

// Runs of NUL at least this long are drawn once with their count.
inline constexpr std::size_t kFoldNulRun = 8;

// Draws a text so that every character can be seen, in any font: the codes
// below 32 by their names in guillemets («CR» «LF» «NUL» «ESC» «SUB» «ETX»
// «TAB» ...), DEL as «DEL», codes above 126 as their escape (\xE9 as «xE9»,
// \u20AC as «u20AC»), and a run of kFoldNulRun or more NULs as
// «NUL × count». A guillemet in the text is itself drawn as «xAB» or «xBB»,
// so a marked name never stands for the letters of the text. At most
// `limit` characters of the text are drawn; the rest is counted in a note.
Text SymbolText(TextView text, SymbolLines lines, std::size_t limit);

// The hex view: one line per 16 characters, "offset  cells  |text|". Cells
// have two hex digits, or four for every cell when the text holds a
// character above 255, so that the columns stay aligned. The text column
// shows printable ASCII and a dot for anything else. Two or more whole lines
// of NUL fold into one line, «NUL × count»; the offset of the next line
// shows where the run ended.
class HexLayout {
public:
    static constexpr std::size_t kPerLine = 16;

    HexLayout() = default;
    // Keeps the text alive through `owner` (the event it belongs to).
    HexLayout(std::shared_ptr<const void> owner, TextView text);

    std::size_t lineCount() const { return lineCount_; }
    bool wide() const { return wide_; }
    // Built on demand: the view asks only for the lines it shows.
    Text Line(std::size_t index) const;

private:
    struct Fold {
        std::size_t displayLine;
        std::size_t sourceLine;
        std::size_t lines;
    };
    std::shared_ptr<const void> owner_;
    TextView text_;
    std::vector<Fold> folds_;
    std::size_t lineCount_ = 0;
    bool wide_ = false;
};

// The member column: the member called, the ProgID created, a box's title.
Text MonitorMember(const CallEvent& event);
// The kind column, named as in the trace: "put", "call byref", "msgbox yesno".
std::string MonitorKind(const CallEvent& event);

// Resolves the escapes of an escaped literal (\r \n \t \0 \e \\ \" \xHH
// \uHHHH) in what the technician typed into a filter or search box. A
// backslash that starts no complete escape stays as it is.
Text Unescaped(TextView typed);

// Which part of an event the detail views show.
enum class EventPart {
    Sent,
    Answer,
};

// A part of an event: its text when it has one, or a short description (a
// number, an error, nothing).
struct PartView {
    bool present = false;
    bool isText = false;
    std::shared_ptr<const Text> text;  // when isText; alive with the event
    Text description;                  // otherwise
};
PartView PartOf(const EventPointer& event, EventPart part);

// The rows of the monitor: kept events, the filter over them, the cells.
class CallMonitorModel {
public:
    enum class Column {
        Number,
        Time,
        Member,
        Kind,
        Position,  // the fueling position the block or call addressed
        Sent,
        Answer,
        ServerTime,
    };
    static constexpr int kColumnCount = 8;
    // Characters of a value drawn in a table cell; the rest is counted.
    static constexpr std::size_t kCellLimit = 160;

    // Told before and after each change of the shown rows, so a view can
    // follow (insertions at the end, removals at the front, resets).
    class Observer {
    public:
        virtual ~Observer() = default;
        virtual void BeforeAppend(std::size_t first, std::size_t count) = 0;
        virtual void AfterAppend() = 0;
        virtual void BeforeRemoveFront(std::size_t count) = 0;
        virtual void AfterRemoveFront() = 0;
        virtual void BeforeReset() = 0;
        virtual void AfterReset() = 0;
    };

    explicit CallMonitorModel(MonitorLimits limits = {});

    void SetObserver(Observer* observer) { observer_ = observer; }
    const MonitorLimits& limits() const { return limits_; }

    void Append(CallMonitorFeed::Batch batch);
    void Clear();

    // An empty member shows all members; the text is matched, ignoring the
    // case of ASCII letters, in the member, the values sent and answered
    // and the error.
    // errorsOnly: only failed calls and error reports.
    void SetFilter(std::string member, Text text, bool errorsOnly = false);
    bool filtered() const { return !member_.empty() || !text_.empty() || errorsOnly_; }

    std::size_t size() const { return shown_.size(); }  // rows shown
    std::size_t keptCount() const { return kept_.size(); }
    std::uint64_t droppedCount() const { return dropped_; }
    // Members and box titles seen since the start or the last Clear.
    // Server members seen so far, and apart from them the titles of boxes.
    const std::set<std::string>& members() const { return members_; }
    const std::set<std::string>& boxTitles() const { return boxTitles_; }

    const EventPointer& Event(std::size_t row) const;
    std::uint64_t Number(std::size_t row) const;  // 1 for the session's first event
    // The shown row of the event with that number, if it is shown.
    std::optional<std::size_t> RowOf(std::uint64_t number) const;
    Text Cell(std::size_t row, Column column) const;

    // The next shown row after `from` (or before it) that holds the text,
    // wrapping around; `from` itself is tried last.
    enum class Direction {
        Forward,
        Backward,
    };
    std::optional<std::size_t> Find(TextView text, std::size_t from, Direction direction) const;

    // One line with every field of the row, values as escaped literals:
    //   12:00:01.250 put Authorize "FuelingPosition=07\r\n...\0"
    //   12:00:02.004 call byref DispenserInformation i2 7 -> "FP=07\r\n..."
    std::string RowLiteral(std::size_t row) const;
    // The shown rows in the trace format, one JSON object a line, each with
    // its time first ("time":"2026-11-24T15:30:12.345") and, for a server
    // call, the time the server took ("server_ms":0.180).
    void ExportJsonLines(std::ostream& out) const;
    // The shown rows as a plain log: the table's cells between tabs, the
    // date with the time, one line a row.
    void ExportText(std::ostream& out) const;

private:
    class Matcher;
    bool Accepts(const CallEvent& event, const Matcher* matcher) const;
    const MonitorEntry& Entry(std::size_t row) const;
    void Rebuild();

    MonitorLimits limits_;
    Observer* observer_ = nullptr;
    BoundedEvents kept_;
    // Rows are addressed by position: kept_[0] is at firstPosition_, and
    // shown_ holds the positions of the rows that pass the filter.
    std::uint64_t firstPosition_ = 0;
    std::deque<std::uint64_t> shown_;
    std::uint64_t dropped_ = 0;
    std::set<std::string> members_;
    std::set<std::string> boxTitles_;
    std::string member_;
    Text text_;
    bool errorsOnly_ = false;
};

// The calendar time in the user's time zone.
std::tm LocalTime(std::chrono::system_clock::time_point when);
// Local time of day with milliseconds, "HH:MM:SS.mmm".
std::string ClockText(std::chrono::system_clock::time_point when);
// How long the server took, in milliseconds with three decimals.
std::string DurationText(std::chrono::nanoseconds duration);
// 10485760 as "10,485,760".
std::string Grouped(std::uint64_t number);

}  // namespace vantrel
