#include "call_monitor_view.h"

#include "monitor/send_again.h"

#include <algorithm>
#include <fstream>

namespace vantrel {

namespace {

// "1 event", "2 events", "12,345 events".
std::string Counted(std::uint64_t count, const char* one, const char* many) {
    return Grouped(count) + ' ' + (count == 1 ? one : many);
}

bool EndsWithInAnyCase(std::string text, std::string_view ending) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text.size() >= ending.size() && text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

}  // namespace

CallMonitorView::CallMonitorView(CallMonitorFeed& feed, MonitorLimits limits)
    : feed_(feed)
    , model_(limits) {}

CallMonitorView::Taken CallMonitorView::Flush() {
    CallMonitorFeed::Batch batch = feed_.Take();
    if (batch.entries.empty() && batch.dropped == 0) {
        return {};
    }
    const std::size_t before = model_.size();
    const std::optional<std::uint64_t> lastBefore =
        before > 0 ? std::optional<std::uint64_t>(model_.Number(before - 1)) : std::nullopt;
    model_.Append(std::move(batch));
    // The old rows still shown are those up to the last one of before.
    const std::optional<std::size_t> lastNow = lastBefore ? model_.RowOf(*lastBefore) : std::nullopt;
    const std::size_t oldKept = lastNow ? *lastNow + 1 : 0;
    Taken taken{true, before - oldKept};
    if (!following_) {
        newWhilePaused_ += model_.size() - oldKept;
    }
    return taken;
}

void CallMonitorView::SetFollowing(bool following) {
    following_ = following;
    if (following) {
        newWhilePaused_ = 0;
    }
}

bool CallMonitorView::ScrolledTo(bool atEnd) {
    if (atEnd == following_) {
        return false;
    }
    SetFollowing(atEnd);
    return true;
}

void CallMonitorView::SetFilter(std::string member, TextView typed, bool errorsOnly) {
    model_.SetFilter(std::move(member), Unescaped(typed), errorsOnly);
    if (selected_ && !model_.RowOf(selectedNumber_)) {
        selected_.reset();
    }
}

void CallMonitorView::Select(std::optional<std::size_t> row) {
    if (!row || *row >= model_.size()) {
        return;
    }
    selected_ = model_.Event(*row);
    selectedNumber_ = model_.Number(*row);
}

std::optional<std::size_t> CallMonitorView::SelectedRow() const {
    return selected_ ? model_.RowOf(selectedNumber_) : std::nullopt;
}

CallMonitorView::Detail CallMonitorView::CurrentDetail() const {
    Detail detail;
    if (!selected_) {
        return detail;
    }
    EventPart wanted = part_;
    PartView part = PartOf(selected_, wanted);
    if (!part.present) {
        // A put has no answer, a call without argument sends nothing: show
        // the part there is.
        wanted = wanted == EventPart::Answer ? EventPart::Sent : EventPart::Answer;
        part = PartOf(selected_, wanted);
    }
    detail.line = "#" + std::to_string(selectedNumber_) + ' ' + MonitorKind(*selected_) + ' ' +
                  ToUtf8(SymbolText(MonitorMember(*selected_), SymbolLines::OneLine, CallMonitorModel::kCellLimit)) +
                  " \u2014 ";
    if (!part.present) {
        detail.line += "nothing sent or answered";
        return detail;
    }
    const std::string which = wanted == EventPart::Answer ? "answer" : "sent";
    if (!part.isText) {
        detail.line += which + ": " + ToUtf8(part.description);
        detail.text = part.description;
        return detail;
    }
    const Text& value = *part.text;
    detail.line += which + ": " + Grouped(value.size()) + " characters";
    if (value.size() > kDetailLimit) {
        detail.line += " (the text view draws the first " + Grouped(kDetailLimit) + ", the hex view all)";
    }
    detail.text = SymbolText(value, SymbolLines::BreakAfterCrLf, kDetailLimit);
    detail.hex = HexLayout(part.text, value);
    return detail;
}

std::optional<std::size_t> CallMonitorView::Find(TextView typed, std::optional<std::size_t> current,
                                                 CallMonitorModel::Direction direction) {
    const Text needle = Unescaped(typed);
    if (needle.empty() || model_.size() == 0) {
        return std::nullopt;
    }
    std::size_t from = 0;
    if (current && *current < model_.size()) {
        from = *current;
    } else if (direction == CallMonitorModel::Direction::Forward) {
        from = model_.size() - 1;  // so the search starts at the first row
    }
    const auto found = model_.Find(needle, from, direction);
    if (found) {
        message_.clear();
    } else {
        message_ = "No row holds \u201C" + ToUtf8(typed) + "\u201D.";
    }
    return found;
}

std::string CallMonitorView::CopyText(std::vector<std::size_t> rows) const {
    std::sort(rows.begin(), rows.end());
    std::string text;
    for (const std::size_t row : rows) {
        if (row < model_.size()) {
            text += model_.RowLiteral(row);
            text += '\n';
        }
    }
    return text;
}

void CallMonitorView::Clear() {
    // What is still queued was there before the click: it goes too.
    feed_.Take();
    model_.Clear();
    selected_.reset();
    message_.clear();
    SetFollowing(true);
}

std::string CallMonitorView::ExportName(std::chrono::system_clock::time_point now) {
    const std::tm local = LocalTime(now);
    char name[64];
    std::strftime(name, sizeof(name), "vantrel-calls-%Y-%m-%dT%H-%M-%S.jsonl", &local);
    return name;
}

bool CallMonitorView::ExportTo(const std::filesystem::path& path) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    const std::string shown = ToUtf8(path.u16string());
    if (out) {
        if (EndsWithInAnyCase(shown, ".txt") || EndsWithInAnyCase(shown, ".log")) {
            model_.ExportText(out);
        } else {
            model_.ExportJsonLines(out);
        }
        out.flush();
    }
    const bool written = static_cast<bool>(out);
    message_ = written ? Counted(model_.size(), "row", "rows") + " written to " + shown : "Cannot write " + shown;
    return written;
}

