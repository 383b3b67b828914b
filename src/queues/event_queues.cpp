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

}  // namespace

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

}  // namespace vantrel
