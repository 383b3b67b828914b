#include "simulator.h"

#include "simulator/answer_text.h"

#include <algorithm>
#include <cctype>

namespace vantrel {

using simulation::FindMember;
using simulation::Info;

Simulator::Simulator()
    : Simulator(std::make_unique<simulation::RealClock>()) {}

Simulator::Simulator(std::unique_ptr<simulation::Clock> clock)
    : clock_(std::move(clock))
    , manual_(dynamic_cast<simulation::ManualClock*>(clock_.get()))
    , forecourt_(std::make_unique<simulation::Forecourt>()) {
    forecourt_->AdvanceTo(clock_->Now());
}

Simulator::~Simulator() = default;

bool Simulator::Knows(std::string_view member) const { return FindMember(member).has_value(); }

std::optional<Simulator::Style> Simulator::StyleOf(std::string_view member) const {
    const auto id = FindMember(member);
    return id ? std::optional<Style>(Info(*id).style) : std::nullopt;
}

std::vector<std::pair<std::string, Simulator::Style>> Simulator::Members() const {
    std::vector<std::pair<std::string, Style>> members;
    for (const simulation::Member& member : simulation::Members()) {
        members.emplace_back(std::string(member.name), member.style);
    }
    const auto lower = [](std::string name) {
        std::transform(name.begin(), name.end(), name.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        return name;
    };
    std::sort(members.begin(), members.end(),
              [&](const auto& a, const auto& b) { return lower(a.first) < lower(b.first); });
    return members;
}

void Simulator::QueueAnswer(std::string_view member, Variant answer) {
    if (const auto id = FindMember(member)) {
        faults_.QueueAnswer(*id, std::move(answer));
    }
}

void Simulator::QueueFailure(std::string_view member, RuntimeError error) {
    if (const auto id = FindMember(member)) {
        faults_.QueueFailure(*id, std::move(error));
    }
}

bool Simulator::QueueDelay(std::string_view member, std::chrono::milliseconds delay) {
    const auto id = FindMember(member);
    if (id) {
        faults_.QueueDelay(*id, delay);
    }
    return id.has_value();
}

Simulator::MemberId Simulator::Lookup(std::string_view member, Style style) const {
    const auto id = FindMember(member);
    if (!id || Info(*id).style != style) {
        throw errors::UnsupportedMember();
    }
    return *id;
}

bool Simulator::Faulted(MemberId member, Variant& answer) {
    if (faults_.empty()) {
        return false;
    }
    clock_->Wait(faults_.TakeDelay(member));
    return faults_.TakeOutcome(member, answer);
}

namespace {

void ThrowIfGone(bool gone) {
    if (gone) {
        // RPC_S_SERVER_UNAVAILABLE, as a client of a dead server's proxy sees it.
        throw RuntimeError(static_cast<int>(0x800706BAu), "Automation error: The RPC server is unavailable.");
    }
}

}  // namespace

void Simulator::Put(std::string_view member, const Variant& value) {
    ThrowIfGone(gone_);
    const MemberId id = Lookup(member, Style::Assignment);
    Variant unused;
    Faulted(id, unused);
    Update();
    Remember(id, value);
    Report(id, Info(id).assign(*forecourt_, value));
}

Variant Simulator::Call(std::string_view member) {
    ThrowIfGone(gone_);
    const auto id = FindMember(member);
    if (!id || (Info(*id).style != Style::Text && Info(*id).style != Style::Numeric)) {
        throw errors::UnsupportedMember();
    }
    Variant answer;
    if (Faulted(*id, answer)) {
        return answer;
    }
    Update();
    return Released(*id, Info(*id).answer(*forecourt_));
}

Variant Simulator::Released(MemberId member, Variant answer) {
    if (!release_.any()) {
        return answer;
    }
    const std::string_view name = Info(member).name;
    clock_->Wait(release_.DelayOf(name));
    release_.RaiseFor(name);
    release_.ChangeAnswer(name, answer);
    return answer;
}

Variant Simulator::Call(std::string_view member, const Variant& argument) {
    ThrowIfGone(gone_);
    const MemberId id = Lookup(member, Style::WithPosition);
    Variant answer;
    if (Faulted(id, answer)) {
        return answer;
    }
    Update();
    const int position = ToInt16(argument);
    if (position < 1 || position > simulation::kPositions) {
        Report(id, "there is no fueling position " + std::to_string(position) + " (1 to 32)");
        return Variant::OfText({});
    }
    return Released(id, Info(id).about(*forecourt_, position));
}

// The server reads the position and writes nothing back.
Variant Simulator::CallByRef(std::string_view member, Variant& argument) { return Call(member, argument); }

void Simulator::Report(MemberId member, const std::string& problem) {
    if (!problem.empty()) {
        forecourt_->queues.Report(Info(member).name, problem);
    }
}

void Simulator::Remember(MemberId member, const Variant& value) {
    Assignment& slot = recent_[recentCount_ % kRecent];
    ++recentCount_;
    slot.member = member;
    // A text into a text reuses the slot's storage. A value of more than
    // kRememberedWhole characters is kept by its start only: the recent list
    // shows 200, and an image packet of many megabytes is not kept again.
    if (value.is(Variant::Kind::Text) && value.text().size() > kRememberedWhole) {
        slot.value = Variant::OfText(value.text().substr(0, kRememberedWhole));
    } else {
        slot.value = value;
    }
}

std::optional<std::pair<std::string, Variant>> Simulator::LastAssignment() const {
    if (recentCount_ == 0) {
        return std::nullopt;
    }
    const Assignment& slot = recent_[(recentCount_ - 1) % kRecent];
    return std::make_pair(std::string(Info(slot.member).name), slot.value);
}

std::vector<std::pair<std::string, Text>> Simulator::RecentAssignments() const {
    std::vector<std::pair<std::string, Text>> recent;
    const std::size_t count = std::min(recentCount_, kRecent);
    for (std::size_t i = 1; i <= count; ++i) {
        const Assignment& slot = recent_[(recentCount_ - i) % kRecent];
        const Text value = slot.value.is(Variant::Kind::Null) ? Text(u"Null") : ToText(slot.value);
        recent.emplace_back(std::string(Info(slot.member).name), simulation::OneLine(value, 200));
    }
    return recent;
}

simulation::Forecourt& Simulator::forecourt() {
    Update();
    return *forecourt_;
}

void Simulator::SetAutomatic(bool on) {
    Update();
    forecourt_->traffic.Switch(on, clock_->Now());
}

void Simulator::RestartOnScriptClock() {
    auto manual = std::make_unique<simulation::ManualClock>(simulation::ManualClock::Waits::Slept);
    manual_ = manual.get();
    clock_ = std::move(manual);
    forecourt_ = std::make_unique<simulation::Forecourt>();
    forecourt_->AdvanceTo(clock_->Now());
}

bool Simulator::AdvanceTime(std::chrono::milliseconds step) {
    if (!manual_) {
        return false;
    }
    manual_->Advance(step);
    Update();
    return true;
}

}  // namespace vantrel
