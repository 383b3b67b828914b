#include "call_monitor_model.h"

#include "base/character_names.h"

#include "server/trace_json.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <iterator>
#include <utility>

namespace vantrel {

namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

void AppendHex(Text& out, std::uint32_t value, int digits) {
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) {
        out.push_back(static_cast<char16_t>(kHexDigits[(value >> shift) & 0xF]));
    }
}

void AppendAscii(Text& out, std::string_view ascii) { out.append(ascii.begin(), ascii.end()); }

constexpr char16_t kOpen = kNameOpen;
constexpr char16_t kClose = kNameClose;

void AppendMarked(Text& out, std::string_view name) {
    out.push_back(kOpen);
    AppendAscii(out, name);
    out.push_back(kClose);
}

// «NUL × 4,096»: a folded run of NUL.
void AppendNulRun(Text& out, std::size_t count) {
    out.push_back(kOpen);
    out += u"NUL \u00D7 ";
    AppendAscii(out, Grouped(count));
    out.push_back(kClose);
}

std::size_t TextSize(const std::optional<Variant>& value) {
    return value && value->is(Variant::Kind::Text) ? value->text().size() : 0;
}

bool IsServerCall(const CallEvent& event) { return event.op == CallEvent::Op::Put || event.op == CallEvent::Op::Call; }

// A value that is no text, as the trace names its kind: "i2 7", "empty".
std::string ValueLabel(const Variant& value) {
    switch (value.kind()) {
    case Variant::Kind::Empty: return "empty";
    case Variant::Kind::Null: return "null";
    case Variant::Kind::Text: return {};
    case Variant::Kind::Int16: return "i2 " + std::to_string(value.int16());
    case Variant::Kind::Int32: return "i4 " + std::to_string(value.int32());
    case Variant::Kind::Double: {
        char buffer[32];
        const auto end = std::to_chars(std::begin(buffer), std::end(buffer), value.real()).ptr;
        return "r8 " + std::string(buffer, end);
    }
    case Variant::Kind::Boolean: return value.boolean() ? "bool True" : "bool False";
    case Variant::Kind::Single: return "r4 " + ToUtf8(ToText(value));
    case Variant::Kind::Currency: return "cy " + ToUtf8(ToText(value));
    case Variant::Kind::Date: return "date " + ToUtf8(value.dateText());
    }
    return {};
}

std::string ErrorLabel(const RuntimeError& error) {
    return "error " + ErrorNumberText(error.number()) + ": " + error.description();
}

}  // namespace

Text MonitorMember(const CallEvent& event) {
    switch (event.op) {
    case CallEvent::Op::Create:
    case CallEvent::Op::Put:
    case CallEvent::Op::Call: return FromUtf8(event.member);
    case CallEvent::Op::MessageBox:
    case CallEvent::Op::InputBox: return event.title;
    case CallEvent::Op::Report: return {};
    }
    return {};
}

std::string MonitorKind(const CallEvent& event) {
    switch (event.op) {
    case CallEvent::Op::Create: return "create";
    case CallEvent::Op::Put: return "put";
    case CallEvent::Op::Call: return event.byRef ? "call byref" : "call";
    case CallEvent::Op::MessageBox: return event.buttons == CallEvent::Buttons::Ok ? "msgbox ok" : "msgbox yesno";
    case CallEvent::Op::InputBox: return "inputbox";
    case CallEvent::Op::Report: return "report";
    }
    return {};
}

namespace {

std::string Quoted(TextView text) {
    std::string out(1, '"');
    out += Escaped(text);
    out.push_back('"');
    return out;
}

// A part as a field of the copied row: texts as escaped literals.
std::string LiteralOf(const PartView& part) { return part.isText ? Quoted(*part.text) : ToUtf8(part.description); }

// ASCII letters fold to lower case; every other character stands for itself.
char16_t Folded(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c; }

struct FoldedHash {
    std::size_t operator()(char16_t c) const { return std::hash<char16_t>()(Folded(c)); }
};
struct FoldedEqual {
    bool operator()(char16_t a, char16_t b) const { return Folded(a) == Folded(b); }
};

}  // namespace

std::string Grouped(std::uint64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t at = digits.size(); at > 3; at -= 3) {
        digits.insert(at - 3, 1, ',');
    }
    return digits;
}

std::tm LocalTime(std::chrono::system_clock::time_point when) {
    const std::time_t time = std::chrono::system_clock::to_time_t(when);
    std::tm local{};
#if defined(_WIN32)
    localtime_s(&local, &time);
#else
    localtime_r(&time, &local);
#endif
    return local;
}

