#pragma once

#include "utils/pictures/rgba_picture.h"

namespace libutils {

/// Reads a PNG file of any kind as 8-bit RGBA. False, with an empty picture, when it is not a whole PNG file
/// or a side is longer than 16384 pixels.
[[nodiscard]] bool read_png(const char* path, rgba_picture_t& picture);

/// Writes the picture as an RGBA PNG file. False when it is empty or not all of it reached the file; a
/// file that was at `path` is there again then, and nothing when there was none.
[[nodiscard]] bool write_png(const char* path, const rgba_picture_t& picture);

}  // namespace libutils
