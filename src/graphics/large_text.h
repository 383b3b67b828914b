#pragma once

#include "server/text.h"

#include <cstddef>

namespace vantrel {

// Room for a text of the given length at once. A text of many megabytes (an
// image packet) is backed by large pages where the system offers them: a
// seam for bench/run's SET IMAGE at 64 MiB, where touching fresh memory one
// small page at a time cost more than everything else that loading an image
// does.
void ReserveLarge(Text& text, std::size_t length);

}  // namespace vantrel
