#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "model/math/vectors.h"
#include "model/polygon/strip_walk.h"
#include "operations/strips/strip_mesh.h"

/// Meshes as other programs write them, and what must not change when they are tidied.
namespace ulk_test {

/// The same triangles, none of which shares a vertex with another: all in one colour and with the normal of
/// their planes, as STL files come in.
inline ulk3d::strip_mesh_t soup_of(const ulk3d::strip_mesh_t& mesh) {
    ulk3d::strip_mesh_t soup;
    ulk3d::walk_strips(mesh.elements, mesh.vertices.size(), [&](const ulk3d::strip_triangle_t& triangle) {
        const std::array corners{triangle.a, triangle.b, triangle.c};
        const auto at = [&](std::size_t n) { return mesh.vertices[corners[n]].position; };
        const ulk3d::dir3 normal = ulk3d::unit_face_normal(at(0), at(1), at(2));
        const ulk3d::dir3 tangent = ulk3d::normalize(at(1) - at(0));
        for (std::size_t n = 0; n < 3; ++n) {
            soup.elements.push_back(static_cast<std::uint32_t>(soup.vertices.size()));
            soup.vertices.push_back({at(n), ulk3d::default_color, {}});
            soup.frames.push_back({tangent, cross(normal, tangent), normal});
        }
        soup.elements.push_back(ulk3d::restart_mark);
    });
    return soup;
}

/// Nine floats of three positions, bit by bit.
using triangle_bits_t = std::array<std::array<std::uint32_t, 3>, 3>;

/// The positions of all triangles, in an order that does not depend on that of the strips.
inline std::vector<triangle_bits_t> surface_of(const ulk3d::strip_mesh_t& mesh) {
    std::vector<triangle_bits_t> surface;
    ulk3d::walk_strips(mesh.elements, mesh.vertices.size(), [&](const ulk3d::strip_triangle_t& triangle) {
        triangle_bits_t& bits = surface.emplace_back();
        for (std::size_t n = 0; n < 3; ++n)
            bits[n] = std::bit_cast<std::array<std::uint32_t, 3>>(
                mesh.vertices[std::array{triangle.a, triangle.b, triangle.c}[n]].position);
        std::rotate(bits.begin(), std::ranges::min_element(bits), bits.end());
    });
    std::ranges::sort(surface);
    return surface;
}

/// Whether each edge between two vertices is used once in each direction.
inline bool is_watertight(const ulk3d::strip_mesh_t& mesh) {
    std::map<std::pair<std::uint32_t, std::uint32_t>, int> edges;
    ulk3d::walk_strips(mesh.elements, mesh.vertices.size(), [&](const ulk3d::strip_triangle_t& triangle) {
        ++edges[{triangle.a, triangle.b}];
        ++edges[{triangle.b, triangle.c}];
        ++edges[{triangle.c, triangle.a}];
    });
    return std::ranges::all_of(edges, [&](const auto& edge) {
        const auto opposite = edges.find({edge.first.second, edge.first.first});
        return edge.second == 1 && opposite != edges.end() && opposite->second == 1;
    });
}

}  // namespace ulk_test
