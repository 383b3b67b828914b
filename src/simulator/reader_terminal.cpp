#include "reader_terminal.h"

#include "answer_text.h"
#include "display_picture.h"
#include "server/command_block.h"
#include "server_settings.h"
#include "block_reader.h"

#include <array>
#include <string_view>

namespace vantrel::simulation {

namespace {

constexpr std::array<std::u16string_view, 7> kEntryModes{
    u"DESEncryption",      u"DESEncryptionNoCursor",      u"AnyKey", u"NumericWithEcho", u"NumericWithEchoNoCursor",
    u"NumericWithOutEcho", u"NumericWithOutEchoNoCursor",
};

// The last digit of an EAN-8 or EAN-13 number checks the others: weights 3
// and 1 alternate leftwards from the digit before it.
bool EanCheckDigitFits(TextView digits) {
    int sum = 0;
    int weight = 3;
    for (std::size_t i = digits.size() - 1; i-- > 0;) {
        sum += (digits[i] - u'0') * weight;
        weight = 4 - weight;
    }
    return (10 - sum % 10) % 10 == digits.back() - u'0';
}

std::string CheckBarCode(TextView digits) {
    if ((digits.size() != 8 && digits.size() != 13) || digits.find_first_not_of(u"0123456789") != TextView::npos) {
        return "bar code \"" + Readable(digits) + "\" is neither EAN-8 nor EAN-13 digits";
    }
    if (!EanCheckDigitFits(digits)) {
        return "bar code " + ToUtf8(digits) + " has a wrong check digit";
    }
    return {};
}

// The text of an attribute NAME="..." in a packet, or nothing.
TextView Attribute(TextView data, std::u16string_view name) {
    const std::size_t start = data.find(name);
    if (start == TextView::npos || data.substr(start + name.size(), 2) != u"=\"") {
        return {};
    }
    const std::size_t from = start + name.size() + 2;
    const std::size_t close = data.find(u'"', from);
    return close == TextView::npos ? TextView() : data.substr(from, close - from);
}

}  // namespace

ReaderTerminal::ReaderTerminal(int number)
    : positionText_(PositionText(number)) {}

std::string ReaderTerminal::Show(TextView message) {
    std::string problem = CheckDisplayMessage(message);
    if (problem.empty()) {
        message_.assign(message);
        securePrompt_ = false;
    }
    return problem;
}

std::string ReaderTerminal::Print(TextView job, TextView message) {
    if (job != u"Receipt" && job != u"Header" && job != u"Footer") {
        return "Job=" + Readable(job) + " is not a print job (Receipt, Header or Footer)";
    }
    TextView barCode;
    for (std::size_t i = message.find(kEsc); i != TextView::npos; i = message.find(kEsc, i + 1)) {
        const std::size_t etx = message.find(kEtx, i);
        if (i + 1 >= message.size() || message[i + 1] != u'B' || etx == TextView::npos) {
            return "character " + std::to_string(i + 1) + " of the message: the printer knows only ESC B digits ETX";
        }
        barCode = message.substr(i + 2, etx - i - 2);
        if (std::string problem = CheckBarCode(barCode); !problem.empty()) {
            return problem;
        }
    }
    // Text lines, then the empty lines that feed the paper out.
    std::int64_t lines = 0;
    std::int64_t feed = 0;
    TextView rest = message;
    while (!rest.empty()) {
        const std::size_t end = rest.find(u"\r\n");
        const TextView line = rest.substr(0, end);
        if (line.empty()) {
            ++feed;
        } else {
            lines += 1 + feed;
            feed = 0;
        }
        rest = end == TextView::npos ? TextView() : rest.substr(end + 2);
    }
    ++printJobs_;
    lastJob_.assign(job);
    lastJobLines_ = lines;
    if (!barCode.empty()) {
        lastBarCode_.assign(barCode);
    }
    const TextView firstLine = message.substr(0, message.find(u"\r\n"));
    if (job == u"Header") {
        header_.assign(firstLine);
    } else if (job == u"Footer") {
        footer_.assign(firstLine);
    }
    return {};
}

std::string ReaderTerminal::SetEntryMode(TextView mode) {
    for (const std::u16string_view known : kEntryModes) {
        if (mode == known) {
            entryMode_.assign(mode);
            return {};
        }
    }
    return "EntryMode=" + Readable(mode) + " is not a key entry mode";
}

std::string ReaderTerminal::ReceivePacket(TextView data) {
    if (data.starts_with(u"<PrinterCommand>")) {
        const TextView barCode = Attribute(data, u"Characters");
        if (!barCode.empty()) {
            if (std::string problem = CheckBarCode(barCode); !problem.empty()) {
                return problem;
            }
            lastBarCode_.assign(barCode);
        }
        ++printJobs_;
        lastJob_ = u"Packet";
        lastJobLines_ = 0;
    } else if (data.starts_with(u"<DisplaySecurePromptCommand")) {
        securePrompt_ = true;
        message_ = u"Enter PIN";
    } else if (data.starts_with(u"<DisplayCommand><SetImageDetailsCommand")) {
        image_.assign(Attribute(data, u"Filename"));
    }
    ++packets_;
    // Only its start is ever shown: an image packet of many megabytes is not
    // kept a second time.
    lastPacket_.assign(data.substr(0, kKeptPacket));
    return {};
}

Text ReaderTerminal::KeyEntry(TextView keys) {
    const bool encrypted = securePrompt_ || entryMode_.starts_with(u"DES");
    const bool echo = !encrypted && entryMode_.find(u"WithOut") == Text::npos;
    message_ = echo ? Text(keys) : Text(keys.size(), u'*');
    securePrompt_ = false;
    if (!encrypted) {
        return Text(keys);
    }
    // Not real DES: a PIN block that differs with the keys and the terminal.
    std::uint64_t hash = 0xcbf29ce484222325ull;
    for (const char16_t c : positionText_ + Text(keys)) {
        hash = (hash ^ c) * 0x100000001b3ull;
    }
    static constexpr char kHex[] = "0123456789ABCDEF";
    Text block;
    for (int shift = 60; shift >= 0; shift -= 4) {
        block.push_back(static_cast<char16_t>(kHex[(hash >> shift) & 0xF]));
    }
    return block;
}

void ReaderTerminal::CardSwiped(const PreloadedMessages& messages) {
    if (messages.card[0].loaded) {
        message_ = messages.card[0].text;
    }
}

Text ReaderTerminal::Information(const PreloadedMessages& messages) const {
    const DisplayPicture picture = RenderDisplay(message_);
    AnswerText answer;
    answer.Add("ReaderPosition", positionText_).Add("DisplayLines", static_cast<int>(picture.lines.size()));
    for (std::size_t i = 0; i < picture.lines.size(); ++i) {
        answer.Add("DisplayLine" + std::to_string(i + 1), OneLine(picture.lines[i], 80));
    }
    if (!picture.font.empty()) {
        answer.Add("Font", picture.font);
    }
    if (!picture.align.empty()) {
        answer.Add("Align", picture.align);
    }
    for (std::size_t i = 0; i < picture.softKeys.size(); ++i) {
        if (!picture.softKeys[i].empty()) {
            answer.Add("SoftKey" + std::to_string(i + 1), OneLine(picture.softKeys[i], 40));
        }
    }
    answer.Add("EntryMode", entryMode_)
        .Add("KeyPad", OneLine(keyPad_, 80))
        .Add("ChipReader", chipReader_ ? "Enable" : "Disable")
        .Add("Beeps", beeps_)
        .Add("PrintJobs", printJobs_)
        .Add("LastJob", lastJob_)
        .Add("LastJobLines", lastJobLines_)
        .Add("BarCode", lastBarCode_)
        .Add("Header", OneLine(header_, 80))
        .Add("Footer", OneLine(footer_, 80))
        .Add("PacketsOut", packets_)
        .Add("LastPacket", OneLine(lastPacket_, 80))
        .Add("Image", OneLine(image_, 80))
        .Add("PreloadedCardMessages", messages.Loaded(messages.card))
        .Add("PreloadedPrinterMessages", messages.Loaded(messages.printer));
    return answer.Take();
}

std::string ReaderTerminal::ReadDisplay(BlockReader& block) {
    block.Take("Message");
    return block.ok() ? Show(block.RestFromLastLine()) : std::string();
}

std::string ReaderTerminal::ReadPrint(BlockReader& block) {
    const auto job = block.Take("Job");
    block.Take("Message");
    return block.ok() ? Print(*job, block.RestFromLastLine()) : std::string();
}

std::string ReaderTerminal::ReadBeeper(BlockReader& block) {
    const auto count = block.Number("BeepCounts", 2, 2, 99);
    block.ExpectEnd();
    if (block.ok()) {
        Beep(static_cast<int>(*count));
    }
    return {};
}

std::string ReaderTerminal::ReadEntryMode(BlockReader& block) {
    const auto mode = block.Take("EntryMode");
    block.ExpectEnd();
    return block.ok() ? SetEntryMode(*mode) : std::string();
}

std::string ReaderTerminal::ReadKeyPad(BlockReader& block) {
    const auto keys = block.Take("KeyData");
    block.ExpectEnd();
    if (block.ok() && keys->empty()) {
        block.Fail("KeyData= is empty");
    }
    if (block.ok()) {
        SetKeyPad(*keys);
    }
    return {};
}

std::string ReaderTerminal::ReadChipReader(BlockReader& block) {
    const auto control = block.Take("ChipReaderControl");
    if (control && *control != u"Enable" && *control != u"Disable") {
        block.Fail("ChipReaderControl=" + Readable(*control) + " is neither Enable nor Disable");
    }
    block.ExpectEnd();
    if (block.ok()) {
        SetChipReader(*control == u"Enable");
    }
    return {};
}

}  // namespace vantrel::simulation
