#pragma once

#include "utils/pictures/image_window.h"

namespace libutils {

/// True for a path that leads to a file whose bytes are there to be read: no folder, no device, and no FIFO,
/// which would wait for its writer.
[[nodiscard]] bool is_plain_file(const char* path);

/// Maps the whole of a picture's file for reading; an empty file gives an empty window.
///
/// A path that leads to no plain file gives the line "<path>: file stat failed." on the standard error
/// stream, a file that may not be read "<path>: file load failed."; the result is false then.
[[nodiscard]] bool map_picture(const char* path, image_window_t& bytes);

}  // namespace libutils
