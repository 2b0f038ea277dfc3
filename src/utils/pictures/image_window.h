#pragma once

#include <cstdint>

#include "utils/memory/alloc_mmap_win.h"
#include "utils/memory/ofsvector.h"

namespace libutils {

/// The bytes of an image: a window into a block that several images may share, in memory or of a mapped file.
using image_window_t = ofsvector<unsigned char, alloc_mmap_win>;

/// Gives a window `bytes` bytes of its own, without a limit.
///
/// A block with no other holder is resized and keeps what fits. Where that is not possible, and for a block
/// that has other holders or is read-only, as that of a mapped file, the window gets a fresh block of zeros;
/// the others keep theirs. False, without a block, when memory of that size can not be allocated.
[[nodiscard]] bool fit_window(image_window_t& window, std::uint64_t bytes);

/// The same for the pixels of a picture, whose number comes from a file: they are claimed
/// (utils/memory/memory_budget.h) before they are allocated. False, without a block, also when the claim is
/// refused.
[[nodiscard]] bool claim_window(image_window_t& window, std::uint64_t bytes);

}  // namespace libutils
