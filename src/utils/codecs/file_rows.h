#pragma once

#include "utils/pictures/image2d.h"
#include "utils/pictures/image_window.h"

namespace libutils {

/// The rows of a picture as BMP and TGA files have them: from the bottom up, each padded to a multiple of 4
/// bytes, none skipped. `rows` shares the bytes of an image that lies so, with what follows its last row; it
/// gets a copy of any other. False for an image that does not hold its pixels, or when there is no memory for
/// the copy.
[[nodiscard]] bool file_rows(image_window_t& rows, const image2d& image);

/// To be called before the file of a picture is truncated: the pixels may be mapped from that very file,
/// under this name or another, and would go with it. Bytes that may not be written to, as those of a mapped
/// file, are replaced by a copy. False when there is no memory for it.
[[nodiscard]] bool unmap_bytes(image_window_t& window);

}  // namespace libutils
