#pragma once

#include "tool/tidy/double_vector.h"
#include "tool/tidy/triangle_mesh.h"

namespace ulktool {

/// The unit normal of a triangle, to the last bit the same for each of its corners that could be the first;
/// zero when it has no area or is not finite.
[[nodiscard]] dir3d unit_normal(const triangle_mesh_t& mesh, const triangle_corners_t& corners);

/// How a triangle looks from one of its corners.
struct corner_shape_t {
    double angle = 0;  ///< in radians
    dir3d along_s;     ///< the direction in which the texture coordinate s grows; zero where there is none
    bool is_mirrored = false;  ///< the texture coordinates run clockwise in the triangle
};

/// `first` is the corner, `second` and `third` follow it.
[[nodiscard]] corner_shape_t corner_shape(const ulk3d::vertex_t& first, const ulk3d::vertex_t& second,
                                          const ulk3d::vertex_t& third);

}  // namespace ulktool
