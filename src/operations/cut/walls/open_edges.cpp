#include "operations/cut/walls/open_edges.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "model/polygon/strip_walk.h"

namespace ulk3d {
namespace {

using position_bits_t = std::array<std::uint32_t, 3>;

/// Both zeros are the same place.
position_bits_t bits_of(const pos3& p) {
    return {std::bit_cast<std::uint32_t>(p.x + 0.0F), std::bit_cast<std::uint32_t>(p.y + 0.0F),
            std::bit_cast<std::uint32_t>(p.z + 0.0F)};
}

/// An edge by its ends, regardless of its direction.
struct edge_key_t {
    std::uint64_t ends;
    std::uint32_t number;
    bool is_forward;
};

}  // namespace

std::vector<triangle_vertices_t> triangles_of(const strip_mesh_t& mesh) {
    std::vector<triangle_vertices_t> triangles;
    triangles.reserve(mesh.elements.size());
    walk_strips(mesh.elements, mesh.vertices.size(), [&](const strip_triangle_t& t) {
        triangles.push_back({t.a, t.b, t.c});
    });
    return triangles;
}

std::vector<std::uint32_t> places_of(std::span<const vertex_t> vertices) {
    std::vector<std::pair<position_bits_t, std::uint32_t>> order;
    order.reserve(vertices.size());
    for (std::uint32_t n = 0; n < vertices.size(); ++n)
        order.emplace_back(bits_of(vertices[n].position), n);
    std::ranges::sort(order);
    std::vector<std::uint32_t> places(vertices.size());
    for (std::size_t n = 0; n < order.size(); ++n) {
        const bool is_first = n == 0 || order[n].first != order[n - 1].first;
        places[order[n].second] = is_first ? order[n].second : places[order[n - 1].second];
    }
    return places;
}

bool surface_view_t::is_collapsed(const triangle_vertices_t& triangle) const {
    const std::uint32_t a = places[triangle[0]], b = places[triangle[1]], c = places[triangle[2]];
    return a == b || b == c || c == a;
}

std::vector<triangle_edge_t> open_edges(const surface_view_t& surface) {
    std::vector<triangle_edge_t> edges;
    edges.reserve(3 * surface.triangles.size());
    for (std::uint32_t n = 0; n < surface.triangles.size(); ++n)
        if (!surface.is_collapsed(surface.triangles[n]))
            for (std::uint32_t corner = 0; corner < 3; ++corner)
                edges.push_back({n, corner});
    take_out_pairs(edges, surface);
    return edges;
}

void take_out_pairs(std::vector<triangle_edge_t>& edges, const surface_view_t& surface) {
    std::vector<edge_key_t> keys;
    keys.reserve(edges.size());
    for (std::uint32_t n = 0; n < edges.size(); ++n) {
        const std::uint64_t start = surface.start_of(edges[n]), end = surface.end_of(edges[n]);
        keys.push_back({std::min(start, end) << 32 | std::max(start, end), n, start < end});
    }
    std::ranges::sort(keys, {}, [](const edge_key_t& key) { return std::pair(key.ends, key.number); });
    std::vector<std::uint32_t> left;
    for (std::size_t first = 0, end = 0; first < keys.size(); first = end) {
        std::ptrdiff_t surplus = 0;  // of edges forward
        for (; end < keys.size() && keys[end].ends == keys[first].ends; ++end)
            surplus += keys[end].is_forward ? 1 : -1;
        for (std::size_t n = first; n < end && surplus != 0; ++n) {
            if (keys[n].is_forward != (surplus > 0))
                continue;
            left.push_back(keys[n].number);
            surplus += surplus > 0 ? -1 : 1;
        }
    }
    std::ranges::sort(left);
    std::vector<triangle_edge_t> remaining;
    remaining.reserve(left.size());
    for (const std::uint32_t n : left)
        remaining.push_back(edges[n]);
    edges = std::move(remaining);
}

bool is_closed(const strip_mesh_t& mesh) {
    const std::vector<triangle_vertices_t> triangles = triangles_of(mesh);
    const std::vector<std::uint32_t> places = places_of(mesh.vertices);
    return open_edges({triangles, places}).empty();
}

}  // namespace ulk3d
