#pragma once

#include "formats/scene/line_log.h"
#include "formats/scene/text_lines.h"

/// The keys that both kinds of surface block have beside those of their points (point_keys.h). Each is one
/// row of the table in shared_keys.cpp, which both readers read it by and both writers write it by
/// (`write_texture_keys`), and fills one field of `texture_t`, the record that models of both kinds have.
namespace ulk3d {

struct texture_t;

/// The two kinds of block that carry shared keys; a message or two differ between them.
enum class surface_block_t { nurbs, polygon };

/// Takes a line that holds a shared key into `texture`, or says on `log` what is missing in it. False when
/// the line holds no shared key.
[[nodiscard]] bool read_shared_key(const text_line_t& line, surface_block_t block, texture_t& texture,
                                   line_log& log);

}  // namespace ulk3d
