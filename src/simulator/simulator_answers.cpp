// What each call answers, from the model as it stands now.
#include "simulator.h"

namespace vantrel {

using simulation::MemberId;

namespace {

Variant Count(int count) { return Variant::OfInt16(static_cast<std::int16_t>(count)); }

}  // namespace

Variant Simulator::Answer(MemberId member) {
    simulation::Forecourt& site = *forecourt_;
    const auto now = clock_->Now();
    switch (member) {
    case MemberId::CardQue: return Variant::OfText(site.queues.CardAnswer());
    case MemberId::KeyQue: return Variant::OfText(site.queues.KeyAnswer());
    case MemberId::CashInQue: return Variant::OfText(site.queues.CashAnswer());
    case MemberId::PacketQueInput: return Variant::OfText(site.queues.PacketAnswer());
    case MemberId::QueCountQuery: return Variant::OfText(site.queues.CountAnswer());
    case MemberId::ReadErrorQue: return Variant::OfText(site.queues.ErrorAnswer());
    case MemberId::SystemVersions: return Variant::OfText(site.settings.Versions());
    case MemberId::CarWashRequestStatus: return Variant::OfText(site.carWash.RequestStatus(now));
    case MemberId::CarWashDataRead: return Variant::OfText(site.carWash.DataRead(now));
    case MemberId::CarWashOperationStatus: return Variant::OfText(site.carWash.OperationStatus(now));
    case MemberId::PriceSignDataRead: return Variant::OfText(site.priceSign.Read());
    case MemberId::TankMonitorReport: return Variant::OfText(site.tanks.Report());
    case MemberId::TankMonitorReportStatus: return Variant::OfText(site.tanks.Status());
    case MemberId::ClearTopCardQue: return Count(site.queues.ClearTopCard());
    case MemberId::ClearTopCashQue: return Count(site.queues.ClearTopCash());
    case MemberId::ClearTopKeyQue: return Count(site.queues.ClearTopKey());
    case MemberId::ClearErrorQue: return Count(site.queues.ClearErrors());
    case MemberId::ClearPacketEntry: return Count(site.queues.ClearTopPacket());
    case MemberId::InvokeHelpFile: site.settings.OpenHelp(); return Count(0);
    case MemberId::SelfDiagnosticsReportStart: site.settings.StartDiagnostics(now); return Count(0);
    case MemberId::SelfDiagnosticsReportStatus: return Count(site.settings.DiagnosticsBusy(now) ? 1 : 0);
    default: return Variant::OfText({});
    }
}

Variant Simulator::AnswerAbout(MemberId member, int position) {
    if (position < 1 || position > simulation::kPositions) {
        Report(member, "there is no fueling position " + std::to_string(position) + " (1 to 32)");
        return Variant::OfText({});
    }
    simulation::Forecourt& site = *forecourt_;
    switch (member) {
    case MemberId::FuelingPositionInformation: return Variant::OfText(site.position(position).Information());
    case MemberId::DispenserInformation: return Variant::OfText(site.position(position).DispenserInformation());
    default: return Variant::OfText(site.reader(position).Information(site.preloaded));
    }
}

}  // namespace vantrel
