#include "operations/cut/inside_test.h"

#include <algorithm>
#include <cmath>

#include "model/math/vectors.h"
#include "model/polygon/strip_walk.h"

namespace ulk3d {
namespace {

/// The highest z of the vertices that the strips refer to.
float highest_z(const strip_mesh_t& mesh) {
    float high = 0;
    bool seeded = false;
    for (const std::uint32_t index : mesh.elements) {
        if (index >= mesh.vertices.size())
            continue;
        const float z = mesh.vertices[index].position.z;
        high = seeded ? std::max(high, z) : z;
        seeded = true;
    }
    return high;
}

/// Where the ray ends: clearly above the cutter. A ray that ended at the highest z itself would meet a level
/// top or pass below it, depending on how the plane of the top was rounded, and points below it would count
/// as inside or outside by chance.
float ray_end(float high_z) {
    return high_z + std::fabs(high_z) + 1;
}

std::vector<cut_triangle_t> triangles_with_area(const strip_mesh_t& mesh) {
    std::vector<cut_triangle_t> triangles;
    const auto position = [&](std::uint32_t index) { return mesh.vertices[index].position; };
    walk_strips(mesh.elements, mesh.vertices.size(), [&](const strip_triangle_t& t) {
        const cut_triangle_t triangle(position(t.a), position(t.b), position(t.c));
        if (triangle.has_area())
            triangles.push_back(triangle);
    });
    return triangles;
}

}  // namespace

void insert_hit(std::vector<crossing_hit_t>& hits, const crossing_hit_t& hit) {
    const auto place = std::ranges::upper_bound(hits, hit.t, {}, &crossing_hit_t::t);
    hits.insert(place, hit);
}

int sum_of_hits(std::span<const crossing_hit_t> hits) {
    int sum = 0;
    const crossing_hit_t* corner = nullptr;
    for (const crossing_hit_t& hit : hits) {
        const int direction = hit.side == 0 ? 1 : -1;
        if (hit.kind == edge_on_outline)
            sum += direction;
        else if (hit.kind == edge_inside)
            sum += 2 * direction;
        else if (corner == nullptr || (hit.t == corner->t && hit.slope < corner->slope))
            // The triangles around a corner give it slightly different t: a hit above the first is most
            // likely the same corner again, and is not counted.
            corner = &hit;
    }
    if (corner != nullptr)
        sum += corner->side == 0 ? 2 : -2;
    return sum;
}

inside_test_t::inside_test_t(const strip_mesh_t& cutter)
    : triangles(triangles_with_area(cutter)), high_z(highest_z(cutter)), grid(triangles, ray_end(high_z)) {}

bool inside_test_t::is_inside(const pos3& point) {
    if (point.z > high_z)
        return false;
    const pos3 end{point.x, point.y, ray_end(high_z)};
    hits.clear();
    for (const std::uint32_t number : grid.numbers_for(point))
        add_hit(triangles[number], point, end);
    return sum_of_hits(hits) < 0;
}

void inside_test_t::add_hit(cut_triangle_t& triangle, const pos3& start, const pos3& end) {
    crossing_t crossing;
    const int code = classify_edge(crossing, 6, start, end, triangle);
    if (code < edge_at_corner || code > edge_inside)
        return;
    const float slope = code == edge_at_corner ? dot(triangle.normal, normalize(start - crossing.point)) : 0;
    insert_hit(hits, {crossing.t, static_cast<std::uint32_t>(code), static_cast<std::uint8_t>(crossing.side),
                      slope});
}

}  // namespace ulk3d
