#include "display_message.h"

namespace vantrel {

CommandBlock DisplayMessage(TextView position, TextView message) {
    CommandBlock block;
    block.Append(u"ReaderPosition=").AddLine(position);
    block.Append(u"Message=").Append(message);
    return block;
}

}  // namespace vantrel