std::string ClockText(std::chrono::system_clock::time_point when) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(when);
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(when - seconds).count();
    const std::tm local = LocalTime(seconds);
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%02d:%02d:%02d.%03d", local.tm_hour, local.tm_min, local.tm_sec,
                  static_cast<int>(milliseconds));
    return buffer;
}

// The fueling position a server call addressed, as two digits: the
// "FuelingPosition=" or "ReaderPosition=" line of a block, a bare position
// text ("07", or "0" for all), or the number of an information call.
Text PositionOf(const CallEvent& event) {
    if (!IsServerCall(event) || !event.argument) {
        return {};
    }
    const Variant& argument = *event.argument;
    if (argument.is(Variant::Kind::Int16)) {
        const int number = argument.int16();
        return number >= 1 && number <= 99 ? FromUtf8((number < 10 ? "0" : "") + std::to_string(number)) : Text();
    }
    if (!argument.is(Variant::Kind::Text)) {
        return {};
    }
    const TextView text = argument.text();
    if (text == u"0") {
        return u"all";
    }
    if (text.size() == 2 && text[0] >= u'0' && text[0] <= u'9' && text[1] >= u'0' && text[1] <= u'9') {
        return Text(text);
    }
    for (const TextView key : {TextView(u"FuelingPosition="), TextView(u"ReaderPosition=")}) {
        const std::size_t at = text.find(key);
        if (at != TextView::npos && (at == 0 || text[at - 1] == u'\n') && at + key.size() + 2 <= text.size()) {
            return Text(text.substr(at + key.size(), 2));
        }
    }
    return {};
}

// "2026-11-24T15:30:12.345", local time.
std::string DateTimeText(std::chrono::system_clock::time_point when) {
    const std::tm local = LocalTime(std::chrono::floor<std::chrono::seconds>(when));
    char date[16];
    std::strftime(date, sizeof date, "%Y-%m-%d", &local);
    return std::string(date) + "T" + ClockText(when);
}

std::string DurationText(std::chrono::nanoseconds duration) {
    const auto micro = static_cast<unsigned long long>(std::max<std::int64_t>(0, duration.count()) / 1000);
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%llu.%03llu ms", micro / 1000, micro % 1000);
    return buffer;
}

std::size_t CharactersOf(const CallEvent& event) {
    return TextSize(event.argument) + TextSize(event.result) + event.text.size() + event.title.size() +
           event.answer.size();
}

// ---- limits ----

BoundedEvents::BoundedEvents(MonitorLimits limits)
    : limits_(limits) {}

void BoundedEvents::Push(MonitorEntry entry) {
    characters_ += CharactersOf(*entry.event);
    entries_.push_back(std::move(entry));
}

std::size_t BoundedEvents::Excess() const {
    std::size_t count = 0;
    std::size_t characters = characters_;
    // The newest event stays, whatever its size.
    while (count + 1 < entries_.size() && (entries_.size() - count > limits_.rows || characters > limits_.characters)) {
        characters -= CharactersOf(*entries_[count].event);
        ++count;
    }
    return count;
}

void BoundedEvents::DropFront(std::size_t count) {
    for (std::size_t k = 0; k < count && !entries_.empty(); ++k) {
        characters_ -= CharactersOf(*entries_.front().event);
        entries_.pop_front();
    }
}

void BoundedEvents::Clear() {
    entries_.clear();
    characters_ = 0;
}

std::deque<MonitorEntry> BoundedEvents::TakeAll() {
    std::deque<MonitorEntry> taken;
    taken.swap(entries_);
    characters_ = 0;
    return taken;
}

CallMonitorFeed::CallMonitorFeed(MonitorLimits limits)
    : pending_(limits) {}

void CallMonitorFeed::OnEvent(const CallEvent& event) {
    // The copy is made outside the lock; inside, only pointers move.
    OnSharedEvent(std::make_shared<const CallEvent>(event));
}

void CallMonitorFeed::OnSharedEvent(const std::shared_ptr<const CallEvent>& event) {
    const std::lock_guard lock(mutex_);
    pending_.Push(MonitorEntry{++count_, event});
    const std::size_t excess = pending_.Excess();
    pending_.DropFront(excess);
    dropped_ += excess;
}

