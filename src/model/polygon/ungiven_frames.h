#pragma once

#include <vector>

#include "model/vertex.h"

namespace ulk3d {

class polygon_t;

/// The frame of a triangle's plane, which its vertices get where none is given; the tangent runs along the
/// last edge. The normal of a triangle without area is zero.
frame_t triangle_frame(const pos3& a, const pos3& b, const pos3& c);

/// Tells which vertices of a mesh have a frame that nobody has given them: none at all (a zero normal), that
/// of a new vertex (`new_vertex_frame`), or that of the plane of one of their triangles. Empty when an array
/// can not be mapped. A GL context must be current.
[[nodiscard]] std::vector<bool> ungiven_frames(const polygon_t& polygon);

/// Makes the frames of these vertices anew from the triangles as they are now; of several triangles the
/// later one decides. Vertices without a triangle get the frame of a new vertex, and all others keep theirs.
/// False when an array can not be mapped. A GL context must be current.
[[nodiscard]] bool make_frames(polygon_t& polygon, const std::vector<bool>& ungiven);

}  // namespace ulk3d
