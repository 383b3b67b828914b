#include "monitor_session.h"

#include <chrono>

namespace vantrel::bench {

// Stress ticks and the calls a technician makes between them.
std::vector<CallEvent> MonitorSession() {
    const Text key = Text(u"KeyData=123@R456A@789NYL0EHCe\n") + u'\0';
    std::vector<CallEvent> kinds(4);
    kinds[0].op = CallEvent::Op::Put;
    kinds[0].member = "KeyPadConfiguration";
    kinds[0].argument = Variant::OfText(u"ReaderPosition=01\r\n" + key);
    kinds[1] = kinds[0];
    kinds[1].argument = Variant::OfText(u"ReaderPosition=17\r\n" + key);
    kinds[2].op = CallEvent::Op::Call;
    kinds[2].member = "DispenserInformation";
    kinds[2].argument = Variant::OfInt16(7);
    kinds[2].byRef = true;
    kinds[2].result = Variant::OfText(u"FuelingPosition=07\r\nHoses=4\r\nTier1=1111\r\nTier2=1111\r\nBlend=100\r\n");
    kinds[3].op = CallEvent::Op::Call;
    kinds[3].member = "CardQue";
    kinds[3].error = RuntimeError(438, "Object doesn't support this property or method");
    for (CallEvent& kind : kinds) {
        kind.when = std::chrono::system_clock::now();
        kind.duration = std::chrono::microseconds(180);
    }
    std::vector<CallEvent> session;
    session.reserve(kSession);
    for (int k = 0; k < kSession; ++k) {
        session.push_back(kinds[static_cast<std::size_t>(k) % kinds.size()]);
    }
    return session;
}

CallEvent TenMegabyteAnswer() {
    CallEvent event;
    event.op = CallEvent::Op::Call;
    event.member = "PacketQueInput";
    Text answer = u"ReaderPosition=01\r\nPacketCount=10485760\r\nPacketData=";
    answer.reserve(answer.size() + 10 * 1024 * 1024);
    for (int k = 0; k < 10 * 1024 * 1024; ++k) {
        answer.push_back(static_cast<char16_t>(k % 251));  // every code below 251, NUL and ESC included
    }
    event.result = Variant::OfText(std::move(answer));
    event.when = std::chrono::system_clock::now();
    return event;
}

}  // namespace vantrel::bench