void CallMonitorView::SendSelectedAgain(AutomationObject* server) {
    if (!selected_) {
        message_ = "Select a put or call to send it again";
    } else if (const std::optional<std::string> why = WhyNotSendAgain(*selected_)) {
        message_ = "Not sent: " + *why;
    } else if (server) {
        const EventPointer row = selected_;  // the new row may trim this one
        const std::uint64_t number = selectedNumber_;
        try {
            SendAgain(*row, *server);
            message_ = "#" + std::to_string(number) + " sent again";
        } catch (const RuntimeError& error) {
            message_ = "#" + std::to_string(number) + " sent again: error " + ErrorNumberText(error.number());
        }
    } else {
        message_ = "Not sent: there is no server";
    }
}

std::optional<std::vector<CallMonitorView::MemberChoice>> CallMonitorView::MemberChoices(const std::string& chosen) {
    const std::set<std::string>& members = model_.members();
    const std::set<std::string>& titles = model_.boxTitles();
    const std::size_t names = members.size() + titles.size();
    if (names == listedNames_) {
        return std::nullopt;  // names only ever grow between clears
    }
    listedNames_ = names;
    std::vector<MemberChoice> choices{{"All members", "", false}};
    for (const std::string& name : members) {
        choices.push_back({name, name, false});
    }
    // Box titles apart from the server's members.
    bool first = true;
    for (const std::string& title : titles) {
        choices.push_back({"box: " + title, title, first});
        first = false;
    }
    // The chosen member stays chosen after a clear, even with no row yet.
    if (!chosen.empty() && std::none_of(choices.begin(), choices.end(),
                                        [&](const MemberChoice& choice) { return choice.member == chosen; })) {
        choices.push_back({chosen, chosen, false});
    }
    return choices;
}

std::string CallMonitorView::StatusLine() const {
    std::string text = Counted(model_.keptCount(), "event", "events");
    if (model_.filtered()) {
        text += ", " + Grouped(model_.size()) + " shown";
    }
    if (!following_) {
        text += "  \u00B7  auto-scroll paused";
        if (newWhilePaused_ > 0) {
            text += ", " + Grouped(newWhilePaused_) + " new below";
        }
    }
    if (!message_.empty()) {
        text += "  \u00B7  " + message_;
    }
    return text;
}

std::string CallMonitorView::DroppedNote() const {
    const std::uint64_t dropped = model_.droppedCount();
    if (dropped == 0) {
        return {};
    }
    return Grouped(dropped) + " older events dropped: the monitor keeps the newest " + Grouped(model_.limits().rows) +
           " events and " + Grouped(model_.limits().characters) + " characters";
}

}  // namespace vantrel
