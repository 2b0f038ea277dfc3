#pragma once

#include <vector>

#include "operations/cut/walls/patched_mesh.h"

namespace ulk3d {

/// Fills the holes that a surface has along its open edges with triangles between their ends, without new
/// vertices. Shortest distances are bridged first: a slit is closed across. Where a triangle would lie on one
/// of the surface and look the opposite way, both are left out.
void fill_slits(patched_mesh_t& patched, const std::vector<triangle_edge_t>& open);

}  // namespace ulk3d
