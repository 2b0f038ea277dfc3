#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "operations/cut/walls/open_edges.h"

namespace ulk3d {

/// A mesh in strips while single triangles of it are exchanged for others.
class patched_mesh_t {
  public:
    explicit patched_mesh_t(strip_mesh_t& mesh);

    surface_view_t surface() const { return {triangles, places}; }
    const triangle_vertices_t& triangle(std::uint32_t number) const { return triangles[number]; }
    const pos3& position_of(std::uint32_t place) const { return mesh.vertices[place].position; }

    /// A new vertex at a place, with what a point at `t` between two vertices has besides.
    std::uint32_t add_vertex(std::uint32_t place, std::uint32_t from, std::uint32_t to, float t);
    /// Returns the number of the new triangle.
    std::uint32_t add_triangle(const triangle_vertices_t& triangle);
    /// Its number stays in use; the surface has it as a collapsed triangle.
    void take_out(std::uint32_t triangle);

    std::uint32_t triangle_count() const { return static_cast<std::uint32_t>(triangles.size()); }

    /// Gives the mesh its new strips: the triangles that were never touched stay in theirs, each of the
    /// others becomes a strip of its own.
    void write_strips();

  private:
    strip_mesh_t& mesh;
    std::vector<triangle_vertices_t> triangles;  ///< those of the strips, by id, then the added ones
    std::vector<std::uint32_t> places;
    std::size_t strip_triangles;
    std::set<std::uint32_t> taken_out;  ///< of the triangles in strips
};

}  // namespace ulk3d
