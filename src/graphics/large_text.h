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

// The advice behind ReserveLarge, for any fresh room: the whole large pages
// inside it, when there are at least two, are asked to be large pages. Only
// advice: where the system declines, the room works as before. bench/run's
// SET IMAGE yardstick takes its room this way too, so that both sides pay
// the same for touching it first.
void AdviseLargePages(void* room, std::size_t bytes);

}  // namespace vantrel
