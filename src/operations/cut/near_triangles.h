#pragma once

#include <cstdint>
#include <vector>

#include "operations/cut/cut_pair.h"
#include "operations/cut/unit_space.h"
#include "operations/strips/strip_mesh.h"

namespace ulk3d {

/// A triangle of a mesh, by the element position at which it closes.
struct near_triangle_t {
    std::array<std::uint32_t, 3> vertices;  ///< in the order of its winding: mi2, mi1, i
    std::uint32_t position;
    std::uint32_t run_count;  ///< of the strip's indices up to the position
};

/// The finite triangles of a mesh whose boxes meet `reach`, a box in the mesh's own coordinates, in the order
/// of the strips.
std::vector<near_triangle_t> triangles_near(const strip_mesh_t& mesh, const box3& reach);

corners_t unit_corners(const near_triangle_t& triangle, const strip_mesh_t& mesh, const unit_space_t& space);

}  // namespace ulk3d
