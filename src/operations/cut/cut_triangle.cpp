#include "operations/cut/cut_triangle.h"

#include <algorithm>
#include <cmath>

#include "model/math/matrices.h"
#include "model/math/rotations.h"
#include "model/math/triangle.h"
#include "model/math/vectors.h"

namespace ulk3d {
namespace {

using values_t = std::array<float, 3>;

/// Has a unit normal: values are distances, negative to the left of the direction from p to q.
line2d unit_line(const pos3& p, const pos3& q) {
    const float dx = q.x - p.x;
    const float dy = q.y - p.y;
    const float length = std::sqrt(dx * dx + dy * dy);
    return {dy / length, -dx / length, (p.y * q.x - p.x * q.y) / length};
}

values_t edge_values(const cut_triangle_t& triangle, float x, float y) {
    return {line_value(triangle.flat_edges[0].line, x, y), line_value(triangle.flat_edges[1].line, x, y),
            line_value(triangle.flat_edges[2].line, x, y)};
}

bool all_negative(const values_t& e) {
    return f_lt(e[0], 0) && f_lt(e[1], 0) && f_lt(e[2], 0);
}

bool all_positive(const values_t& e) {
    return f_gt(e[0], 0) && f_gt(e[1], 0) && f_gt(e[2], 0);
}

int code_of(const values_t& e) {
    if (all_negative(e))
        return edge_inside;
    if (all_positive(e))
        return edge_apart;
    // Any mixture of negative values and zeros, including zeros alone, is on the outline.
    const bool on_outline = std::ranges::all_of(e, [](float v) { return f_lt(v, 0) || f_eq(v, 0); });
    return on_outline ? edge_on_outline : edge_outside;
}

}  // namespace

cut_triangle_t::cut_triangle_t(const pos3& first, const pos3& second, const pos3& third)
    : p0(first),
      p1(second),
      p2(third),
      centroid((first + second + third) * 0.33333334F),
      normal(unit_face_normal(first, second, third)) {}

void cut_triangle_t::make_flat() {
    if (flat_ready)
        return;
    flat = rotation_to_level(normal);
    flat_points = {transform_point(p0, flat), transform_point(p1, flat), transform_point(p2, flat)};
    for (std::size_t k = 0; k < 3; ++k)
        flat_edges[k].line = unit_line(flat_points[k], flat_points[(k + 1) % 3]);
    flat_ready = true;
}

int classify_edge(crossing_t& out, int /*index*/, const pos3& a, const pos3& b, cut_triangle_t& triangle) {
    const float d = dot(triangle.normal, triangle.centroid);
    const float da = dot(triangle.normal, a);
    const float db = dot(triangle.normal, b);
    if (d >= da) {
        if (da == d && d >= db)
            out.side = 0;
        else if (db >= d)
            out.side = 1;
        else
            return edge_apart;
    } else {
        if (d >= db)
            out.side = 0;
        else
            return edge_apart;
    }
    if (da == db)
        return edge_parallel;

    out.t = (d - da) / (db - da);
    if (std::isnan(out.t)) {
        out.t = -1;
        return edge_parallel;
    }
    out.point = a + (b - a) * out.t;
    if (f_eq(out.point, triangle.p0) || f_eq(out.point, triangle.p1) || f_eq(out.point, triangle.p2))
        return edge_at_corner;

    triangle.make_flat();
    const pos3 flat_point = transform_point(out.point, triangle.flat);
    out.distances = edge_values(triangle, flat_point.x, flat_point.y);
    return code_of(out.distances);
}

}  // namespace ulk3d
