#include "strip_changes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <numeric>

#include "operations/strips/strip_surgery.h"

namespace ulk_test {

using namespace ulk3d;

namespace {

triangle_indices_t lowest_first(triangle_indices_t triangle) {
    std::rotate(triangle.begin(), std::ranges::min_element(triangle), triangle.end());
    return triangle;
}

triangles_t sorted(triangles_t triangles) {
    std::ranges::transform(triangles, triangles.begin(), lowest_first);
    std::ranges::sort(triangles);
    return triangles;
}

/// A triangle as a walk meets it.
struct met_triangle_t {
    std::uint32_t position;       ///< of its last element
    std::uint32_t run_count;      ///< there
    triangle_indices_t corners;   ///< element positions in the triangle's winding
    triangle_indices_t vertices;  ///< what stands there
};

/// Where a walk goes on: the position that it takes as passed, and the run count there.
struct passed_t {
    std::uint32_t position;
    std::uint32_t run_count;
};

passed_t keep(const met_triangle_t& met) {
    return {met.position, met.run_count};
}

/// `visit(met_triangle_t)` may change the mesh; it returns where the walk goes on.
template <class Visit>
void walk_mesh(const strip_mesh_t& mesh, Visit&& visit) {
    std::uint32_t run_count = 0;
    for (std::uint32_t i = 0; i < mesh.elements.size(); ++i) {
        if (mesh.elements[i] >= mesh.vertices.size()) {
            run_count = 0;
            continue;
        }
        if (++run_count < 3)
            continue;
        const bool turned = run_count % 2 == 0;
        const triangle_indices_t corners = {turned ? i - 1 : i - 2, turned ? i - 2 : i - 1, i};
        const auto& e = mesh.elements;
        const passed_t passed =
            visit(met_triangle_t{i, run_count, corners, {e[corners[0]], e[corners[1]], e[corners[2]]}});
        i = passed.position;
        run_count = passed.run_count;
    }
}

passed_t split(strip_mesh_t& mesh, const met_triangle_t& met, change_t change) {
    triangle_indices_t corners = met.corners;
    std::rotate(corners.begin(), corners.begin() + change.corner, corners.end());
    const auto [i0, i1, i2] = corners;
    auto number = static_cast<std::int32_t>(met.run_count) - 3;
    std::uint32_t run_count = met.run_count;
    const std::uint32_t advance = change.kind == change_kind_t::split_one_edge
                                      ? add_vertex0(mesh, number, run_count, i0, i1, i2, 0.5F)
                                      : add_vertex(mesh, number, run_count, i0, i1, i2, 0.25F, 0.75F);
    EXPECT_GT(advance, 0U);
    EXPECT_EQ(number, static_cast<std::int32_t>(run_count) - 3);
    return {met.position + advance, run_count};
}

passed_t remove(strip_mesh_t& mesh, const met_triangle_t& met) {
    using enum strip_place_t;
    const std::uint32_t last = met.position;
    const std::uint32_t number = met.run_count - 3;
    const bool is_behind = last + 1 < mesh.elements.size();
    const bool follows = is_behind && mesh.elements[last + 1] < mesh.vertices.size();
    if (number > 0) {
        const strip_place_t inside = number % 2 == 0 ? even_ahead : odd_ahead;
        del_elements(mesh, last, last, follows ? inside : at_end);
        return {last - 1, 0};
    }
    const std::uint32_t first = last - 2;
    if (follows)
        del_elements(mesh, first, first, at_start);
    else
        del_elements(mesh, first, is_behind ? last + 1 : last, at_end);
    return {first - 1, 0};
}

/// What a triangle becomes whose first new vertex is n. Of the two diagonals of the quad at an apex either
/// will do: the new mesh tells which it is.
triangles_t pieces_of(const met_triangle_t& met, change_t change, std::uint32_t n, const strip_mesh_t& mesh) {
    triangle_indices_t vertices = met.vertices;
    std::rotate(vertices.begin(), vertices.begin() + change.corner, vertices.end());
    const auto [a, b, c] = vertices;
    if (change.kind == change_kind_t::split_one_edge)
        return {{a, n, c}, {n, b, c}};
    const std::uint32_t n2 = n + 1;
    const triangles_t all = triangles_of(mesh);
    if (std::ranges::find(all, lowest_first({n, b, c})) != all.end())
        return {{a, n, n2}, {n, b, c}, {n, c, n2}};
    return {{a, n, n2}, {n, b, n2}, {b, c, n2}};
}

/// The triangles that refer to old vertices only.
triangles_t of_old_vertices(const triangles_t& triangles, std::size_t old_vertices) {
    triangles_t old;
    std::ranges::copy_if(
        triangles, std::back_inserter(old), [old_vertices](const triangle_indices_t& triangle) {
            return std::ranges::all_of(triangle, [old_vertices](auto index) { return index < old_vertices; });
        });
    return old;
}

}  // namespace

vertex_t numbered_vertex(std::uint32_t number) {
    const auto n = static_cast<float>(number);
    return {{n, n * n, n + 7}, {n / 8, n / 16, n / 32, 1 - n / 64}, {n + 0.5F, n - 0.25F}};
}

frame_t numbered_frame(std::uint32_t number) {
    const auto n = static_cast<float>(number);
    return {{n, n + 1, n * 2}, {n * n, 5 - n, n + 2}, {n + 3, n / 2, n / 4}};
}

strip_mesh_t numbered_mesh(const indices_t& elements, std::uint32_t least_vertices) {
    std::uint32_t vertex_count = least_vertices;
    for (const std::uint32_t index : elements) {
        if (index != restart_mark)
            vertex_count = std::max(vertex_count, index + 1);
    }
    strip_mesh_t mesh{{}, {}, elements};
    for (std::uint32_t number = 0; number < vertex_count; ++number) {
        mesh.vertices.push_back(numbered_vertex(number));
        mesh.frames.push_back(numbered_frame(number));
    }
    return mesh;
}

indices_t strip_of(std::uint32_t triangles) {
    indices_t strip(triangles + 2);
    std::iota(strip.begin(), strip.end(), 0U);
    return strip;
}

triangles_t triangles_of(const strip_mesh_t& mesh) {
    triangles_t triangles;
    walk_mesh(mesh, [&](const met_triangle_t& met) {
        triangles.push_back(lowest_first(met.vertices));
        return keep(met);
    });
    return triangles;
}

void expect_changes(strip_mesh_t& mesh, const std::function<change_t(std::size_t)>& choose) {
    const triangles_t before = triangles_of(mesh);
    const std::size_t old_vertices = mesh.vertices.size();
    triangles_t met_triangles, kept, expected;
    walk_mesh(mesh, [&](const met_triangle_t& met) {
        // A walk that meets new triangles is wrong, and must come to an end all the same.
        const bool is_known = met_triangles.size() < before.size();
        const change_t change = is_known ? choose(met_triangles.size()) : change_t{};
        met_triangles.push_back(lowest_first(met.vertices));
        switch (change.kind) {
            case change_kind_t::keep:
                kept.push_back(met_triangles.back());
                return keep(met);
            case change_kind_t::remove:
                return remove(mesh, met);
            default:
                const auto new_vertex = static_cast<std::uint32_t>(mesh.vertices.size());
                const passed_t passed = split(mesh, met, change);
                std::ranges::copy(pieces_of(met, change, new_vertex, mesh), std::back_inserter(expected));
                return passed;
        }
    });
    EXPECT_EQ(met_triangles, before);
    const triangles_t after = triangles_of(mesh);
    EXPECT_EQ(of_old_vertices(after, old_vertices), kept);
    std::ranges::copy(kept, std::back_inserter(expected));
    EXPECT_EQ(sorted(after), sorted(expected));
}

}  // namespace ulk_test
