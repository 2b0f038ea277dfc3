#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "operations/strips/strip_mesh.h"

namespace ulk3d {

using triangle_vertices_t = std::array<std::uint32_t, 3>;

/// The triangles of a mesh, by polygon id, in the order of their winding.
std::vector<triangle_vertices_t> triangles_of(const strip_mesh_t& mesh);

/// A number for the place of each vertex: that of the first vertex at the same position to the last bit.
std::vector<std::uint32_t> places_of(std::span<const vertex_t> vertices);

/// The edge of a triangle from corner `corner` to the next one.
struct triangle_edge_t {
    std::uint32_t triangle;
    std::uint32_t corner;
};

/// A mesh as a surface whose triangles hang together where their corners are at the same places, whichever
/// vertices these are: what has different colours or normals on both sides of an edge has two of them.
struct surface_view_t {
    std::span<const triangle_vertices_t> triangles;
    std::span<const std::uint32_t> places;  ///< by vertex

    std::uint32_t start_of(const triangle_edge_t& edge) const {
        return places[triangles[edge.triangle][edge.corner]];
    }
    std::uint32_t end_of(const triangle_edge_t& edge) const {
        return places[triangles[edge.triangle][(edge.corner + 1) % 3]];
    }
    /// Whether two corners are at the same place.
    bool is_collapsed(const triangle_vertices_t& triangle) const;
};

/// All edges that no triangle passes the other way; none when the surface is closed.
std::vector<triangle_edge_t> open_edges(const surface_view_t& surface);

/// Takes out of `edges` each pair of edges between the same places that run opposite ways.
void take_out_pairs(std::vector<triangle_edge_t>& edges, const surface_view_t& surface);

/// Whether every edge of a mesh has its counterpart.
bool is_closed(const strip_mesh_t& mesh);

}  // namespace ulk3d
