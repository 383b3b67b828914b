#pragma once

#include "server/text.h"

#include <string_view>

namespace vantrel {

class Console;

// What the reader-terminal commands share: the hand-over through the shared
// argument value.

// Copies the block into CommandData and assigns that value to the member.
void AssignThroughCommandData(Console& console, std::string_view member, const Text& block);

// One handler per button of the console window, named after the button.
void DisplayClick(Console& console);
void Display2Click(Console& console);
void BeeperClick(Console& console);

void PrintClick(Console& console);
void PrintReceipt2Click(Console& console);
void PrintHeaderClick(Console& console);
void Header2Click(Console& console);
void PrintFooterClick(Console& console);
void Footer2Click(Console& console);
void BarCodePrintClick(Console& console);

void KeyEntryDClick(Console& console);
void KeyEntryDNoCurClick(Console& console);
void KeyEntryFClick(Console& console);
void KeyEntryNEClick(Console& console);
void KeyEntryNENCClick(Console& console);
void KeyEntryNNEClick(Console& console);
void KeyEntryNNENCClick(Console& console);
void KeyPadClick(Console& console);

void PreLoadMSGsClick(Console& console);
void ReaderInfoClick(Console& console);

}  // namespace vantrel
