#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>
#include <vector>

#include "operations/strip_surgery.h"

/// Builds and walks meshes in strips as the operations do that change them triangle by triangle.
namespace ulk_test {

using indices_t = std::vector<std::uint32_t>;

/// The vertices of a triangle in its winding, the lowest first.
using triangle_indices = std::array<std::uint32_t, 3>;

inline triangle_indices turned_to_lowest(triangle_indices triangle) {
    std::ranges::rotate(triangle, std::ranges::min_element(triangle));
    return triangle;
}

/// A vertex that differs from all others in every component.
inline ulk3d::vertex_t numbered_vertex(std::uint32_t number) {
    const auto n = static_cast<float>(number);
    return {{n, n * n, n + 7}, {n / 8, n / 16, n / 32, 1 - n / 64}, {n + 0.5F, n - 0.25F}};
}

inline ulk3d::frame_t numbered_frame(std::uint32_t number) {
    const auto n = static_cast<float>(number);
    return {{n, 1, 0}, {0, n, 2}, {3, 0, n}};
}

/// A mesh of numbered vertices and frames. `vertex_count` of 0 takes as many as the elements refer to.
inline ulk3d::strip_mesh_t numbered_mesh(const indices_t& elements, std::uint32_t vertex_count = 0) {
    for (const std::uint32_t index : elements) {
        if (index != ulk3d::restart_mark)
            vertex_count = std::max(vertex_count, index + 1);
    }
    ulk3d::strip_mesh_t mesh{{}, {}, elements};
    for (std::uint32_t number = 0; number < vertex_count; ++number) {
        mesh.vertices.push_back(numbered_vertex(number));
        mesh.frames.push_back(numbered_frame(number));
    }
    return mesh;
}

/// A triangle as a walk meets it.
struct met_triangle_t {
    std::uint32_t position;  ///< of its last element
    std::uint32_t run_count;
    std::array<std::uint32_t, 3> corners;  ///< element positions in the triangle's winding
    triangle_indices vertices;             ///< what stands there, as it is turned there
};

/// Where a walk goes on after a triangle: the position that it takes as passed, and the run count there.
struct passed_place_t {
    std::uint32_t position;
    std::uint32_t run_count;
};

/// Walks all triangles. `visit(met_triangle_t)` may change the mesh; it returns where the walk goes on.
template <class Visit>
void walk_mesh(const ulk3d::strip_mesh_t& mesh, Visit&& visit) {
    std::uint32_t run_count = 0;
    for (std::uint32_t i = 0; i < mesh.elements.size(); ++i) {
        if (mesh.elements[i] >= mesh.vertices.size()) {
            run_count = 0;
            continue;
        }
        if (++run_count < 3)
            continue;
        const bool turned = run_count % 2 == 0;
        const std::array<std::uint32_t, 3> corners = {turned ? i - 1 : i - 2, turned ? i - 2 : i - 1, i};
        const auto& e = mesh.elements;
        const passed_place_t passed =
            visit(met_triangle_t{i, run_count, corners, {e[corners[0]], e[corners[1]], e[corners[2]]}});
        i = passed.position;
        run_count = passed.run_count;
    }
}

inline passed_place_t keep(const met_triangle_t& met) {
    return {met.position, met.run_count};
}

/// All triangles of the mesh in their order.
inline std::vector<triangle_indices> triangles_of(const ulk3d::strip_mesh_t& mesh) {
    std::vector<triangle_indices> triangles;
    walk_mesh(mesh, [&](const met_triangle_t& met) {
        triangles.push_back(turned_to_lowest(met.vertices));
        return keep(met);
    });
    return triangles;
}

/// The corners of a triangle from the given one on.
inline std::array<std::uint32_t, 3> corners_from(const met_triangle_t& met, std::uint32_t start) {
    std::array<std::uint32_t, 3> corners = met.corners;
    std::ranges::rotate(corners, corners.begin() + start);
    return corners;
}

/// Splits the triangle at one edge, 0 to 2, or at two edges from the apex 0 to 2.
inline passed_place_t split_one_edge(ulk3d::strip_mesh_t& mesh, const met_triangle_t& met,
                                     std::uint32_t start) {
    const auto [i0, i1, i2] = corners_from(met, start);
    auto number = static_cast<std::int32_t>(met.run_count) - 3;
    std::uint32_t run_count = met.run_count;
    const std::uint32_t advance = add_vertex0(mesh, number, run_count, i0, i1, i2, 0.5F);
    EXPECT_GT(advance, 0U);
    EXPECT_EQ(number, static_cast<std::int32_t>(run_count) - 3);
    return {met.position + advance, run_count};
}

inline passed_place_t split_two_edges(ulk3d::strip_mesh_t& mesh, const met_triangle_t& met,
                                      std::uint32_t start) {
    const auto [i0, i1, i2] = corners_from(met, start);
    auto number = static_cast<std::int32_t>(met.run_count) - 3;
    std::uint32_t run_count = met.run_count;
    const std::uint32_t advance = add_vertex(mesh, number, run_count, i0, i1, i2, 0.25F, 0.75F);
    EXPECT_GT(advance, 0U);
    EXPECT_EQ(number, static_cast<std::int32_t>(run_count) - 3);
    return {met.position + advance, run_count};
}

/// Removes the triangle; the place is told as `del_elements` asks for it.
inline passed_place_t remove(ulk3d::strip_mesh_t& mesh, const met_triangle_t& met) {
    using enum ulk3d::strip_place_t;
    const std::uint32_t last = met.position;
    const std::uint32_t number = met.run_count - 3;
    const bool behind = last + 1 < mesh.elements.size();
    const bool follows = behind && mesh.elements[last + 1] < mesh.vertices.size();
    std::uint32_t first = last;
    if (number > 0) {
        const auto in_strip = number % 2 == 0 ? even_ahead : odd_ahead;
        del_elements(mesh, last, last, follows ? in_strip : at_end);
    } else {
        first = last - 2;
        if (follows)
            del_elements(mesh, first, first, at_start);
        else
            del_elements(mesh, first, behind ? last + 1 : last, at_end);
    }
    return {first - 1, 0};
}

}  // namespace ulk_test
