#include "operations/cut/walls/fill_slits.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "model/math/vectors.h"

namespace ulk3d {
namespace {

using round_t = std::vector<triangle_edge_t>;  ///< each edge begins where the one before it ends

/// Divides open edges into rounds that pass each place once. Every round of a surface comes back to its
/// start: as many open edges end at a place as begin there.
std::vector<round_t> rounds_of(const std::vector<triangle_edge_t>& open, const surface_view_t& surface) {
    std::multimap<std::uint32_t, triangle_edge_t> by_start;
    for (const triangle_edge_t& edge : open)
        by_start.emplace(surface.start_of(edge), edge);
    std::vector<round_t> rounds;
    while (!by_start.empty()) {
        round_t path;
        std::map<std::uint32_t, std::size_t> steps;  // by place
        for (auto next = by_start.begin(); next != by_start.end();
             next = by_start.find(surface.end_of(path.back()))) {
            steps[next->first] = path.size();
            path.push_back(next->second);
            by_start.erase(next);
            const auto start = steps.find(surface.end_of(path.back()));
            if (start == steps.end())
                continue;
            const auto first = path.begin() + static_cast<std::ptrdiff_t>(start->second);
            rounds.emplace_back(first, path.end());
            for (auto edge = first; edge != path.end(); ++edge)
                steps.erase(surface.start_of(*edge));
            path.erase(first, path.end());
            if (path.empty())
                break;
        }
    }
    return rounds;
}

/// A hole's outline, from which one corner after the other is cut off by a triangle.
class outline_t {
  public:
    outline_t(const patched_mesh_t& patched, const round_t& edges) {
        const auto count = static_cast<std::uint32_t>(edges.size());
        // The triangles of a filling pass the edges the other way.
        for (std::uint32_t n = 0; n < count; ++n) {
            const triangle_edge_t& edge = edges[count - 1 - n];
            vertices.push_back(patched.triangle(edge.triangle)[edge.corner]);
            positions.push_back(patched.position_of(patched.surface().places[vertices.back()]));
            before.push_back((n + count - 1) % count);
            behind.push_back((n + 1) % count);
        }
        for (std::uint32_t n = 0; n < count; ++n)
            by_bridge.emplace(bridge(n), n);
    }

    bool has_area() const { return by_bridge.size() >= 3; }

    /// The triangle at the corner whose neighbours are nearest to each other.
    triangle_vertices_t cut_off() {
        const std::uint32_t n = by_bridge.begin()->second;
        const std::uint32_t a = before[n], b = behind[n];
        for (const std::uint32_t k : {n, a, b})
            by_bridge.erase({bridge(k), k});
        behind[a] = b;
        before[b] = a;
        for (const std::uint32_t k : {a, b})
            by_bridge.emplace(bridge(k), k);
        return {vertices[a], vertices[n], vertices[b]};
    }

  private:
    float bridge(std::uint32_t n) const { return length(positions[behind[n]] - positions[before[n]]); }

    std::vector<std::uint32_t> vertices;
    std::vector<pos3> positions;
    std::vector<std::uint32_t> before, behind;
    std::set<std::pair<float, std::uint32_t>> by_bridge;
};

/// Whether two triangles have the same corners and look opposite ways.
bool are_back_to_back(const triangle_vertices_t& a, const triangle_vertices_t& b,
                      const surface_view_t& surface) {
    const auto place = [&](const triangle_vertices_t& t, std::size_t k) { return surface.places[t[k % 3]]; };
    for (std::size_t k = 0; k < 3; ++k)
        if (place(a, 0) == place(b, k) && place(a, 1) == place(b, k + 2) && place(a, 2) == place(b, k + 1))
            return true;
    return false;
}

void fill(patched_mesh_t& patched, const round_t& edges, outline_t outline) {
    while (outline.has_area()) {
        const triangle_vertices_t triangle = outline.cut_off();
        const auto opposite = std::ranges::find_if(edges, [&](const triangle_edge_t& edge) {
            return are_back_to_back(triangle, patched.triangle(edge.triangle), patched.surface());
        });
        if (opposite == edges.end())
            patched.add_triangle(triangle);
        else
            patched.take_out(opposite->triangle);
    }
}

}  // namespace

void fill_slits(patched_mesh_t& patched, const std::vector<triangle_edge_t>& open) {
    const std::vector<round_t> rounds = rounds_of(open, patched.surface());
    // All outlines come first: a triangle that is left out may have an edge in another one.
    std::vector<outline_t> outlines;
    for (const round_t& edges : rounds)
        outlines.emplace_back(patched, edges);
    for (std::size_t n = 0; n < rounds.size(); ++n)
        fill(patched, rounds[n], std::move(outlines[n]));
}

}  // namespace ulk3d