CallMonitorFeed::Batch CallMonitorFeed::Take() {
    const std::lock_guard lock(mutex_);
    Batch batch;
    batch.entries = pending_.TakeAll();
    batch.dropped = std::exchange(dropped_, 0);
    return batch;
}

// ---- drawing texts ----

Text SymbolText(TextView text, SymbolLines lines, std::size_t limit) {
    Text out;
    out.reserve(std::min(text.size(), limit) + 8);
    std::size_t i = 0;
    while (i < text.size() && i < limit) {
        const char16_t c = text[i];
        if (c == 0) {
            std::size_t run = 1;
            while (i + run < text.size() && text[i + run] == 0) {
                ++run;
            }
            if (run >= kFoldNulRun) {
                AppendNulRun(out, run);
                i += run;
                continue;
            }
        }
        if (c == u'\r' && lines == SymbolLines::BreakAfterCrLf && i + 1 < text.size() && text[i + 1] == u'\n') {
            out += u"\u00ABCR\u00BB\u00ABLF\u00BB\n";
            i += 2;
            continue;
        }
        if (c < 0x20 || c == 0x7F) {
            AppendMarked(out, CharacterName(c));
        } else if (c > 0x7F) {
            out.push_back(kOpen);
            out.push_back(c > 0xFF ? u'u' : u'x');
            AppendHex(out, c, c > 0xFF ? 4 : 2);
            out.push_back(kClose);
        } else {
            out.push_back(c);
        }
        ++i;
    }
    if (i < text.size()) {
        if (lines == SymbolLines::BreakAfterCrLf && !out.empty() && out.back() != u'\n') {
            out.push_back(u'\n');
        } else if (lines == SymbolLines::OneLine) {
            out.push_back(u' ');
        }
        out.push_back(kOpen);
        out += u"\u2026 ";
        AppendAscii(out, Grouped(text.size() - i));
        out += u" more characters";
        out.push_back(kClose);
    }
    return out;
}

HexLayout::HexLayout(std::shared_ptr<const void> owner, TextView text)
    : owner_(std::move(owner))
    , text_(text) {
    const std::size_t sourceLines = (text.size() + kPerLine - 1) / kPerLine;
    wide_ = std::any_of(text.begin(), text.end(), [](char16_t c) { return c > 0xFF; });
    std::size_t hidden = 0;
    std::size_t runStart = 0;
    std::size_t runLines = 0;
    const auto closeRun = [&] {
        if (runLines >= 2) {
            folds_.push_back(Fold{runStart - hidden, runStart, runLines});
            hidden += runLines - 1;
        }
        runLines = 0;
    };
    for (std::size_t line = 0; line < sourceLines; ++line) {
        const std::size_t start = line * kPerLine;
        const bool whole = start + kPerLine <= text.size();
        const bool zero = whole && std::all_of(text.begin() + static_cast<std::ptrdiff_t>(start),
                                               text.begin() + static_cast<std::ptrdiff_t>(start + kPerLine),
                                               [](char16_t c) { return c == 0; });
        if (zero) {
            if (runLines == 0) {
                runStart = line;
            }
            ++runLines;
        } else {
            closeRun();
        }
    }
    closeRun();
    lineCount_ = sourceLines - hidden;
}

Text HexLayout::Line(std::size_t index) const {
    if (index >= lineCount_) {
        return {};
    }
    std::size_t source = index;
    const auto after = std::upper_bound(folds_.begin(), folds_.end(), index,
                                        [](std::size_t line, const Fold& fold) { return line < fold.displayLine; });
    if (after != folds_.begin()) {
        const Fold& fold = *std::prev(after);
        if (fold.displayLine == index) {
            Text out;
            AppendHex(out, static_cast<std::uint32_t>(fold.sourceLine * kPerLine), 8);
            out += u"  ";
            AppendNulRun(out, fold.lines * kPerLine);
            return out;
        }
        source = fold.sourceLine + fold.lines + (index - fold.displayLine - 1);
    }
    const std::size_t start = source * kPerLine;
    const std::size_t end = std::min(start + kPerLine, text_.size());
    const int digits = wide_ ? 4 : 2;
    Text out;
    AppendHex(out, static_cast<std::uint32_t>(start), 8);
    out += u"  ";
    for (std::size_t k = 0; k < kPerLine; ++k) {
        if (k == kPerLine / 2) {
            out.push_back(u' ');
        }
        if (start + k < end) {
            AppendHex(out, text_[start + k], digits);
        } else {
            out.append(static_cast<std::size_t>(digits), u' ');
        }
        out.push_back(u' ');
    }
    out += u" |";
    for (std::size_t k = start; k < end; ++k) {
        const char16_t c = text_[k];
        out.push_back(c >= 0x20 && c < 0x7F ? c : u'.');
    }
    out.push_back(u'|');
    return out;
}

