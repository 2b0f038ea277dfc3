#include "utils/pictures/image_window.h"

namespace libutils {

bool fit_window(image_window_t& window, std::uint64_t bytes) {
    const bool own = window.use_count() == 1 && window.writable() && window.offset == 0;
    if (own && window.reallocate(bytes))
        return true;
    window.deallocate();
    return window.try_allocate(bytes);
}

}  // namespace libutils
