#include "tool/tidy/triangle_mesh.h"

#include <algorithm>

namespace ulktool {

void sort_triangles(std::vector<triangle_corners_t>& triangles) {
    for (triangle_corners_t& corners : triangles)
        std::rotate(corners.begin(), std::ranges::min_element(corners), corners.end());
    std::ranges::sort(triangles);
}

bool is_empty(const triangle_corners_t& corners, std::span<const ulk3d::vertex_t> vertices) {
    const auto [a, b, c] = corners;
    const auto is_one_place = [vertices](std::uint32_t p, std::uint32_t q) {
        return p == q || vertices[p].position == vertices[q].position;
    };
    return is_one_place(a, b) || is_one_place(b, c) || is_one_place(c, a);
}

void drop_unused_vertices(triangle_mesh_t& mesh) {
    std::vector<std::uint32_t> places(mesh.vertices.size());
    for (const triangle_corners_t& corners : mesh.triangles)
        for (const std::uint32_t vertex : corners)
            places[vertex] = 1;
    std::uint32_t used = 0;
    for (std::size_t vertex = 0; vertex < places.size(); ++vertex) {
        if (places[vertex] == 0)
            continue;
        mesh.vertices[used] = mesh.vertices[vertex];
        mesh.frames[used] = mesh.frames[vertex];
        places[vertex] = used++;
    }
    mesh.vertices.resize(used);
    mesh.frames.resize(used);
    for (triangle_corners_t& corners : mesh.triangles)
        for (std::uint32_t& vertex : corners)
            vertex = places[vertex];
}

}  // namespace ulktool
