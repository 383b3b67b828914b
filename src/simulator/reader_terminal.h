#pragma once

#include "server/text.h"

#include <cstdint>
#include <string>

namespace vantrel::simulation {

class BlockReader;
struct PreloadedMessages;

// The card acceptance terminal built into the dispenser at one position:
// display, keypad, receipt printer, beeper, card and chip readers.
class ReaderTerminal {
public:
    explicit ReaderTerminal(int number);

    // Commands; each returns an empty text when done, else why not.
    std::string Show(TextView message);
    std::string Print(TextView job, TextView message);
    void Beep(int count) { beeps_ += count; }
    std::string SetEntryMode(TextView mode);
    void SetKeyPad(TextView keys) { keyPad_.assign(keys); }
    void SetChipReader(bool enabled) { chipReader_ = enabled; }
    std::string ReceivePacket(TextView data);

    // The blocks of the members that drive a terminal, read after their
    // "ReaderPosition=" line. A problem with the block stays in the reader;
    // otherwise what the command said.
    std::string ReadDisplay(BlockReader& block);     // DisplayData
    std::string ReadPrint(BlockReader& block);       // PrintOutput
    std::string ReadBeeper(BlockReader& block);      // BeeperControl
    std::string ReadEntryMode(BlockReader& block);   // KeyEntryType
    std::string ReadKeyPad(BlockReader& block);      // KeyPadConfiguration
    std::string ReadChipReader(BlockReader& block);  // ReaderControl

    // What a key entry at this terminal yields for the key queue: the keys as
    // pressed, or a PIN block under DES encryption.
    const Text& entryMode() const { return entryMode_; }
    Text KeyEntry(TextView keys);
    // A card swiped: the terminal shows the first preloaded card message.
    void CardSwiped(const PreloadedMessages& messages);

    Text Information(const PreloadedMessages& messages) const;

private:
    Text positionText_;
    Text message_;  // the last display message as it came
    Text entryMode_;
    Text keyPad_;
    Text header_;
    Text footer_;
    bool chipReader_ = false;
    bool securePrompt_ = false;
    std::int64_t beeps_ = 0;
    std::int64_t printJobs_ = 0;
    Text lastJob_;
    std::int64_t lastJobLines_ = 0;
    Text lastBarCode_;
    std::int64_t packets_ = 0;
    static constexpr std::size_t kKeptPacket = 256;
    Text lastPacket_;  // its first kKeptPacket characters
    Text image_;
};

}  // namespace vantrel::simulation
