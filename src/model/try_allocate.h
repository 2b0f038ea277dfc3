#pragma once

#include <new>

namespace ulk3d {

/// The result of `allocate()`, which makes arrays of a size that a file or a dialog gave; false also when it
/// runs out of memory. The only place that catches an exception of the allocator.
template <typename Allocate>
[[nodiscard]] bool try_allocate(Allocate&& allocate) {
    try {
        return allocate();
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace ulk3d