Text Unescaped(TextView typed) {
    const auto hexValue = [&](std::size_t at, std::size_t digits) -> std::optional<char16_t> {
        if (at + digits > typed.size()) {
            return std::nullopt;
        }
        std::uint32_t value = 0;
        for (std::size_t k = 0; k < digits; ++k) {
            const char16_t c = typed[at + k];
            const char* found = c < 0x80 ? std::strchr(kHexDigits, std::toupper(static_cast<int>(c))) : nullptr;
            if (!found || c == 0) {
                return std::nullopt;
            }
            value = value * 16 + static_cast<std::uint32_t>(found - kHexDigits);
        }
        return static_cast<char16_t>(value);
    };
    Text out;
    out.reserve(typed.size());
    std::size_t i = 0;
    while (i < typed.size()) {
        if (typed[i] != u'\\' || i + 1 >= typed.size()) {
            out.push_back(typed[i++]);
            continue;
        }
        const char16_t e = typed[i + 1];
        std::optional<char16_t> code;
        std::size_t length = 2;
        switch (e) {
        case u'r': code = u'\r'; break;
        case u'n': code = u'\n'; break;
        case u't': code = u'\t'; break;
        case u'0': code = u'\0'; break;
        case u'e': code = kEsc; break;
        case u'\\': code = u'\\'; break;
        case u'"': code = u'"'; break;
        case u'x':
            code = hexValue(i + 2, 2);
            length = 4;
            break;
        case u'u':
            code = hexValue(i + 2, 4);
            length = 6;
            break;
        default: break;
        }
        if (code) {
            out.push_back(*code);
            i += length;
        } else {
            out.push_back(typed[i++]);
        }
    }
    return out;
}

PartView PartOf(const EventPointer& event, EventPart part) {
    PartView view;
    const auto fromValue = [&](const Variant& value) {
        view.present = true;
        if (value.is(Variant::Kind::Text)) {
            view.isText = true;
            view.text = std::shared_ptr<const Text>(event, &value.text());
        } else {
            view.description = FromUtf8(ValueLabel(value));
        }
    };
    const auto fromText = [&](const Text& text) {
        view.present = true;
        view.isText = true;
        view.text = std::shared_ptr<const Text>(event, &text);
    };
    const auto fromLabel = [&](const std::string& label) {
        view.present = true;
        view.description = FromUtf8(label);
    };
    const CallEvent& e = *event;
    if (part == EventPart::Sent) {
        if (IsServerCall(e) && e.argument) {
            fromValue(*e.argument);
        } else if (e.op == CallEvent::Op::MessageBox || e.op == CallEvent::Op::InputBox) {
            fromText(e.text);
        }
        return view;
    }
    if (e.error) {
        fromLabel(ErrorLabel(*e.error));
    } else if (e.op == CallEvent::Op::Call && e.result) {
        fromValue(*e.result);
    } else if (e.op == CallEvent::Op::MessageBox) {
        fromLabel(ToUtf8(e.answer));
    } else if (e.op == CallEvent::Op::InputBox) {
        fromText(e.answer);
    }
    return view;
}

// ---- the rows ----

// The filter's or the search's text, matched ignoring the case of ASCII
// letters. Holds the searcher, which points into its own copy of the text.
class CallMonitorModel::Matcher {
public:
    explicit Matcher(TextView needle)
        : needle_(needle)
        , searcher_(needle_.begin(), needle_.end(), FoldedHash(), FoldedEqual()) {}
    Matcher(const Matcher&) = delete;
    Matcher& operator=(const Matcher&) = delete;

    bool In(TextView haystack) const {
        return std::search(haystack.begin(), haystack.end(), searcher_) != haystack.end();
    }
    bool In(const std::string& ascii) const { return In(FromUtf8(ascii)); }

    bool In(const CallEvent& event) const {
        for (const EventPart part : {EventPart::Sent, EventPart::Answer}) {
            // A non-owning pointer is enough for the time of the test.
            const PartView view = PartOf(EventPointer(std::shared_ptr<const CallEvent>(), &event), part);
            if (view.present && In(view.isText ? TextView(*view.text) : TextView(view.description))) {
                return true;
            }
        }
        return In(MonitorMember(event)) || In(MonitorKind(event));
    }

private:
    Text needle_;
    std::boyer_moore_horspool_searcher<Text::const_iterator, FoldedHash, FoldedEqual> searcher_;
};

