#pragma once

#include <cstdint>

#include "operations/cut/unit_space.h"
#include "operations/strips/strip_mesh.h"

namespace ulk3d {

/// Makes one surface of two parts that meet along a seam, the victim's and the wall's, so that each edge
/// along it has its counterpart to the last bit. `first_of_wall` is the number of the wall's first vertex.
///
/// Both parts were split by rules with a tolerance, each with its own crossings: along the seam their
/// vertices differ by up to the tolerance, and one part has vertices where the other has none. A wall's
/// vertex moves to the victim's vertex beside it, and where one has none, the triangle of the other part is
/// split there. What is still open then, slits as wide as the tolerance, is filled with triangles where
/// `are_solids` says that victim and cutter were closed: nothing else can be open.
void close_seam(strip_mesh_t& mesh, std::uint32_t first_of_wall, const unit_space_t& space, bool are_solids);

}  // namespace ulk3d
