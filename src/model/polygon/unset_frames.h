#pragma once

#include "model/vertex.h"

namespace ulk3d {

class polygon_t;

/// The frame of a triangle's plane, which its vertices get where none is given; the tangent runs along the
/// last edge. The normal of a triangle without area is zero.
frame_t triangle_frame(const pos3& a, const pos3& b, const pos3& c);

/// Makes the frames that nobody has given (`polygon_t::unset_frames`) from the triangles as they are now; of
/// several triangles the later one decides. Vertices without a triangle get `new_vertex_frame`, and those
/// with frames of their own keep them. False when an array can not be mapped. A GL context must be current.
[[nodiscard]] bool make_unset_frames(polygon_t& polygon);

}  // namespace ulk3d