CallMonitorModel::CallMonitorModel(MonitorLimits limits)
    : limits_(limits)
    , kept_(limits) {}

bool CallMonitorModel::Accepts(const CallEvent& event, const Matcher* matcher) const {
    if (!member_.empty() && ToUtf8(MonitorMember(event)) != member_) {
        return false;
    }
    if (errorsOnly_ && !event.error) {
        return false;
    }
    return !matcher || matcher->In(event);
}

void CallMonitorModel::Append(CallMonitorFeed::Batch batch) {
    dropped_ += batch.dropped;
    if (batch.entries.empty()) {
        return;
    }
    std::optional<Matcher> matcher;
    if (!text_.empty()) {
        matcher.emplace(text_);
    }
    std::vector<bool> accepted;
    accepted.reserve(batch.entries.size());
    std::size_t count = 0;
    for (const MonitorEntry& entry : batch.entries) {
        accepted.push_back(Accepts(*entry.event, matcher ? &*matcher : nullptr));
        count += accepted.back() ? 1 : 0;
    }
    if (count > 0 && observer_) {
        observer_->BeforeAppend(shown_.size(), count);
    }
    for (std::size_t k = 0; k < batch.entries.size(); ++k) {
        MonitorEntry& entry = batch.entries[k];
        const CallEvent& event = *entry.event;
        const bool box = event.op == CallEvent::Op::MessageBox || event.op == CallEvent::Op::InputBox;
        if (std::string name = ToUtf8(MonitorMember(event)); !name.empty()) {
            (box ? boxTitles_ : members_).insert(std::move(name));
        }
        if (accepted[k]) {
            shown_.push_back(firstPosition_ + kept_.size());
        }
        kept_.Push(std::move(entry));
    }
    if (count > 0 && observer_) {
        observer_->AfterAppend();
    }

    const std::size_t excess = kept_.Excess();
    if (excess == 0) {
        return;
    }
    const std::uint64_t newFirst = firstPosition_ + excess;
    const auto removed =
        static_cast<std::size_t>(std::lower_bound(shown_.begin(), shown_.end(), newFirst) - shown_.begin());
    if (removed > 0 && observer_) {
        observer_->BeforeRemoveFront(removed);
    }
    kept_.DropFront(excess);
    firstPosition_ = newFirst;
    shown_.erase(shown_.begin(), shown_.begin() + static_cast<std::ptrdiff_t>(removed));
    dropped_ += excess;
    if (removed > 0 && observer_) {
        observer_->AfterRemoveFront();
    }
}

void CallMonitorModel::Clear() {
    if (observer_) {
        observer_->BeforeReset();
    }
    firstPosition_ += kept_.size();
    kept_.Clear();
    shown_.clear();
    dropped_ = 0;
    members_.clear();
    boxTitles_.clear();
    if (observer_) {
        observer_->AfterReset();
    }
}

void CallMonitorModel::SetFilter(std::string member, Text text, bool errorsOnly) {
    if (member == member_ && text == text_ && errorsOnly == errorsOnly_) {
        return;
    }
    member_ = std::move(member);
    text_ = std::move(text);
    errorsOnly_ = errorsOnly;
    if (observer_) {
        observer_->BeforeReset();
    }
    Rebuild();
    if (observer_) {
        observer_->AfterReset();
    }
}

void CallMonitorModel::Rebuild() {
    std::optional<Matcher> matcher;
    if (!text_.empty()) {
        matcher.emplace(text_);
    }
    shown_.clear();
    for (std::size_t k = 0; k < kept_.size(); ++k) {
        if (Accepts(*kept_[k].event, matcher ? &*matcher : nullptr)) {
            shown_.push_back(firstPosition_ + k);
        }
    }
}

const MonitorEntry& CallMonitorModel::Entry(std::size_t row) const {
    return kept_[static_cast<std::size_t>(shown_.at(row) - firstPosition_)];
}

const EventPointer& CallMonitorModel::Event(std::size_t row) const { return Entry(row).event; }

std::optional<std::size_t> CallMonitorModel::RowOf(std::uint64_t number) const {
    // Numbers grow with the position, so the shown rows are sorted by both.
    const auto found =
        std::lower_bound(shown_.begin(), shown_.end(), number, [this](std::uint64_t position, std::uint64_t wanted) {
            return kept_[static_cast<std::size_t>(position - firstPosition_)].number < wanted;
        });
    if (found == shown_.end() || kept_[static_cast<std::size_t>(*found - firstPosition_)].number != number) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - shown_.begin());
}

