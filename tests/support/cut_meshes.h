#pragma once

#include <cmath>
#include <cstdint>
#include <map>
#include <numbers>
#include <random>
#include <utility>
#include <vector>

#include "model/math/matrices.h"
#include "model/math/vectors.h"
#include "model/modeling.h"
#include "model/polygon/polygon.h"
#include "operations/strips/strip_mesh.h"

/// Meshes for tests and benchmarks of the mesh cut.
namespace ulk_test {

using ulk3d::pos3;
using ulk3d::strip_mesh_t;

struct corner_ids_t {
    std::uint32_t a, b, c;
};

/// Colour and texture coordinates are functions of the position, so that interpolated values can be checked.
inline ulk3d::vertex_t vertex_with_attributes(const pos3& p) {
    return {p, {0.5F + p.x / 8, 0.5F + p.y / 8, 0.5F + p.z / 8, 1}, {p.x / 4, p.y / 4}};
}

inline ulk3d::frame_t frame_with_attributes(const pos3& p) {
    return {{1, 0, p.x / 4}, {0, 1, p.y / 4}, {0, 0, 1}};
}

inline strip_mesh_t mesh_with_attributes(strip_mesh_t mesh) {
    for (std::size_t n = 0; n < mesh.vertices.size(); ++n) {
        mesh.vertices[n] = vertex_with_attributes(mesh.vertices[n].position);
        mesh.frames[n] = frame_with_attributes(mesh.vertices[n].position);
    }
    return mesh;
}

/// A mesh of these points and triangles, one strip per triangle.
inline strip_mesh_t mesh_of(const std::vector<pos3>& points, const std::vector<corner_ids_t>& triangles) {
    strip_mesh_t mesh;
    for (const pos3& p : points) {
        mesh.vertices.push_back(vertex_with_attributes(p));
        mesh.frames.push_back(frame_with_attributes(p));
    }
    for (const auto& [a, b, c] : triangles)
        mesh.elements.insert(mesh.elements.end(), {a, b, c, ulk3d::restart_mark});
    if (!mesh.elements.empty())
        mesh.elements.pop_back();
    return mesh;
}

/// The same triangles joined into strips, each continued across its last edge for as long as possible.
inline strip_mesh_t in_strips(const strip_mesh_t& soup) {
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::size_t> by_edge;
    std::vector<corner_ids_t> triangles;
    for (std::size_t i = 0; i + 2 < soup.elements.size(); i += 4) {
        const corner_ids_t t{soup.elements[i], soup.elements[i + 1], soup.elements[i + 2]};
        for (const auto& [from, to] : {std::pair(t.a, t.b), std::pair(t.b, t.c), std::pair(t.c, t.a)})
            by_edge[{from, to}] = triangles.size();
        triangles.push_back(t);
    }
    strip_mesh_t mesh{soup.vertices, soup.frames, {}};
    std::vector<std::uint32_t>& out = mesh.elements;
    std::vector<bool> used(triangles.size());
    for (std::size_t start = 0; start < triangles.size(); ++start) {
        if (used[start])
            continue;
        used[start] = true;
        if (!out.empty())
            out.push_back(ulk3d::restart_mark);
        out.insert(out.end(), {triangles[start].a, triangles[start].b, triangles[start].c});
        for (bool flipped = true;; flipped = !flipped) {
            const std::uint32_t last = out[out.size() - 1], before = out[out.size() - 2];
            const auto next = by_edge.find(flipped ? std::pair(last, before) : std::pair(before, last));
            if (next == by_edge.end() || used[next->second])
                break;
            used[next->second] = true;
            const auto& [a, b, c] = triangles[next->second];
            out.push_back(a != last && a != before ? a : b != last && b != before ? b : c);
        }
    }
    return mesh;
}

inline strip_mesh_t box(const pos3& low, const pos3& high) {
    std::vector<pos3> points;
    for (int n = 0; n < 8; ++n)
        points.push_back(
            {(n & 1) != 0 ? high.x : low.x, (n & 2) != 0 ? high.y : low.y, (n & 4) != 0 ? high.z : low.z});
    return mesh_of(points, {{0, 2, 1},
                            {1, 2, 3},
                            {4, 5, 6},
                            {5, 7, 6},
                            {0, 1, 4},
                            {1, 5, 4},
                            {2, 6, 3},
                            {3, 6, 7},
                            {0, 4, 2},
                            {2, 4, 6},
                            {1, 3, 5},
                            {3, 7, 5}});
}

inline strip_mesh_t tetrahedron(const pos3& a, const pos3& b, const pos3& c, const pos3& d) {
    const bool is_turned = ulk3d::det4p(a, b, c, d) > 0;
    const std::vector<pos3> points{a, is_turned ? c : b, is_turned ? b : c, d};
    return mesh_of(points, {{0, 1, 2}, {0, 3, 1}, {1, 3, 2}, {2, 3, 0}});
}

/// An icosahedron with each edge halved `levels` times: 20, 80, 320, 1,280, 5,120, 20,480 triangles.
inline strip_mesh_t sphere(const pos3& center, float radius, int levels) {
    const float g = std::numbers::phi_v<float>;
    std::vector<ulk3d::dir3> points{{-1, g, 0}, {1, g, 0}, {-1, -g, 0}, {1, -g, 0},
                                    {0, -1, g}, {0, 1, g}, {0, -1, -g}, {0, 1, -g},
                                    {g, 0, -1}, {g, 0, 1}, {-g, 0, -1}, {-g, 0, 1}};
    std::vector<corner_ids_t> triangles{{0, 11, 5}, {0, 5, 1},  {0, 1, 7},   {0, 7, 10}, {0, 10, 11},
                                        {1, 5, 9},  {5, 11, 4}, {11, 10, 2}, {10, 7, 6}, {7, 1, 8},
                                        {3, 9, 4},  {3, 4, 2},  {3, 2, 6},   {3, 6, 8},  {3, 8, 9},
                                        {4, 9, 5},  {2, 4, 11}, {6, 2, 10},  {8, 6, 7},  {9, 8, 1}};
    for (int level = 0; level < levels; ++level) {
        std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t> middles;
        const auto middle = [&](std::uint32_t p, std::uint32_t q) {
            const auto [place, is_new] =
                middles.try_emplace(std::minmax(p, q), static_cast<std::uint32_t>(points.size()));
            if (is_new)
                points.push_back((normalize(points[p]) + normalize(points[q])) * 0.5F);
            return place->second;
        };
        std::vector<corner_ids_t> finer;
        for (const auto& [a, b, c] : triangles) {
            const std::uint32_t ab = middle(a, b), bc = middle(b, c), ca = middle(c, a);
            finer.insert(finer.end(), {{a, ab, ca}, {ab, b, bc}, {ca, bc, c}, {ab, bc, ca}});
        }
        triangles = std::move(finer);
    }
    std::vector<pos3> places;
    for (const ulk3d::dir3& p : points)
        places.push_back(center + normalize(p) * radius);
    return mesh_of(places, triangles);
}

/// A grid of `cells` by `cells` squares over the square of side `size` about the origin, raised to `height(x,
/// y)`.
template <typename Height>
strip_mesh_t sheet(std::uint32_t cells, float size, Height height) {
    std::vector<pos3> points;
    std::vector<corner_ids_t> triangles;
    for (std::uint32_t row = 0; row <= cells; ++row)
        for (std::uint32_t column = 0; column <= cells; ++column) {
            const float x = (static_cast<float>(column) / static_cast<float>(cells) - 0.5F) * size;
            const float y = (static_cast<float>(row) / static_cast<float>(cells) - 0.5F) * size;
            points.push_back({x, y, height(x, y)});
        }
    for (std::uint32_t row = 0; row < cells; ++row)
        for (std::uint32_t column = 0; column < cells; ++column) {
            const std::uint32_t p = row * (cells + 1) + column, q = p + cells + 1;
            triangles.insert(triangles.end(), {{p, p + 1, q}, {p + 1, q + 1, q}});
        }
    return mesh_of(points, triangles);
}

/// A torus about the axis through `center` that is parallel to z.
inline strip_mesh_t torus(const pos3& center, float radius, float thickness, std::uint32_t around,
                          std::uint32_t across) {
    std::vector<pos3> points;
    std::vector<corner_ids_t> triangles;
    const auto angle = [](std::uint32_t n, std::uint32_t count) {
        return 2 * std::numbers::pi_v<float> * static_cast<float>(n) / static_cast<float>(count);
    };
    for (std::uint32_t u = 0; u < around; ++u)
        for (std::uint32_t v = 0; v < across; ++v) {
            const float r = radius + thickness * std::cos(angle(v, across));
            points.push_back({center.x + r * std::cos(angle(u, around)),
                              center.y + r * std::sin(angle(u, around)),
                              center.z + thickness * std::sin(angle(v, across))});
        }
    for (std::uint32_t u = 0; u < around; ++u)
        for (std::uint32_t v = 0; v < across; ++v) {
            const std::uint32_t p = u * across, q = (u + 1) % around * across, w = (v + 1) % across;
            triangles.insert(triangles.end(), {{p + v, q + v, p + w}, {q + v, q + w, p + w}});
        }
    return mesh_of(points, triangles);
}

inline strip_mesh_t transformed(strip_mesh_t mesh, const ulk3d::mtx3w& m) {
    for (ulk3d::vertex_t& vertex : mesh.vertices)
        vertex.position = transform_point(vertex.position, m);
    return mesh;
}

/// Each vertex moved by up to `amount` along each axis.
inline strip_mesh_t shaken(strip_mesh_t mesh, float amount, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> offset(-amount, amount);
    for (ulk3d::vertex_t& vertex : mesh.vertices) {
        pos3& p = vertex.position;
        p = {p.x + offset(random), p.y + offset(random), p.z + offset(random)};
    }
    return mesh;
}

}  // namespace ulk_test
