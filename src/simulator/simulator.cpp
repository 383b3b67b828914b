#include "simulator.h"

#include "server/command_block.h"

#include <algorithm>
#include <cctype>

namespace vantrel {

namespace {

std::string Lower(std::string_view name) {
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

Text Line(std::string_view key, const Text& value) { return FromUtf8(key) + u"=" + value + u"\r\n"; }

}  // namespace

Simulator::Simulator() {
    const auto add = [this](std::initializer_list<const char*> names, Style style) {
        for (const char* name : names) {
            members_.emplace(Lower(name), Member{name, style});
        }
    };
    add({"Authorize", "Price", "DisplayData", "PrintOutput", "BeeperControl", "KeyEntryType", "KeyPadConfiguration",
         "PacketQueOutput", "PreloadDisplayMessage", "WindowControl", "SerialPortParameters",
         "CarWashInformationRequest", "PriceSignDataSend", "ReaderControl", "Stop", "Deauthorize", "Resume",
         "PayOutSale", "TankMonitorStartReport"},
        Style::Assignment);
    add({"CardQue", "CashInQue", "KeyQue", "PacketQueInput", "QueCountQuery", "ReadErrorQue", "SystemVersions",
         "CarWashRequestStatus", "CarWashDataRead", "CarWashOperationStatus", "PriceSignDataRead", "TankMonitorReport",
         "TankMonitorReportStatus"},
        Style::Text);
    add({"ClearTopCardQue", "ClearTopCashQue", "ClearTopKeyQue", "ClearErrorQue", "ClearPacketEntry", "InvokeHelpFile",
         "SelfDiagnosticsReportStart", "SelfDiagnosticsReportStatus"},
        Style::Numeric);
    add({"FuelingPositionInformation", "DispenserInformation", "ReaderInformation"}, Style::WithPosition);
}

std::vector<std::pair<std::string, Simulator::Style>> Simulator::Members() const {
    std::vector<std::pair<std::string, Style>> members;
    members.reserve(members_.size());
    for (const auto& [lower, member] : members_) {
        members.emplace_back(member.name, member.style);
    }
    return members;
}

bool Simulator::Knows(std::string_view member) const { return members_.count(Lower(member)) != 0; }

void Simulator::QueueAnswer(std::string_view member, Variant answer) {
    queued_[Lower(member)].push_back(std::move(answer));
}

void Simulator::QueueFailure(std::string_view member, RuntimeError error) {
    queued_[Lower(member)].push_back(std::move(error));
}

const Simulator::Member& Simulator::Lookup(std::string_view member, Style style) const {
    const auto found = members_.find(Lower(member));
    if (found == members_.end() || found->second.style != style) {
        throw errors::UnsupportedMember();
    }
    return found->second;
}

bool Simulator::TakeQueued(const Member& member, Variant& answer) {
    const auto found = queued_.find(Lower(member.name));
    if (found == queued_.end() || found->second.empty()) {
        return false;
    }
    Outcome outcome = std::move(found->second.front());
    found->second.pop_front();
    if (const auto* error = std::get_if<RuntimeError>(&outcome)) {
        throw *error;
    }
    answer = std::get<Variant>(std::move(outcome));
    return true;
}

void Simulator::Put(std::string_view member, const Variant& value) {
    const Member& known = Lookup(member, Style::Assignment);
    Variant ignored;
    TakeQueued(known, ignored);  // only a queued failure matters to an assignment
    assignments_.emplace_back(known.name, value);
}

Variant Simulator::Call(std::string_view member) {
    const auto found = members_.find(Lower(member));
    if (found == members_.end() || (found->second.style != Style::Text && found->second.style != Style::Numeric)) {
        throw errors::UnsupportedMember();
    }
    Variant answer;
    if (TakeQueued(found->second, answer)) {
        return answer;
    }
    return Answer(found->second, 0);
}

Variant Simulator::Call(std::string_view member, const Variant& argument) {
    const Member& known = Lookup(member, Style::WithPosition);
    Variant answer;
    if (TakeQueued(known, answer)) {
        return answer;
    }
    return Answer(known, ToInt16(argument));
}

Variant Simulator::CallByRef(std::string_view member, Variant& argument) { return Call(member, argument); }

Variant Simulator::Answer(const Member& member, std::int16_t position) {
    const std::string& name = member.name;
    if (member.style == Style::Numeric) {
        return Variant::OfInt16(0);
    }
    if (member.style == Style::WithPosition) {
        if (position < 1 || position > 32) {
            return Variant::OfText(u"Error=Invalid position\r\n");
        }
        const Text nn = PositionText(position);
        if (name == "FuelingPositionInformation") {
            return Variant::OfText(Line("FuelingPosition", nn) + Line("State", u"Idle") + Line("Hose", u"0") +
                                   Line("Volume", u"0.000") + Line("Amount", u"0.00"));
        }
        if (name == "DispenserInformation") {
            return Variant::OfText(Line("FuelingPosition", nn) + Line("Hoses", u"4") + Line("Tier1", u"1111") +
                                   Line("Tier2", u"1111") + Line("Blend", u"100"));
        }
        return Variant::OfText(Line("ReaderPosition", nn) + Line("Display", u"Idle") + Line("ChipReader", u"Disable"));
    }
    if (name == "SystemVersions") {
        return Variant::OfText(Line("Application", u"Vantrel.Application 10.29 (built-in simulator)") +
                               Line("Link", u"Simulated serial link"));
    }
    if (name == "QueCountQuery") {
        return Variant::OfText(Line("CardQue", u"0") + Line("KeyQue", u"0") + Line("CashInQue", u"0") +
                               Line("ErrorQue", u"0") + Line("PacketQue", u"0"));
    }
    if (name == "TankMonitorReportStatus") {
        return Variant::OfText(Line("ReportStatus", u"Complete"));
    }
    if (name == "CarWashRequestStatus" || name == "CarWashOperationStatus") {
        return Variant::OfText(Line("Status", u"Idle"));
    }
    if (name == "PriceSignDataRead") {
        return Variant::OfText(Line("Status", u"OK"));
    }
    // The queues and data reads start empty.
    return Variant::OfText({});
}

}  // namespace vantrel
