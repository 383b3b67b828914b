#pragma once

#include "server/command_block.h"

namespace vantrel {

// The start of a display message for DisplayData: "ReaderPosition=" and the
// position, CR LF, then "Message=" and the message text with nothing after
// it. Each sender closes the block its own way.
CommandBlock DisplayMessage(TextView position, TextView message);

}  // namespace vantrel
