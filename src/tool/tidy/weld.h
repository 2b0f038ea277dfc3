#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "model/vertex.h"
#include "tool/tidy/triangle_mesh.h"

namespace ulktool {

/// For each vertex that the triangles use, the vertex that stands for it: one that agrees with it in colour
/// and texture coordinates, and lies at the same place or not farther than `tolerance` away. What stands for
/// others is the first of them in the order of the vertices, and stands for itself; where several are near
/// enough, it is the nearest. Zeros of either sign agree, and so do not-a-numbers of equal bits. For
/// vertices that no triangle uses it is `no_vertex`.
///
/// What stands for others never agrees with another that does, so that welding once more joins nothing.
[[nodiscard]] std::vector<std::uint32_t> welded_vertices(std::span<const ulk3d::vertex_t> vertices,
                                                         std::span<const triangle_corners_t> triangles,
                                                         double tolerance);

}  // namespace ulktool
