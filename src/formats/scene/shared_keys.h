#pragma once

#include "formats/scene/line_log.h"
#include "formats/scene/text_lines.h"

/// The keys that both kinds of surface block share, besides those of their points (point_keys.h). Each is one
/// row of the table in shared_keys.cpp, which serves both readers and both writers (`write_texture_keys`),
/// and fills one field of `texture_t`, the record that models of both kinds have.
namespace ulk3d {

struct texture_t;

/// The two kinds of block with shared keys; some messages differ between them.
enum class surface_block_t { nurbs, polygon };

/// Stores the value of a line with a shared key in `texture`, or logs that the value is missing. False,
/// without a message, when the line has no shared key.
[[nodiscard]] bool read_shared_key(const text_line_t& line, surface_block_t block, texture_t& texture,
                                   line_log& log);

}  // namespace ulk3d
