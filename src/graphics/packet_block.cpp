#include "packet_block.h"

namespace vantrel {

CommandBlock PacketHeader(TextView position, std::int64_t count, int countWidth) {
    CommandBlock block;
    block.Append(u"ReaderPosition=").AddLine(position);
    block.Append(u"PacketCount=").AddLine(ZeroPad(count, countWidth));
    block.Append(u"PacketData=");
    return block;
}

}  // namespace vantrel
