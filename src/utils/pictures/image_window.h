#pragma once

#include <cstdint>

#include "utils/memory/alloc_mmap_win.h"
#include "utils/memory/ofsvector.h"

namespace libutils {

/// The bytes of an image: a window into a block that several images may share, in memory or of a mapped file.
using image_window_t = ofsvector<unsigned char, alloc_mmap_win>;

/// Gives a window `bytes` bytes of its own, without a limit.
///
/// A block that no one else holds is made to fit and keeps what fits. Where it can not be, and for a block
/// that others hold too or that may not be written to, as that of a mapped file, there is a fresh block of
/// zeros; the others keep theirs. False, without a block, when memory of that size can not be had.
[[nodiscard]] bool fit_window(image_window_t& window, std::uint64_t bytes);

}  // namespace libutils
