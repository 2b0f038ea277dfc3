#pragma once

#include <new>

namespace ulk3d {

/// Returns the result of `allocate()`, which makes arrays whose size comes from a file or a dialog; false
/// also when it runs out of memory. The only place that catches an exception of the allocator. Prints
/// nothing.
template <typename Allocate>
[[nodiscard]] bool try_allocate(Allocate&& allocate) {
    try {
        return allocate();
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace ulk3d
