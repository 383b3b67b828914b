#include "large_text.h"

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace vantrel {

void ReserveLarge(Text& text, std::size_t length) {
    text.reserve(length);
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    // Only whole large pages inside the text's room can be advised; a text
    // of fewer than two would gain nothing.
    constexpr std::uintptr_t kLargePage = std::uintptr_t{2} << 20;
    const auto begin = reinterpret_cast<std::uintptr_t>(text.data());
    const std::uintptr_t end = begin + text.capacity() * sizeof(char16_t);
    const std::uintptr_t first = (begin + kLargePage - 1) & ~(kLargePage - 1);
    const std::uintptr_t last = end & ~(kLargePage - 1);
    if (last >= first + 2 * kLargePage) {
        // Advice only: where the system declines, the text works as before.
        ::madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
    }
#endif
}

}  // namespace vantrel
