#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "operations/strips/strip_mesh.h"

/// Builds meshes in strips and changes their triangles in one walk, as the operations do.
namespace ulk_test {

using indices_t = std::vector<std::uint32_t>;
/// The vertices of a triangle in its winding.
using triangle_indices_t = std::array<std::uint32_t, 3>;
using triangles_t = std::vector<triangle_indices_t>;

/// A vertex and a frame that differ from all others in every component.
ulk3d::vertex_t numbered_vertex(std::uint32_t number);
ulk3d::frame_t numbered_frame(std::uint32_t number);

/// A mesh of numbered vertices and frames: those that the elements refer to, but at least `least_vertices`.
ulk3d::strip_mesh_t numbered_mesh(const indices_t& elements, std::uint32_t least_vertices = 0);

/// The indices 0, 1, 2 and so on as one strip of so many triangles.
indices_t strip_of(std::uint32_t triangles);

/// All triangles of a mesh in their order, each turned so that the lowest index comes first.
triangles_t triangles_of(const ulk3d::strip_mesh_t& mesh);

/// What a walk does with a triangle. A split is told by its corner i0, counted from the first corner of the
/// triangle: the start of the split edge, or the apex of the two.
enum class change_kind_t { keep, split_one_edge, split_two_edges, remove };
struct change_t {
    change_kind_t kind = change_kind_t::keep;
    std::uint32_t corner = 0;
};

/// Walks the mesh and does with each triangle what `choose` says, which gets the running number of the
/// triangle over all strips. Fails the test unless the walk met every old triangle once, in order and
/// winding, and no new one, and the mesh then holds the pieces of the split triangles and all that were kept,
/// these in their order.
void expect_changes(ulk3d::strip_mesh_t& mesh, const std::function<change_t(std::size_t)>& choose);

}  // namespace ulk_test
