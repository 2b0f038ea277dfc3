#include "operations/cut/pair_filter.h"

#include <algorithm>
#include <cmath>

#include "model/math/matrices.h"
#include "model/math/triangle.h"
#include "model/math/vectors.h"

namespace ulk3d {
namespace {

// These functions become one loop that computes several triangles at once. They are therefore always inlined
// and have no branches: truth values are combined by & and |. Not-a-numbers are treated so that the triangle
// is passed to `cut_pair`.

using cutter_values_t = pair_filter_t::cutter_values_t;
using values_t = std::array<float, 3>;

/// Up to this size no product in the outline test overflows.
constexpr float far = 1e15F;

bool is_near(const line2d& line) {
    return std::fabs(line.a) < far && std::fabs(line.b) < far && std::fabs(line.c) < far;
}

/// Where the edge from a to b meets the cutter's plane.
[[gnu::always_inline]] inline pos3 meeting_point(const cutter_values_t& cutter, const pos3& a,
                                                 const pos3& b) {
    const float da = dot(cutter.normal, a);
    const float db = dot(cutter.normal, b);
    const float t = (cutter.d - da) / (db - da);
    return a + (b - a) * t;
}

[[gnu::always_inline]] inline int is_at(const pos3& p, const pos3& corner) {
    return int{std::fabs(p.x - corner.x) <= eps} & int{std::fabs(p.y - corner.y) <= eps} &
           int{std::fabs(p.z - corner.z) <= eps};
}

[[gnu::always_inline]] inline int is_at_corner(const cutter_values_t& cutter, const pos3& p) {
    return is_at(p, cutter.corners[0]) | is_at(p, cutter.corners[1]) | is_at(p, cutter.corners[2]);
}

[[gnu::always_inline]] inline values_t edge_values(const cutter_values_t& cutter, const pos3& flat) {
    return {line_value(cutter.edges[0], flat.x, flat.y), line_value(cutter.edges[1], flat.x, flat.y),
            line_value(cutter.edges[2], flat.x, flat.y)};
}

/// True when a point is neither inside all edge lines nor outside all of them.
[[gnu::always_inline]] inline int is_mixed(const values_t& e) {
    const int some_not_inside = int{e[0] >= -eps} | int{e[1] >= -eps} | int{e[2] >= -eps};
    const int some_not_outside = int{e[0] <= eps} | int{e[1] <= eps} | int{e[2] <= eps};
    return some_not_inside & some_not_outside;
}

[[gnu::always_inline]] inline float determinant_of(const line2d& k, const line2d& l) {
    return k.b * l.a - k.a * l.b;
}

/// True when the line through p and q is parallel to no edge line, and meets the first one outside the
/// triangle.
[[gnu::always_inline]] inline int passes_by(const cutter_values_t& cutter, const pos3& p, const pos3& q) {
    const float dx = q.x - p.x;
    const float dy = q.y - p.y;
    const float length = std::sqrt(dx * dx + dy * dy);
    const line2d line{dy / length, -dx / length, (p.y * q.x - p.x * q.y) / length};
    const auto& [e0, e1, e2] = cutter.edges;
    const float det = determinant_of(e0, line);
    const float x = (e0.c * line.b - e0.b * line.c) / det;
    const float y = (e0.a * line.c - e0.c * line.a) / det;
    const int outside = int{line_value(e1, x, y) >= eps} | int{line_value(e2, x, y) >= eps};
    const int meets_all =
        int{det != 0} & int{determinant_of(e1, line) != 0} & int{determinant_of(e2, line) != 0};
    return outside & meets_all & int{std::fabs(line.c) < cutter.reach};
}

/// True when the cutter's corners are all strictly on one side of the victim's plane.
[[gnu::always_inline]] inline int is_on_one_side(const cutter_values_t& cutter, const pos3& p0,
                                                 const pos3& p1, const pos3& p2) {
    const pos3 centroid = (p0 + p1 + p2) * 0.33333334F;
    const dir3 face = face_normal(p0, p1, p2);
    const dir3 normal = face / length(face);
    const float d = dot(normal, centroid);
    const values_t values{dot(normal, cutter.corners[0]), dot(normal, cutter.corners[1]),
                          dot(normal, cutter.corners[2])};
    const int below = int{values[0] < d} & int{values[1] < d} & int{values[2] < d};
    const int above = int{values[0] > d} & int{values[1] > d} & int{values[2] > d};
    return below | above;
}

[[gnu::always_inline]] inline int is_to_be_asked(const cutter_values_t& cutter, const pos3& p0,
                                                 const pos3& p1, const pos3& p2, const pos3& before,
                                                 const pos3& lone, const pos3& after) {
    const pos3 p = meeting_point(cutter, before, lone);
    const pos3 q = meeting_point(cutter, lone, after);
    const pos3 flat_p = transform_point(p, cutter.flat);
    const pos3 flat_q = transform_point(q, cutter.flat);
    const int is_apart = is_mixed(edge_values(cutter, flat_p)) & is_mixed(edge_values(cutter, flat_q)) &
                         (is_at_corner(cutter, p) ^ 1) & (is_at_corner(cutter, q) ^ 1);
    return (is_apart & passes_by(cutter, flat_p, flat_q) & is_on_one_side(cutter, p0, p1, p2)) ^ 1;
}

}  // namespace

void pair_filter_t::start(cutter_triangle_t& triangle) {
    triangle.cut.make_flat();
    cutter.corners = triangle.corners;
    cutter.normal = triangle.cut.normal;
    cutter.d = dot(triangle.cut.normal, triangle.cut.centroid);
    cutter.flat = triangle.cut.flat;
    for (std::size_t k = 0; k < 3; ++k)
        cutter.edges[k] = triangle.cut.flat_edges[k].line;
    cutter.reach = std::ranges::all_of(cutter.edges, is_near) ? far : 0;
    asked.clear();
}

void pair_filter_t::add(const corners_t& corners, std::uint32_t lone, std::uint32_t tag) {
    block_t& block = blocks[lone];
    for (std::size_t n = 0; n < 3; ++n) {
        block.corners[n].x[block.count] = corners[n].x;
        block.corners[n].y[block.count] = corners[n].y;
        block.corners[n].z[block.count] = corners[n].z;
    }
    block.tags[block.count] = tag;
    if (++block.count == lanes)
        decide(block, lone);
}

const std::vector<std::uint32_t>& pair_filter_t::finish() {
    for (std::uint32_t lone = 0; lone < 3; ++lone)
        decide(blocks[lone], lone);
    std::ranges::sort(asked);
    return asked;
}

void pair_filter_t::decide(block_t& block, std::uint32_t lone) {
    if (block.count == 0)
        return;
    const cutter_values_t values = cutter;
    const corner_lanes_t& c0 = block.corners[0];
    const corner_lanes_t& c1 = block.corners[1];
    const corner_lanes_t& c2 = block.corners[2];
    const corner_lanes_t& cb = block.corners[(lone + 2) % 3];
    const corner_lanes_t& cl = block.corners[lone];
    const corner_lanes_t& ca = block.corners[(lone + 1) % 3];
    std::array<int, lanes> to_be_asked{};
    for (std::size_t k = 0; k < lanes; ++k)
        to_be_asked[k] = is_to_be_asked(values, {c0.x[k], c0.y[k], c0.z[k]}, {c1.x[k], c1.y[k], c1.z[k]},
                                        {c2.x[k], c2.y[k], c2.z[k]}, {cb.x[k], cb.y[k], cb.z[k]},
                                        {cl.x[k], cl.y[k], cl.z[k]}, {ca.x[k], ca.y[k], ca.z[k]});
    for (std::size_t k = 0; k < block.count; ++k)
        if (to_be_asked[k] != 0)
            asked.push_back(block.tags[k]);
    block.count = 0;
}

}  // namespace ulk3d