std::uint64_t CallMonitorModel::Number(std::size_t row) const { return Entry(row).number; }

Text CallMonitorModel::Cell(std::size_t row, Column column) const {
    const MonitorEntry& entry = Entry(row);
    const CallEvent& event = *entry.event;
    const auto partCell = [&](EventPart which) {
        const PartView part = PartOf(entry.event, which);
        if (!part.isText) {
            return part.description;
        }
        if (event.op == CallEvent::Op::InputBox && which == EventPart::Answer && part.text->empty()) {
            return Text(u"(empty: cancel)");
        }
        return SymbolText(*part.text, SymbolLines::OneLine, kCellLimit);
    };
    switch (column) {
    case Column::Number: return FromUtf8(std::to_string(entry.number));
    case Column::Time: return FromUtf8(ClockText(event.when));
    case Column::Member: return SymbolText(MonitorMember(event), SymbolLines::OneLine, kCellLimit);
    case Column::Kind: return FromUtf8(MonitorKind(event));
    case Column::Position: return SymbolText(PositionOf(event), SymbolLines::OneLine, kCellLimit);
    case Column::Sent: return partCell(EventPart::Sent);
    case Column::Answer: return partCell(EventPart::Answer);
    case Column::ServerTime: return IsServerCall(event) ? FromUtf8(DurationText(event.duration)) : Text();
    }
    return {};
}

std::optional<std::size_t> CallMonitorModel::Find(TextView text, std::size_t from, Direction direction) const {
    if (text.empty() || shown_.empty()) {
        return std::nullopt;
    }
    const Matcher matcher(text);
    const std::size_t count = shown_.size();
    from = std::min(from, count - 1);
    for (std::size_t step = 1; step <= count; ++step) {
        const std::size_t row = direction == Direction::Forward ? (from + step) % count : (from + count - step) % count;
        if (matcher.In(*Event(row))) {
            return row;
        }
    }
    return std::nullopt;
}

std::string CallMonitorModel::RowLiteral(std::size_t row) const {
    const EventPointer& pointer = Event(row);
    const CallEvent& event = *pointer;
    std::string out = ClockText(event.when) + " " + MonitorKind(event);
    const auto field = [&out](const std::string& text) {
        if (!text.empty()) {
            out += " " + text;
        }
    };
    const bool box = event.op == CallEvent::Op::MessageBox || event.op == CallEvent::Op::InputBox;
    field(box ? Quoted(event.title) : event.member);
    const PartView sent = PartOf(pointer, EventPart::Sent);
    if (sent.present) {
        field(LiteralOf(sent));
    }
    if (event.error) {
        field("-> error " + ErrorNumberText(event.error->number()) + " " +
              Quoted(FromUtf8(event.error->description())));
    } else if (const PartView answer = PartOf(pointer, EventPart::Answer); answer.present) {
        field("-> " + LiteralOf(answer));
    }
    return out;
}

void CallMonitorModel::ExportJsonLines(std::ostream& out) const {
    for (std::size_t row = 0; row < shown_.size(); ++row) {
        const CallEvent& event = *Event(row);
        // The trace's line with the row's time and, for a server call, the
        // time the server took, in milliseconds.
        out << "{\"time\":\"" << DateTimeText(event.when) << '"';
        if (IsServerCall(event)) {
            const auto micro = std::max<std::int64_t>(0, event.duration.count()) / 1000;
            char took[32];
            std::snprintf(took, sizeof took, "%lld.%03lld", static_cast<long long>(micro / 1000),
                          static_cast<long long>(micro % 1000));
            out << ",\"server_ms\":" << took;
        }
        out << ',' << ToJsonLine(event).substr(1) << '\n';
    }
}

void CallMonitorModel::ExportText(std::ostream& out) const {
    // One line a row, the cells as the table shows them, between tabs.
    for (std::size_t row = 0; row < shown_.size(); ++row) {
        for (int column = 0; column < kColumnCount; ++column) {
            const Column which = static_cast<Column>(column);
            const Text cell = which == Column::Time ? FromUtf8(DateTimeText(Event(row)->when)) : Cell(row, which);
            out << (column > 0 ? "\t" : "") << ToUtf8(cell);
        }
        out << '\n';
    }
}

}  // namespace vantrel
