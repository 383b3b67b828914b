#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace vantrel::simulation {

// How a member is invoked. A member used in another way raises error 438,
// as the server's own dispatch does.
enum class MemberStyle {
    Assignment,    // member = value
    Text,          // result = member(), a text
    Numeric,       // result = member(), a 16-bit number
    WithPosition,  // result = member(position)
};

enum class MemberId {
    Authorize,
    Price,
    DisplayData,
    PrintOutput,
    BeeperControl,
    KeyEntryType,
    KeyPadConfiguration,
    PacketQueOutput,
    PreloadDisplayMessage,
    WindowControl,
    SerialPortParameters,
    CarWashInformationRequest,
    PriceSignDataSend,
    ReaderControl,
    Stop,
    Deauthorize,
    Resume,
    PayOutSale,
    TankMonitorStartReport,
    CardQue,
    CashInQue,
    KeyQue,
    PacketQueInput,
    QueCountQuery,
    ReadErrorQue,
    SystemVersions,
    CarWashRequestStatus,
    CarWashDataRead,
    CarWashOperationStatus,
    PriceSignDataRead,
    TankMonitorReport,
    TankMonitorReportStatus,
    ClearTopCardQue,
    ClearTopCashQue,
    ClearTopKeyQue,
    ClearErrorQue,
    ClearPacketEntry,
    InvokeHelpFile,
    SelfDiagnosticsReportStart,
    SelfDiagnosticsReportStatus,
    FuelingPositionInformation,
    DispenserInformation,
    ReaderInformation,
};

inline constexpr std::size_t kMemberCount = static_cast<std::size_t>(MemberId::ReaderInformation) + 1;

struct MemberInfo {
    MemberId id;
    std::string_view name;
    MemberStyle style;
};

const MemberInfo& Info(MemberId id);
// By name, ignoring case as late binding does; nothing for an unknown name.
std::optional<MemberId> FindMember(std::string_view name);

}  // namespace vantrel::simulation
