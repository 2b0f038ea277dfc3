#pragma once

#include "utils/pictures/image_window.h"

namespace libutils {

/// True when the path leads to a plain file: not a folder, a device, or a FIFO, where a read would wait for a
/// writer.
[[nodiscard]] bool is_plain_file(const char* path);

/// Maps a whole picture file for reading; an empty file gives an empty window. A file that can not be mapped,
/// as some file systems have them, is read instead.
///
/// False, after a line on the standard error stream: "<path>: file stat failed." when the path does not lead
/// to a plain file, "<path>: file load failed." when the file can not be read.
[[nodiscard]] bool map_picture(const char* path, image_window_t& bytes);

}  // namespace libutils
