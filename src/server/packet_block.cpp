#include "packet_block.h"

namespace vantrel {

CommandBlock PacketHeader(TextView position, std::int64_t count, int countWidth) {
    CommandBlock block;
    block.AddLine(u"ReaderPosition=", position)
        .AddLine(u"PacketCount=", ZeroPad(count, countWidth))
        .Append(u"PacketData=");
    return block;
}

CommandBlock PacketBlock(TextView position, TextView data, int countWidth) {
    CommandBlock block = PacketHeader(position, static_cast<std::int64_t>(data.size()), countWidth);
    block.Append(data);
    return block;
}

}  // namespace vantrel
