#include "large_text.h"

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace vantrel {

void ReserveLarge(Text& text, std::size_t length) {
    text.reserve(length);
    AdviseLargePages(text.data(), text.capacity() * sizeof(char16_t));
}

void AdviseLargePages(void* room, std::size_t bytes) {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    // Only whole large pages inside the room can be advised; room of fewer
    // than two would gain nothing.
    constexpr std::uintptr_t kLargePage = std::uintptr_t{2} << 20;
    const auto begin = reinterpret_cast<std::uintptr_t>(room);
    const std::uintptr_t end = begin + bytes;
    const std::uintptr_t first = (begin + kLargePage - 1) & ~(kLargePage - 1);
    const std::uintptr_t last = end & ~(kLargePage - 1);
    if (last >= first + 2 * kLargePage) {
        ::madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
    }
#else
    (void)room;
    (void)bytes;
#endif
}

}  // namespace vantrel
