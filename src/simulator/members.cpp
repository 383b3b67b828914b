#include "members.h"

#include <array>

namespace vantrel::simulation {

namespace {

using enum MemberId;
using enum MemberStyle;

// In the order of MemberId.
constexpr std::array<MemberInfo, kMemberCount> kMembers{{
    {Authorize, "Authorize", Assignment},
    {Price, "Price", Assignment},
    {DisplayData, "DisplayData", Assignment},
    {PrintOutput, "PrintOutput", Assignment},
    {BeeperControl, "BeeperControl", Assignment},
    {KeyEntryType, "KeyEntryType", Assignment},
    {KeyPadConfiguration, "KeyPadConfiguration", Assignment},
    {PacketQueOutput, "PacketQueOutput", Assignment},
    {PreloadDisplayMessage, "PreloadDisplayMessage", Assignment},
    {WindowControl, "WindowControl", Assignment},
    {SerialPortParameters, "SerialPortParameters", Assignment},
    {CarWashInformationRequest, "CarWashInformationRequest", Assignment},
    {PriceSignDataSend, "PriceSignDataSend", Assignment},
    {ReaderControl, "ReaderControl", Assignment},
    {Stop, "Stop", Assignment},
    {Deauthorize, "Deauthorize", Assignment},
    {Resume, "Resume", Assignment},
    {PayOutSale, "PayOutSale", Assignment},
    {TankMonitorStartReport, "TankMonitorStartReport", Assignment},
    {CardQue, "CardQue", Text},
    {CashInQue, "CashInQue", Text},
    {KeyQue, "KeyQue", Text},
    {PacketQueInput, "PacketQueInput", Text},
    {QueCountQuery, "QueCountQuery", Text},
    {ReadErrorQue, "ReadErrorQue", Text},
    {SystemVersions, "SystemVersions", Text},
    {CarWashRequestStatus, "CarWashRequestStatus", Text},
    {CarWashDataRead, "CarWashDataRead", Text},
    {CarWashOperationStatus, "CarWashOperationStatus", Text},
    {PriceSignDataRead, "PriceSignDataRead", Text},
    {TankMonitorReport, "TankMonitorReport", Text},
    {TankMonitorReportStatus, "TankMonitorReportStatus", Text},
    {ClearTopCardQue, "ClearTopCardQue", Numeric},
    {ClearTopCashQue, "ClearTopCashQue", Numeric},
    {ClearTopKeyQue, "ClearTopKeyQue", Numeric},
    {ClearErrorQue, "ClearErrorQue", Numeric},
    {ClearPacketEntry, "ClearPacketEntry", Numeric},
    {InvokeHelpFile, "InvokeHelpFile", Numeric},
    {SelfDiagnosticsReportStart, "SelfDiagnosticsReportStart", Numeric},
    {SelfDiagnosticsReportStatus, "SelfDiagnosticsReportStatus", Numeric},
    {FuelingPositionInformation, "FuelingPositionInformation", WithPosition},
    {DispenserInformation, "DispenserInformation", WithPosition},
    {ReaderInformation, "ReaderInformation", WithPosition},
}};

constexpr bool InOrder() {
    for (std::size_t i = 0; i < kMembers.size(); ++i) {
        if (static_cast<std::size_t>(kMembers[i].id) != i) {
            return false;
        }
    }
    return true;
}
static_assert(InOrder(), "the member table follows MemberId");

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

const MemberInfo& Info(MemberId id) { return kMembers[static_cast<std::size_t>(id)]; }

std::optional<MemberId> FindMember(std::string_view name) {
    // A plain walk: the length check rejects nearly every row at once, and
    // nothing is allocated on the way.
    for (const MemberInfo& member : kMembers) {
        if (SameIgnoringCase(member.name, name)) {
            return member.id;
        }
    }
    return std::nullopt;
}

}  // namespace vantrel::simulation
