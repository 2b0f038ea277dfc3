#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "model/vertex.h"

namespace ulktool {

/// The corners of a triangle, counter-clockwise: indices of vertices.
using triangle_corners_t = std::array<std::uint32_t, 3>;

/// Stands where there is no vertex.
inline constexpr std::uint32_t no_vertex = 0xFFFFFFFF;

/// A mesh of single triangles on the host, between two steps of tidying.
struct triangle_mesh_t {
    std::vector<ulk3d::vertex_t> vertices;
    std::vector<ulk3d::frame_t> frames;  ///< one per vertex
    std::vector<triangle_corners_t> triangles;
};

/// The indices of triangles one after the other, as the library takes them.
inline std::span<const std::uint32_t> indices_of(std::span<const triangle_corners_t> triangles) {
    return {triangles.empty() ? nullptr : triangles.front().data(), 3 * triangles.size()};
}

/// Brings triangles into an order, and each to a first corner, that depend on nothing but which triangles
/// there are. What is made of them then comes out the same however they were stored.
void sort_triangles(std::vector<triangle_corners_t>& triangles);

/// Whether two corners of a triangle are the same, or at the same position.
[[nodiscard]] bool is_empty(const triangle_corners_t& corners, std::span<const ulk3d::vertex_t> vertices);

/// Drops the vertices that no triangle uses; the others keep their order.
void drop_unused_vertices(triangle_mesh_t& mesh);

}  // namespace ulktool
