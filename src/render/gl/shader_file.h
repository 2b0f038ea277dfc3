#pragma once

#include "utils/memory/alloc_mmap_win.h"
#include "utils/memory/refvector2.h"

namespace ulk3d {

/// Bytes of a shader's source, without a terminating zero.
using shader_text_t = libutils::refvector2<char, libutils::alloc_mmap_win>;

/// Reads a whole shader file into `text`: the file `name` or, when there is none, the file whose path is
/// `base_directory` (unless null) directly followed by `name`; no separator is added.
///
/// False, without a message, when neither can be read. An empty file gives an empty text.
[[nodiscard]] bool load_shader_file(shader_text_t& text, const char* name, const char* base_directory);

}  // namespace ulk3d
