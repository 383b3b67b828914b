#include "event_queues.h"

#include "base/console.h"

#include <new>
#include <string_view>

namespace vantrel {

namespace {

void ReadQueue(Console& console, const char16_t* label, std::string_view member) {
    console.SetFunctionBox(label);
    console.SetDataBox(ToText(console.KRM().Call(member)));
}

// The server has acted before its answer is converted, so an answer that is
// no 16-bit number ends the console after the entry is already gone.
void ClearQueue(Console& console, std::string_view member, const char16_t* label) {
    static_cast<void>(ToInt16(console.KRM().Call(member)));
    console.SetFunctionBox(label);
    console.SetDataBox(u" ");
}

void CardQue(Console& console) { ReadQueue(console, u"<data>=<Object>.CardQue", "CardQue"); }
void KeyQue(Console& console) { ReadQueue(console, u"<data>=<Object>.KeyQue", "KeyQue"); }
void CashIn(Console& console) { ReadQueue(console, u"(data)=<Object>.CashInQue", "CashInQue"); }
void QueCounts(Console& console) { ReadQueue(console, u"<data>=<Object>.QueCountQuery", "QueCountQuery"); }

void ReadErrorQue(Console& console) {
    try {
        ReadQueue(console, u"(data)=<Object>.ReadErrorQue", "ReadErrorQue");
    } catch (const RuntimeError&) {
        console.MsgBox(u"Error");
    } catch (const std::bad_alloc&) {
        console.MsgBox(u"Error");
    }
}

void ClearCardEntry(Console& console) { ClearQueue(console, "ClearTopCardQue", u"<Object>.ClearTopCardQue"); }
void ClearCashEntry(Console& console) { ClearQueue(console, "ClearTopCashQue", u"<Object>.ClearTopCashQue"); }
void ClearKeyEntry(Console& console) { ClearQueue(console, "ClearTopKeyQue", u"<Object>.ClearTopKeyQue"); }
void ClearErrorQue(Console& console) { ClearQueue(console, "ClearErrorQue", u"<Object>.ClearErrorQue"); }
void ClearPacketEntry(Console& console) { ClearQueue(console, "ClearPacketEntry", u"<Object>.ClearPacketEntry"); }

void CashOut(Console& console) { console.SetFunctionBox(u"<Object>.CashOutQue = (data)"); }

}  // namespace

void AddEventQueueControls(std::vector<Control>& controls) {
    // The queue column.
    controls.push_back(CommandButton("QueCounts", u"Que Counts", 2160, 1920, 1575, 255, QueCounts));
    controls.push_back(CommandButton("ReadErrorQue", u"ReadErrorQue", 2160, 2280, 1575, 255, ReadErrorQue));
    controls.push_back(CommandButton("ClearErrorQue", u"ClearErrorQue", 2160, 2640, 1575, 255, ClearErrorQue));
    controls.push_back(CommandButton("CardQue", u"CardQue", 2160, 3000, 1575, 255, CardQue));
    controls.push_back(CommandButton("ClearCardEntry", u"ClearTopCardQue", 2160, 3360, 1575, 255, ClearCardEntry));
    controls.push_back(CommandButton("ClearPacketEntry", u"ClearPacketEntry", 2160, 6360, 1575, 255, ClearPacketEntry));
    controls.push_back(CommandButton("CashIn", u"Cash Input", 2160, 6720, 1575, 255, CashIn));
    controls.push_back(CommandButton("CashOut", u"Cash Output", 2160, 7080, 1575, 255, CashOut));
    controls.push_back(CommandButton("ClearCashEntry", u"ClearTopCashQue", 2160, 7440, 1575, 255, ClearCashEntry));

    // The key queue stands in the left column, below the key entry buttons.
    controls.push_back(CommandButton("KeyQue", u"KeyQue", 120, 5520, 1695, 255, KeyQue));
    controls.push_back(CommandButton("ClearKeyEntry", u"ClearTopKeyQue", 120, 5880, 1695, 255, ClearKeyEntry));
}

}  // namespace vantrel
