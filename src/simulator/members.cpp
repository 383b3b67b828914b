// The simulator's dispatch table: one row per server member, naming the
// model's method that carries it out. A block is read top to bottom in the
// order its member expects; the first line that does not fit becomes an entry
// in the error queue and the model stays as it was.
#include "members.h"

#include "simulator/block_reader.h"
#include "simulator/forecourt.h"

#include <array>

namespace vantrel::simulation {

namespace {

using enum MemberStyle;

Variant Answer(vantrel::Text text) { return Variant::OfText(std::move(text)); }
Variant Count(int count) { return Variant::OfInt16(static_cast<std::int16_t>(count)); }

// A member whose value is a text.
template <std::string (Forecourt::*Act)(TextView)>
std::string OfText(Forecourt& site, const Variant& value) {
    if (!value.is(Variant::Kind::Text)) {
        return "the value is no text";
    }
    return (site.*Act)(value.text());
}

// A member whose value is a block: the block's first problem, else what the
// model said.
template <std::string (*Read)(Forecourt&, BlockReader&)>
std::string Block(Forecourt& site, const Variant& value) {
    if (!value.is(Variant::Kind::Text)) {
        return "the value is no text";
    }
    BlockReader block(value.text());
    const std::string problem = Read(site, block);
    return block.ok() ? problem : block.problem();
}

template <std::string (FuelingPosition::*Read)(BlockReader&)>
std::string AtPosition(Forecourt& site, BlockReader& block) {
    const auto position = block.Position("FuelingPosition");
    return position ? (site.position(*position).*Read)(block) : std::string();
}

template <std::string (ReaderTerminal::*Read)(BlockReader&)>
std::string AtReader(Forecourt& site, BlockReader& block) {
    const auto position = block.Position("ReaderPosition");
    return position ? (site.reader(*position).*Read)(block) : std::string();
}

constexpr std::array kMembers{
    // Assignments.
    Member{"Authorize", Assignment, Block<AtPosition<&FuelingPosition::ReadAuthorize>>},
    Member{"Price", Assignment, Block<AtPosition<&FuelingPosition::ReadPrices>>},
    Member{"DisplayData", Assignment, Block<AtReader<&ReaderTerminal::ReadDisplay>>},
    Member{"PrintOutput", Assignment, Block<AtReader<&ReaderTerminal::ReadPrint>>},
    Member{"BeeperControl", Assignment, Block<AtReader<&ReaderTerminal::ReadBeeper>>},
    Member{"KeyEntryType", Assignment, Block<AtReader<&ReaderTerminal::ReadEntryMode>>},
    Member{"KeyPadConfiguration", Assignment, Block<AtReader<&ReaderTerminal::ReadKeyPad>>},
    Member{"PacketQueOutput", Assignment, OfText<&Forecourt::ReceivePacketBlock>},
    Member{"PreloadDisplayMessage", Assignment, Block<[](Forecourt& site, BlockReader& block) {
               site.preloaded.Read(block);
               return std::string();
           }>},
    Member{"WindowControl", Assignment, Block<[](Forecourt& site, BlockReader& block) {
               site.settings.ReadWindowControl(block);
               return std::string();
           }>},
    Member{"SerialPortParameters", Assignment, Block<[](Forecourt& site, BlockReader& block) {
               site.settings.ReadSerialPort(block);
               return std::string();
           }>},
    Member{"CarWashInformationRequest", Assignment,
           Block<[](Forecourt& site, BlockReader& block) { return site.carWash.Request(block, site.now()); }>},
    Member{"PriceSignDataSend", Assignment,
           Block<[](Forecourt& site, BlockReader& block) { return site.priceSign.Send(block); }>},
    Member{"ReaderControl", Assignment, Block<AtReader<&ReaderTerminal::ReadChipReader>>},
    Member{"Stop", Assignment, OfText<&Forecourt::StopAt>},
    Member{"Deauthorize", Assignment, OfText<&Forecourt::DeauthorizeAt>},
    Member{"Resume", Assignment, OfText<&Forecourt::ResumeAt>},
    Member{"PayOutSale", Assignment, OfText<&Forecourt::PayOutAt>},
    Member{"TankMonitorStartReport", Assignment,
           [](Forecourt& site, const Variant& value) { return site.tanks.ReadStart(value, site.now()); }},
    // Calls that answer a text.
    Member{"CardQue", Text, nullptr, [](Forecourt& site) { return Answer(site.queues.CardAnswer()); }},
    Member{"CashInQue", Text, nullptr, [](Forecourt& site) { return Answer(site.queues.CashAnswer()); }},
    Member{"KeyQue", Text, nullptr, [](Forecourt& site) { return Answer(site.queues.KeyAnswer()); }},
    Member{"PacketQueInput", Text, nullptr, [](Forecourt& site) { return Answer(site.queues.PacketAnswer()); }},
    Member{"QueCountQuery", Text, nullptr, [](Forecourt& site) { return Answer(site.queues.CountAnswer()); }},
    Member{"ReadErrorQue", Text, nullptr, [](Forecourt& site) { return Answer(site.queues.ErrorAnswer()); }},
    Member{"SystemVersions", Text, nullptr, [](Forecourt& site) { return Answer(site.settings.Versions()); }},
    Member{"CarWashRequestStatus", Text, nullptr,
           [](Forecourt& site) { return Answer(site.carWash.RequestStatus(site.now())); }},
    Member{"CarWashDataRead", Text, nullptr, [](Forecourt& site) { return Answer(site.carWash.DataRead(site.now())); }},
    Member{"CarWashOperationStatus", Text, nullptr,
           [](Forecourt& site) { return Answer(site.carWash.OperationStatus(site.now())); }},
    Member{"PriceSignDataRead", Text, nullptr, [](Forecourt& site) { return Answer(site.priceSign.Read()); }},
    Member{"TankMonitorReport", Text, nullptr, [](Forecourt& site) { return Answer(site.tanks.Report()); }},
    Member{"TankMonitorReportStatus", Text, nullptr, [](Forecourt& site) { return Answer(site.tanks.Status()); }},
    // Calls that answer a 16-bit number.
    Member{"ClearTopCardQue", Numeric, nullptr, [](Forecourt& site) { return Count(site.queues.ClearTopCard()); }},
    Member{"ClearTopCashQue", Numeric, nullptr, [](Forecourt& site) { return Count(site.queues.ClearTopCash()); }},
    Member{"ClearTopKeyQue", Numeric, nullptr, [](Forecourt& site) { return Count(site.queues.ClearTopKey()); }},
    Member{"ClearErrorQue", Numeric, nullptr, [](Forecourt& site) { return Count(site.queues.ClearErrors()); }},
    Member{"ClearPacketEntry", Numeric, nullptr, [](Forecourt& site) { return Count(site.queues.ClearTopPacket()); }},
    Member{"InvokeHelpFile", Numeric, nullptr,
           [](Forecourt& site) {
               site.settings.OpenHelp();
               return Count(0);
           }},
    Member{"SelfDiagnosticsReportStart", Numeric, nullptr,
           [](Forecourt& site) {
               site.settings.StartDiagnostics(site.now());
               return Count(0);
           }},
    Member{"SelfDiagnosticsReportStatus", Numeric, nullptr,
           [](Forecourt& site) { return Count(site.settings.DiagnosticsBusy(site.now()) ? 1 : 0); }},
    // Calls about one position.
    Member{"FuelingPositionInformation", WithPosition, nullptr, nullptr,
           [](Forecourt& site, int position) { return Answer(site.position(position).Information()); }},
    Member{"DispenserInformation", WithPosition, nullptr, nullptr,
           [](Forecourt& site, int position) { return Answer(site.position(position).DispenserInformation()); }},
    Member{"ReaderInformation", WithPosition, nullptr, nullptr,
           [](Forecourt& site, int position) { return Answer(site.reader(position).Information(site.preloaded)); }},
};

// Every row carries the action its style needs, and only that one.
constexpr bool Complete() {
    for (const Member& member : kMembers) {
        const bool assigns = member.assign != nullptr;
        const bool answers = member.answer != nullptr;
        const bool about = member.about != nullptr;
        const bool fits = member.style == Assignment     ? assigns && !answers && !about
                          : member.style == WithPosition ? about && !assigns && !answers
                                                         : answers && !assigns && !about;
        if (!fits) {
            return false;
        }
    }
    return true;
}
static_assert(Complete(), "each member has the one action its style needs");

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (Lower(a[i]) != Lower(b[i])) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::span<const Member> Members() { return kMembers; }

const Member& Info(MemberId id) { return kMembers[id]; }

std::optional<MemberId> FindMember(std::string_view name) {
    // A plain walk: the length check rejects nearly every row at once, and
    // nothing is allocated on the way.
    for (std::size_t i = 0; i < kMembers.size(); ++i) {
        if (SameIgnoringCase(kMembers[i].name, name)) {
            return i;
        }
    }
    return std::nullopt;
}

}  // namespace vantrel::simulation
