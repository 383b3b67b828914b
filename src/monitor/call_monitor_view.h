#pragma once

#include "monitor/call_monitor_model.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantrel {

// What the call monitor window decides, whatever draws it: what follow does,
// what the filter keeps selected, where a search lands, what is copied,
// exported and sent again, what the detail views and the status line say.
// A window only draws this and forwards the technician's input. Texts for
// the technician are UTF-8.
class CallMonitorView {
public:
    // Characters of the selected value drawn in the text view; the hex view
    // has them all. A text view lays out a line without breaks whole, so
    // more would make selecting a large answer slow.
    static constexpr std::size_t kDetailLimit = 16 * 1024;

    CallMonitorView(CallMonitorFeed& feed, MonitorLimits limits);

    const CallMonitorModel& model() const { return model_; }
    // For a toolkit's table model, which observes the rows.
    CallMonitorModel& model() { return model_; }

    // Takes the events queued by the feed into the rows. While following,
    // the window shows the newest row; paused, it keeps the rows the
    // technician reads in place: `removedFront` rows went from the top.
    struct Taken {
        bool any = false;
        std::size_t removedFront = 0;
    };
    Taken Flush();

    bool following() const { return following_; }
    void SetFollowing(bool following);
    // The technician scrolled: back pauses, to the end resumes. True when
    // that changed the following.
    bool ScrolledTo(bool atEnd);

    // The member chosen (empty for all), the filter text as typed (script
    // escapes), errors only. The selected event stays selected when it
    // still shows (SelectedRow), else the detail goes with it.
    void SetFilter(std::string member, TextView typed, bool errorsOnly);

    // The row the technician picked: the detail follows it. Nothing keeps
    // the last one shown, as after a filter change.
    void Select(std::optional<std::size_t> row);
    std::optional<std::size_t> SelectedRow() const;
    bool hasSelection() const { return selected_ != nullptr; }
    void SetPart(EventPart part) { part_ = part; }

    struct Detail {
        std::string line;  // "#12 call Member — answer: 1,234 characters"
        Text text;         // the text view's content
        HexLayout hex;     // the hex view's lines
    };
    Detail CurrentDetail() const;

    // The next row holding the typed text (script escapes) after the current
    // row, or the first one; nothing, with a message, when no row holds it.
    std::optional<std::size_t> Find(TextView typed, std::optional<std::size_t> current,
                                    CallMonitorModel::Direction direction);
    // The rows as escaped literals, one a line, in the table's order.
    std::string CopyText(std::vector<std::size_t> rows) const;
    // Forgets every row, also those still queued.
    void Clear();

    // The dated name an export offers: "vantrel-calls-2026-11-24T15-30-12.jsonl".
    static std::string ExportName(std::chrono::system_clock::time_point now);
    // The shown rows (Flush first for the newest): a .txt or .log file gets
    // the plain log, any other the trace format. The status line says where they went or that they
    // could not be written.
    bool ExportTo(const std::filesystem::path& path);

    // Sends the selected put or call again through `server` (null: there is
    // none); the status line says what happened, a failure by its number.
    // The new event comes through the feed, like any other.
    void SendSelectedAgain(AutomationObject* server);

    // The member list: all members, the server's members seen, then the box
    // titles apart. Nothing when it has not changed since the last call.
    struct MemberChoice {
        std::string label;
        std::string member;  // what SetFilter takes
        bool separatorBefore = false;
    };
    std::optional<std::vector<MemberChoice>> MemberChoices(const std::string& chosen);

    // A result for the status line from elsewhere in the window (a comparison).
    void Say(std::string message) { message_ = std::move(message); }

    // "1,234 events, 12 shown  ·  auto-scroll paused, 3 new below  ·  ..."
    std::string StatusLine() const;
    // The red note of events dropped to keep within the limits; empty when
    // none was.
    std::string DroppedNote() const;

private:
    CallMonitorFeed& feed_;
    CallMonitorModel model_;
    EventPointer selected_;
    std::uint64_t selectedNumber_ = 0;
    EventPart part_ = EventPart::Answer;
    bool following_ = true;
    std::size_t newWhilePaused_ = 0;
    std::size_t listedNames_ = static_cast<std::size_t>(-1);  // members and box titles listed
    std::string message_;                                     // the last search, export or send result
};

}  // namespace vantrel
