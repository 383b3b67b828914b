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

// One maker per style, so that each row carries the one action its style
// needs and no other.
constexpr Member Assigned(std::string_view name, std::string (*assign)(Forecourt&, const Variant&)) {
    return {name, Assignment, assign, nullptr, nullptr};
}
constexpr Member Answers(std::string_view name, MemberStyle style, Variant (*answer)(Forecourt&)) {
    return {name, style, nullptr, answer, nullptr};
}
constexpr Member AnswersAbout(std::string_view name, Variant (*about)(Forecourt&, int)) {
    return {name, WithPosition, nullptr, nullptr, about};
}

constexpr std::array kMembers{
    // Assignments.
    Assigned("Authorize", Block<AtPosition<&FuelingPosition::ReadAuthorize>>),
    Assigned("Price", Block<AtPosition<&FuelingPosition::ReadPrices>>),
    Assigned("DisplayData", Block<AtReader<&ReaderTerminal::ReadDisplay>>),
    Assigned("PrintOutput", Block<AtReader<&ReaderTerminal::ReadPrint>>),
    Assigned("BeeperControl", Block<AtReader<&ReaderTerminal::ReadBeeper>>),
    Assigned("KeyEntryType", Block<AtReader<&ReaderTerminal::ReadEntryMode>>),
    Assigned("KeyPadConfiguration", Block<AtReader<&ReaderTerminal::ReadKeyPad>>),
    Assigned("PacketQueOutput", OfText<&Forecourt::ReceivePacketBlock>),
    Assigned("PreloadDisplayMessage", Block<[](Forecourt& site, BlockReader& block) {
                 site.preloaded.Read(block);
                 return std::string();
             }>),
    Assigned("WindowControl", Block<[](Forecourt& site, BlockReader& block) {
                 site.settings.ReadWindowControl(block);
                 return std::string();
             }>),
    Assigned("SerialPortParameters", Block<[](Forecourt& site, BlockReader& block) {
                 site.settings.ReadSerialPort(block);
                 return std::string();
             }>),
    Assigned("CarWashInformationRequest",
             Block<[](Forecourt& site, BlockReader& block) { return site.carWash.Request(block, site.now()); }>),
    Assigned("PriceSignDataSend",
             Block<[](Forecourt& site, BlockReader& block) { return site.priceSign.Send(block); }>),
    Assigned("ReaderControl", Block<AtReader<&ReaderTerminal::ReadChipReader>>),
    Assigned("Stop", OfText<&Forecourt::StopAt>),
    Assigned("Deauthorize", OfText<&Forecourt::DeauthorizeAt>),
    Assigned("Resume", OfText<&Forecourt::ResumeAt>),
    Assigned("PayOutSale", OfText<&Forecourt::PayOutAt>),
    Assigned("TankMonitorStartReport",
             [](Forecourt& site, const Variant& value) { return site.tanks.ReadStart(value, site.now()); }),
    // Calls that answer a text.
    Answers("CardQue", Text, [](Forecourt& site) { return Answer(site.queues.CardAnswer()); }),
    Answers("CashInQue", Text, [](Forecourt& site) { return Answer(site.queues.CashAnswer()); }),
    Answers("KeyQue", Text, [](Forecourt& site) { return Answer(site.queues.KeyAnswer()); }),
    Answers("PacketQueInput", Text, [](Forecourt& site) { return Answer(site.queues.PacketAnswer()); }),
    Answers("QueCountQuery", Text, [](Forecourt& site) { return Answer(site.queues.CountAnswer()); }),
    Answers("ReadErrorQue", Text, [](Forecourt& site) { return Answer(site.queues.ErrorAnswer()); }),
    Answers("SystemVersions", Text, [](Forecourt& site) { return Answer(site.settings.Versions()); }),
    Answers("CarWashRequestStatus", Text,
            [](Forecourt& site) { return Answer(site.carWash.RequestStatus(site.now())); }),
    Answers("CarWashDataRead", Text, [](Forecourt& site) { return Answer(site.carWash.DataRead(site.now())); }),
    Answers("CarWashOperationStatus", Text,
            [](Forecourt& site) { return Answer(site.carWash.OperationStatus(site.now())); }),
    Answers("PriceSignDataRead", Text, [](Forecourt& site) { return Answer(site.priceSign.Read()); }),
    Answers("TankMonitorReport", Text, [](Forecourt& site) { return Answer(site.tanks.Report()); }),
    Answers("TankMonitorReportStatus", Text, [](Forecourt& site) { return Answer(site.tanks.Status()); }),
    // Calls that answer a 16-bit number.
    Answers("ClearTopCardQue", Numeric, [](Forecourt& site) { return Count(site.queues.ClearTopCard()); }),
    Answers("ClearTopCashQue", Numeric, [](Forecourt& site) { return Count(site.queues.ClearTopCash()); }),
    Answers("ClearTopKeyQue", Numeric, [](Forecourt& site) { return Count(site.queues.ClearTopKey()); }),
    Answers("ClearErrorQue", Numeric, [](Forecourt& site) { return Count(site.queues.ClearErrors()); }),
    Answers("ClearPacketEntry", Numeric, [](Forecourt& site) { return Count(site.queues.ClearTopPacket()); }),
    Answers("InvokeHelpFile", Numeric,
            [](Forecourt& site) {
                site.settings.OpenHelp();
                return Count(0);
            }),
    Answers("SelfDiagnosticsReportStart", Numeric,
            [](Forecourt& site) {
                site.settings.StartDiagnostics(site.now());
                return Count(0);
            }),
    Answers("SelfDiagnosticsReportStatus", Numeric,
            [](Forecourt& site) { return Count(site.settings.DiagnosticsBusy(site.now()) ? 1 : 0); }),
    // Calls about one position.
    AnswersAbout("FuelingPositionInformation",
                 [](Forecourt& site, int position) { return Answer(site.position(position).Information()); }),
    AnswersAbout("DispenserInformation",
                 [](Forecourt& site, int position) { return Answer(site.position(position).DispenserInformation()); }),
    AnswersAbout(
        "ReaderInformation",
        [](Forecourt& site, int position) { return Answer(site.reader(position).Information(site.preloaded)); }),
};

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
