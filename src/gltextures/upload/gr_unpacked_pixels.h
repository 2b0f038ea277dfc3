#pragma once

#include "gltextures/upload/gr_pixel_source.h"
#include "utils/pictures/image_window.h"

/// Pixels that no core context reads, in bytes that it does.
namespace libgr {

/// True for palette indices of 1 and 8 bits, which become RGB, and for grey of 1 and 4 bits, which becomes
/// grey of 8.
[[nodiscard]] bool is_unpacked(const pixel_source_t& source);

/// The pixels of such a source in one block, in rows that follow each other without gaps. The leftmost pixel
/// of a byte has its highest bits; an index beyond the palette is black.
///
/// No bytes when the source's window does not hold its rows, and when there is no memory for them.
libutils::image_window_t unpacked_pixels(const pixel_source_t& source);

}  // namespace libgr
