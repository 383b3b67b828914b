#pragma once

namespace vantrel {

class Console;

// Reads: the function box names the call, the answer replaces the data box.
void CardQue(Console& console);
void KeyQue(Console& console);
void CashIn(Console& console);
void QueCounts(Console& console);
// The one command that catches its own failures: it shows "Error" and the
// console goes on.
void ReadErrorQue(Console& console);

// Clears: the call comes first, its number is dropped, then both boxes.
void ClearCardEntry(Console& console);
void ClearCashEntry(Console& console);
void ClearKeyEntry(Console& console);
void ClearErrorQue(Console& console);
void ClearPacketEntry(Console& console);

// Writes its label only; there is no server call behind it.
void CashOut(Console& console);

}  // namespace vantrel
