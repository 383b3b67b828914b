#include "packet_block.h"

namespace vantrel {

CommandBlock PacketBlock(TextView position, TextView data, int countWidth) {
    CommandBlock block;
    block.AddLine(Text(u"ReaderPosition=").append(position))
        .AddLine(u"PacketCount=" + ZeroPad(static_cast<std::int64_t>(data.size()), countWidth))
        .Append(u"PacketData=")
        .Append(data);
    return block;
}

}  // namespace vantrel
