#pragma once

#include <span>
#include <vector>

#include "model/math/matrices.h"
#include "model/math/vectors.h"
#include "model/polygon/strip_walk.h"
#include "operations/hit/polygon_hit.h"

/// The hit test by its definition, without shortcuts: every triangle is projected and clipped by all four
/// lines, and the remaining corners are put into a map. The reference for the results and the speed of the
/// program's own.
namespace ulk_test {

using plain_polygon_t = std::vector<ulk3d::clip_vertex_t>;

inline void plain_append(plain_polygon_t& polygon, const ulk3d::clip_vertex_t& vertex) {
    if (polygon.size() < ulk3d::clip_places)
        polygon.push_back(vertex);
}

inline float plain_interpolation(float start, float end, float f) {
    return start + (end - start) * f;
}

inline ulk3d::clip_vertex_t plain_crossing(const ulk3d::clip_vertex_t& in, float s_in,
                                           const ulk3d::clip_vertex_t& out, float s_out) {
    const float f = s_in / (s_in - s_out);
    return {{plain_interpolation(in.position.x, out.position.x, f),
             plain_interpolation(in.position.y, out.position.y, f),
             plain_interpolation(in.position.z, out.position.z, f)},
            {plain_interpolation(in.attribute.x, out.attribute.x, f),
             plain_interpolation(in.attribute.y, out.attribute.y, f),
             plain_interpolation(in.attribute.z, out.attribute.z, f),
             plain_interpolation(in.attribute.w, out.attribute.w, f)}};
}

inline plain_polygon_t plain_clip(const plain_polygon_t& polygon, const ulk3d::edge_line_t& line) {
    std::vector<float> s;
    for (const ulk3d::clip_vertex_t& p : polygon)
        s.push_back(line.a * p.position.x + line.b * p.position.y + line.c);
    plain_polygon_t result;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const std::size_t j = (i + 1) % polygon.size();
        const bool outside_i = s[i] < 0;
        const bool outside_j = s[j] < 0;
        if (!outside_i)
            plain_append(result, polygon[i]);
        if (!outside_i && outside_j)
            plain_append(result, plain_crossing(polygon[i], s[i], polygon[j], s[j]));
        if (outside_i && !outside_j)
            plain_append(result, plain_crossing(polygon[j], s[j], polygon[i], s[i]));
    }
    return result;
}

inline bool plain_polygon_hit(ulk3d::hit_map_t& hits, std::span<const ulk3d::vertex_t> vertices,
                              std::span<const std::uint32_t> strips, const ulk3d::edge_lines_t& lines,
                              const ulk3d::mtx3w& perspective, const ulk3d::mtx3w& view) {
    const ulk3d::mtx3w m = view * perspective;
    ulk3d::hit_map_t found;
    ulk3d::walk_strips(strips, vertices.size(), [&](const ulk3d::strip_triangle_t& triangle) {
        plain_polygon_t polygon;
        for (const std::uint32_t index : {triangle.a, triangle.b, triangle.c})
            polygon.push_back(
                {ulk3d::dehomogenize(ulk3d::vec_times_mtx(ulk3d::homogenize(vertices[index].position), m)),
                 {}});
        for (const ulk3d::edge_line_t& line : lines)
            polygon = plain_clip(polygon, line);
        for (const ulk3d::clip_vertex_t& p : polygon)
            found[p.position.z] = {{vertices[triangle.a], vertices[triangle.b], vertices[triangle.c]},
                                   p.position,
                                   static_cast<std::uint32_t>(triangle.id)};
    });
    if (found.empty())
        return false;
    hits[found.begin()->first] = found.begin()->second;
    return true;
}

}  // namespace ulk_test
