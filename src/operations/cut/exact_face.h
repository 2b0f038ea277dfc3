#pragma once

#include <optional>

#include "operations/cut/cut_pair.h"

/// How points and lines lie relative to a triangle, computed from its corners in double precision: edge lines
/// in single precision say nothing about the surroundings of a small triangle. All distances are compared
/// with the tolerance of the cut.
namespace ulk3d {

/// Whether more than the tolerance of the segment from p to q, which lies in the triangle's plane, is inside
/// of the triangle or along its outline.
bool overlaps(const corners_t& triangle, const pos3& p, const pos3& q);

/// How a ray straight up from a point meets a triangle: 1 when it passes from the front to the back, -1 when
/// it passes from the back to the front, 0 when it does not meet it. Empty when the ray passes the outline,
/// or the point the plane, so closely that it can not be told.
std::optional<int> clear_hit(const corners_t& triangle, const pos3& start);

/// 1 when a triangle lies in the plane of a face, its centroid over the face, and both look the same way; -1
/// when they look opposite ways; 0 when it does not lie there.
int direction_of_common_face(const corners_t& triangle, const pos3& centroid, const corners_t& face);

}  // namespace ulk3d
