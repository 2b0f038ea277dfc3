#include "utils/pictures/image_window.h"

#include "utils/memory/memory_budget.h"

namespace libutils {

namespace {

/// A page more or less decides nothing, and a map of one pixel stands in for each map that a model lacks.
constexpr std::uint64_t unclaimed = 4096;

/// True for a window that has its block to itself and may resize it.
bool owns_block(const image_window_t& window) {
    return window.use_count() == 1 && window.writable() && window.offset == 0;
}

}  // namespace

bool fit_window(image_window_t& window, std::uint64_t bytes) {
    if (owns_block(window) && window.reallocate(bytes))
        return true;
    window.deallocate();
    return window.try_allocate(bytes);
}

bool claim_window(image_window_t& window, std::uint64_t bytes) {
    const std::uint64_t held = owns_block(window) ? window.size() : 0;
    if (bytes > held + unclaimed && !claim_memory(bytes - held)) {
        window.deallocate();
        return false;
    }
    return fit_window(window, bytes);
}

}  // namespace libutils
