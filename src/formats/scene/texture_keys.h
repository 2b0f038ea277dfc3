#pragma once

#include "formats/scene/line_log.h"
#include "formats/scene/text_lines.h"

namespace ulk3d {

struct texture_t;

/// The two kinds of block that carry texture keys; a message or two differ between them.
enum class surface_block_t { nurbs, polygon };

/// Takes a line that holds a texture key into `texture`, or says on `log` what is missing in it. False when
/// the line holds no texture key.
bool read_texture_key(const text_line_t& line, surface_block_t block, texture_t& texture, line_log& log);

}  // namespace ulk3d
