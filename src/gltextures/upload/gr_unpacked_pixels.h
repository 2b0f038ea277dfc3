#pragma once

#include <optional>
#include <vector>

#include "gltextures/upload/gr_pixel_source.h"

namespace libgr {

/// Pixels that no core context reads, in bytes that it does: palette indices of 1 and 8 bits as RGB, grey of
/// 1 and 4 bits as grey of 8. Rows follow each other without gaps. The leftmost pixel of a byte has its
/// highest bits; an index beyond the palette is black.
///
/// Nothing for any other source. No bytes when the source's window does not hold its rows.
std::optional<std::vector<unsigned char>> unpacked_pixels(const pixel_source_t& source);

}  // namespace libgr
