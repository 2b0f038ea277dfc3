#include "tool/tidy/tidy_mesh.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "model/polygon/strip_walk.h"
#include "tool/tidy/simplify.h"
#include "tool/tidy/smooth.h"
#include "tool/tidy/strips.h"
#include "tool/tidy/weld.h"

namespace ulktool {

namespace {

using ulk3d::frame_t;
using ulk3d::vertex_t;

/// Two not-a-numbers of the same bits are the same.
bool is_same(const frame_t& a, const frame_t& b) {
    using bits_t = std::array<std::uint32_t, 9>;
    return std::bit_cast<bits_t>(a) == std::bit_cast<bits_t>(b);
}

std::vector<triangle_corners_t> triangles_of(const mesh_view_t& mesh) {
    std::vector<triangle_corners_t> triangles;
    ulk3d::walk_strips(mesh.elements, mesh.vertices.size(), [&](const ulk3d::strip_triangle_t& triangle) {
        triangles.push_back({triangle.a, triangle.b, triangle.c});
    });
    return triangles;
}

/// Has the triangles refer to what stands for their corners. Returns the vertices that stand for others with
/// another frame.
std::vector<bool> replace_corners(const mesh_view_t& mesh, const std::vector<std::uint32_t>& standing,
                                  std::vector<triangle_corners_t>& triangles) {
    std::vector<bool> differs(mesh.vertices.size());
    for (triangle_corners_t& corners : triangles)
        for (std::uint32_t& vertex : corners) {
            const std::uint32_t stands = standing[vertex];
            if (!is_same(mesh.frames[vertex], mesh.frames[stands]))
                differs[stands] = true;
            vertex = stands;
        }
    return differs;
}

/// Takes the vertices that the triangles use, in their order, and from `renewed` what it says of them.
taken_mesh_t take_used(const mesh_view_t& mesh, std::vector<triangle_corners_t>&& triangles,
                       const std::vector<bool>& renewed) {
    taken_mesh_t taken;
    std::vector<std::uint32_t> places(mesh.vertices.size(), no_vertex);
    for (const triangle_corners_t& corners : triangles)
        for (const std::uint32_t vertex : corners)
            places[vertex] = 0;
    std::uint32_t used = 0;
    for (std::uint32_t& place : places)
        if (place != no_vertex)
            place = used++;
    taken.mesh.vertices.reserve(used);
    taken.mesh.frames.reserve(used);
    for (std::size_t vertex = 0; vertex < places.size(); ++vertex) {
        if (places[vertex] == no_vertex)
            continue;
        taken.mesh.vertices.push_back(mesh.vertices[vertex]);
        taken.mesh.frames.push_back(mesh.frames[vertex]);
        taken.renewed.push_back(renewed[vertex]);
    }
    for (triangle_corners_t& corners : triangles)
        for (std::uint32_t& vertex : corners)
            vertex = places[vertex];
    taken.mesh.triangles = std::move(triangles);
    return taken;
}

}  // namespace

mesh_counts_t count_mesh(const mesh_view_t& mesh) {
    mesh_counts_t counts{
        .vertices = mesh.vertices.size(),
        .bytes = mesh.vertices.size_bytes() + mesh.frames.size_bytes() + mesh.elements.size_bytes()};
    ulk3d::walk_strips(mesh.elements, mesh.vertices.size(), [&](const ulk3d::strip_triangle_t& triangle) {
        ++counts.triangles;
        counts.strips += triangle.number == 0 ? 1 : 0;
    });
    return counts;
}

taken_mesh_t take_mesh(const mesh_view_t& mesh, const tidy_options_t& options) {
    std::vector<triangle_corners_t> triangles = triangles_of(mesh);
    std::vector<bool> differs(mesh.vertices.size());
    if (options.weld_tolerance)
        differs = replace_corners(mesh, welded_vertices(mesh.vertices, triangles, *options.weld_tolerance),
                                  triangles);
    std::erase_if(triangles,
                  [&mesh](const triangle_corners_t& corners) { return is_empty(corners, mesh.vertices); });
    return take_used(mesh, std::move(triangles), differs);
}

ulk3d::strip_mesh_t tidy_mesh(taken_mesh_t& taken, const tidy_options_t& options) {
    triangle_mesh_t& mesh = taken.mesh;
    if (!options.smooth_degrees && std::ranges::find(taken.renewed, true) != taken.renewed.end())
        renew_frames(mesh, taken.renewed);
    if (options.most_triangles)
        simplify(mesh, *options.most_triangles);
    if (options.smooth_degrees)
        smooth(mesh, *options.smooth_degrees);
    std::vector<std::uint32_t> strips = make_strips(mesh.triangles, mesh.vertices.size());
    return {std::move(mesh.vertices), std::move(mesh.frames), std::move(strips)};
}

}  // namespace ulktool
