// What each assignment does to the model. A block is read top to bottom in
// the order its member expects; the first line that does not fit becomes an
// entry in the error queue and the model stays as it was.
#include "simulator.h"

#include "simulator/answer_text.h"
#include "simulator/block_parser.h"
#include "simulator/block_reader.h"

#include <array>

namespace vantrel {

using simulation::BlockReader;
using simulation::MemberId;
using simulation::ParseDigits;
using simulation::Quoted;
using simulation::Readable;

namespace {

// "FuelingPosition=07" or "ReaderPosition=07": two digits 01 to 32.
std::optional<int> PositionLine(BlockReader& block, std::string_view key) {
    const auto value = block.Take(key);
    if (!value) {
        return std::nullopt;
    }
    const auto number = ParseDigits(*value, 2, 2);
    if (!number || *number < 1 || *number > simulation::kPositions) {
        block.Fail(std::string(key) + "=" + Readable(*value) + " is not a fueling position (01 to 32)");
        return std::nullopt;
    }
    return static_cast<int>(*number);
}

std::optional<std::int64_t> NumberLine(BlockReader& block, std::string_view key, std::size_t minDigits,
                                       std::size_t maxDigits, std::int64_t highest) {
    const auto value = block.Take(key);
    if (!value) {
        return std::nullopt;
    }
    const auto number = ParseDigits(*value, minDigits, maxDigits);
    if (!number || *number > highest) {
        const std::string digits = minDigits != maxDigits
                                       ? std::to_string(minDigits) + " to " + std::to_string(maxDigits) + " digits"
                                   : minDigits == 1 ? std::string("one digit")
                                                    : std::to_string(minDigits) + " digits";
        block.Fail(std::string(key) + "=" + Readable(*value) + " is not " + digits + " up to " +
                   std::to_string(highest));
        return std::nullopt;
    }
    return number;
}

// A unit price in thousandths of the currency a litre: "1459" as the fixed
// blocks write it, or "1.459" as a technician may type it.
std::optional<std::int64_t> PriceLine(BlockReader& block, std::string_view key) {
    const auto value = block.Take(key);
    if (!value) {
        return std::nullopt;
    }
    const std::size_t point = value->find(u'.');
    const auto whole = ParseDigits(value->substr(0, point), 1, 6);
    const TextView fraction = point == TextView::npos ? TextView() : value->substr(point + 1);
    const auto part = fraction.empty() ? std::optional<std::int64_t>(0) : ParseDigits(fraction, 1, 3);
    if (!whole || !part || (point != TextView::npos && fraction.empty()) || (point != TextView::npos && *whole > 999)) {
        block.Fail(std::string(key) + "=" + Readable(*value) +
                   " is not a price (1 to 6 digits in thousandths, or up to three decimals: 1459, 1.459)");
        return std::nullopt;
    }
    if (point == TextView::npos) {
        return whole;
    }
    std::int64_t thousandths = *part;
    for (std::size_t digits = fraction.size(); digits < 3; ++digits) {
        thousandths *= 10;
    }
    return *whole * 1000 + thousandths;
}

// The rest of a message: its last line's CR LF ends the block, not the text.
TextView WithoutLastLineEnd(TextView message) {
    if (message.ends_with(u"\r\n")) {
        message.remove_suffix(2);
    }
    return message;
}

}  // namespace

void Simulator::Assign(MemberId member, const Variant& value) {
    if (member == MemberId::TankMonitorStartReport) {
        const bool number =
            value.is(Variant::Kind::Int16) || value.is(Variant::Kind::Int32) || value.is(Variant::Kind::Double);
        const bool one = value.int16() == 1 || value.int32() == 1 || value.real() == 1.0;
        if (!number || !one) {
            Report(member, "the report starts with the number 1, not " +
                               (number ? std::string("the number ") + ToUtf8(ToText(value))
                                       : std::string("a value that is no number")));
            return;
        }
        forecourt_->tanks.Start(clock_->Now());
        return;
    }
    if (!value.is(Variant::Kind::Text)) {
        Report(member, "the value is no text");
        return;
    }
    switch (member) {
    case MemberId::Stop:
    case MemberId::Resume:
    case MemberId::Deauthorize:
    case MemberId::PayOutSale: AssignSaleControl(member, value.text()); return;
    default: AssignBlock(member, value.text()); return;
    }
}

void Simulator::AssignSaleControl(MemberId member, TextView value) {
    simulation::Forecourt& site = *forecourt_;
    if (member == MemberId::Stop && value == u"0") {
        for (int number = 1; number <= simulation::kPositions; ++number) {
            site.position(number).Stop();
        }
        return;
    }
    const auto number = ParseDigits(value, 2, 2);
    if (!number || *number < 1 || *number > simulation::kPositions) {
        Report(member, Quoted(value) + " is not a fueling position (01 to 32" +
                           (member == MemberId::Stop ? ", or 0 for all)" : ")"));
        return;
    }
    simulation::FuelingPosition& position = site.position(static_cast<int>(*number));
    switch (member) {
    case MemberId::Stop: position.Stop(); break;
    case MemberId::Resume: Report(member, position.Resume()); break;
    case MemberId::Deauthorize: Report(member, position.Deauthorize()); break;
    default: Report(member, position.PayOut()); break;
    }
}

void Simulator::AssignBlock(MemberId member, TextView text) {
    simulation::Forecourt& site = *forecourt_;
    if (member == MemberId::PacketQueOutput) {
        const simulation::PacketParse parsed = simulation::ParsePacketBlock(text);
        const auto number = ParseDigits(parsed.packet.position, 2, 2);
        if (!parsed.problem.empty()) {
            Report(member, parsed.problem);
        } else if (!number || *number < 1 || *number > simulation::kPositions) {
            Report(member,
                   "ReaderPosition=" + Readable(parsed.packet.position) + " is not a fueling position (01 to 32)");
        } else {
            Report(member, site.reader(static_cast<int>(*number)).ReceivePacket(parsed.packet.data));
        }
        return;
    }
    BlockReader block(text);
    std::string problem;
    switch (member) {
    case MemberId::Authorize: {
        const auto position = PositionLine(block, "FuelingPosition");
        const auto hose = block.Take("Hose");
        const auto mop = block.Take("MOP");
        const auto limit = block.Take("Limit");
        block.ExpectEnd();
        if (block.ok()) {
            problem = site.position(*position).Authorize(*hose, *mop, *limit);
        }
        break;
    }
    case MemberId::Price: {
        const auto position = PositionLine(block, "FuelingPosition");
        const auto slowdown = NumberLine(block, "SlowdownPoint", 1, 4, 9999);
        std::array<simulation::HosePrice, simulation::kMaxHoses> prices{};
        int count = 0;
        unsigned seen = 0;
        while (block.ok() && !block.AtEnd()) {
            const auto hose = NumberLine(block, "Hose", 1, 1, simulation::kMaxHoses);
            if (block.ok() && (*hose == 0 || (seen >> *hose) & 1u)) {
                block.Fail(*hose == 0 ? "Hose=0 has no price" : "Hose=" + std::to_string(*hose) + " comes twice");
            }
            const auto tier1 = PriceLine(block, "Tier1");
            const auto tier2 = PriceLine(block, "Tier2");
            std::optional<std::int64_t> blend;
            if (block.ok() && block.NextIs("Blend")) {
                blend = NumberLine(block, "Blend", 3, 3, 100);
            }
            if (block.ok()) {
                seen |= 1u << *hose;
                prices[static_cast<std::size_t>(count++)] = {static_cast<int>(*hose), *tier1, *tier2,
                                                             blend ? static_cast<int>(*blend) : -1};
            }
        }
        if (block.ok()) {
            problem = site.position(*position).SetPrices(*slowdown, prices.data(), count);
        }
        break;
    }
    case MemberId::DisplayData: {
        const auto position = PositionLine(block, "ReaderPosition");
        block.Take("Message");
        if (block.ok()) {
            problem = site.reader(*position).Show(block.RestFromLastLine());
        }
        break;
    }
    case MemberId::PrintOutput: {
        const auto position = PositionLine(block, "ReaderPosition");
        const auto job = block.Take("Job");
        block.Take("Message");
        if (block.ok()) {
            problem = site.reader(*position).Print(*job, block.RestFromLastLine());
        }
        break;
    }
    case MemberId::BeeperControl: {
        const auto position = PositionLine(block, "ReaderPosition");
        const auto count = NumberLine(block, "BeepCounts", 2, 2, 99);
        block.ExpectEnd();
        if (block.ok()) {
            site.reader(*position).Beep(static_cast<int>(*count));
        }
        break;
    }
    case MemberId::KeyEntryType: {
        const auto position = PositionLine(block, "ReaderPosition");
        const auto mode = block.Take("EntryMode");
        block.ExpectEnd();
        if (block.ok()) {
            problem = site.reader(*position).SetEntryMode(*mode);
        }
        break;
    }
    case MemberId::KeyPadConfiguration: {
        const auto position = PositionLine(block, "ReaderPosition");
        const auto keys = block.Take("KeyData");
        block.ExpectEnd();
        if (block.ok() && keys->empty()) {
            block.Fail("KeyData= is empty");
        }
        if (block.ok()) {
            site.reader(*position).SetKeyPad(*keys);
        }
        break;
    }
    case MemberId::ReaderControl: {
        const auto position = PositionLine(block, "ReaderPosition");
        const auto control = block.Take("ChipReaderControl");
        if (control && *control != u"Enable" && *control != u"Disable") {
            block.Fail("ChipReaderControl=" + Readable(*control) + " is neither Enable nor Disable");
        }
        block.ExpectEnd();
        if (block.ok()) {
            site.reader(*position).SetChipReader(*control == u"Enable");
        }
        break;
    }
    case MemberId::PreloadDisplayMessage: {
        const auto section = NumberLine(block, "Section", 1, 1, 1);
        const auto type = block.Take("MessageType");
        if (type && *type != u"Card" && *type != u"Printer") {
            block.Fail("MessageType=" + Readable(*type) + " is neither Card nor Printer");
        }
        const auto number = NumberLine(block, "MessageNumber", 1, 1, simulation::PreloadedMessages::kNumbers);
        if (block.ok() && *number == 0) {
            block.Fail("MessageNumber=0: messages are numbered from 1");
        }
        block.Take("Message");
        if (block.ok()) {
            auto& kind = *type == u"Card" ? site.preloaded.card : site.preloaded.printer;
            simulation::PreloadedMessage& slot = kind[static_cast<std::size_t>(*number - 1)];
            slot.loaded = true;
            slot.section = static_cast<int>(*section);
            slot.text.assign(WithoutLastLineEnd(block.RestFromLastLine()));
        }
        break;
    }
    case MemberId::WindowControl: {
        const simulation::BlockLine* line = block.TakeAny();
        const bool visible = line && line->kind == simulation::BlockLine::Kind::Word && line->key == u"Visible";
        const bool hide = line && line->kind == simulation::BlockLine::Kind::Word && line->key == u"Hide";
        if (block.ok() && !visible && !hide) {
            block.Fail(line ? Quoted(line->text) + " is neither Visible nor Hide"
                            : "the block holds neither Visible nor Hide");
        }
        block.ExpectEnd();
        if (block.ok()) {
            site.settings.SetWindowVisible(visible);
        }
        break;
    }
    case MemberId::SerialPortParameters: {
        const auto port = block.NextIs("PortNumber") ? NumberLine(block, "PortNumber", 1, 1, 4) : 1;
        if (block.ok() && *port == 0) {
            block.Fail("PortNumber=0: ports are numbered 1 to 4");
        }
        std::int64_t baud = 9600;
        while (block.ok() && block.NextIs("BaudRate")) {
            const auto rate = NumberLine(block, "BaudRate", 4, 5, 19200);
            if (block.ok() && *rate != 2400 && *rate != 4800 && *rate != 9600 && *rate != 19200) {
                block.Fail("BaudRate=" + std::to_string(*rate) + " is not 2400, 4800, 9600 or 19200");
            }
            baud = rate.value_or(baud);
        }
        const auto logFile = block.Take("LogFileName");
        block.ExpectEnd();
        if (block.ok()) {
            site.settings.SetLink(static_cast<int>(*port), static_cast<int>(baud), *logFile);
        }
        break;
    }
    case MemberId::CarWashInformationRequest: problem = site.carWash.Request(block, clock_->Now()); break;
    case MemberId::PriceSignDataSend: problem = site.priceSign.Send(block); break;
    default: break;
    }
    Report(member, block.ok() ? problem : block.problem());
}

}  // namespace vantrel
