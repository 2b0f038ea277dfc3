#pragma once

#include <new>

namespace libutils {

/// Returns the result of `allocate()`; false also when it runs out of memory. Prints nothing. For arrays
/// whose size comes from a file or a dialog, and for what the C frames of a library call, which no exception
/// may cross.
template <typename Allocate>
[[nodiscard]] bool try_allocate(Allocate&& allocate) {
    try {
        return allocate();
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace libutils
