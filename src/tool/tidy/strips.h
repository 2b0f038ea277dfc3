#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "tool/tidy/triangle_mesh.h"

namespace ulktool {

/// The triangles as strips in this order: each goes on with the strip of the one before where it can.
/// Triangles that were read from such strips give the same strips.
[[nodiscard]] std::vector<std::uint32_t> join_strips(std::span<const triangle_corners_t> triangles);

/// Long strips of triangles, none of which is empty, with restart marks between them
/// (model/polygon/strip_walk.h). Where the order of the triangles gives strips that are no longer, which is
/// so when they were read from such strips, it is kept. `triangles` has been used up then.
[[nodiscard]] std::vector<std::uint32_t> make_strips(std::vector<triangle_corners_t>& triangles,
                                                     std::size_t vertex_count);

}  // namespace ulktool
