#include "operations/cut/cut_triangle.h"

#include <algorithm>
#include <cmath>
#include <limits>

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

/// Where two lines meet. Parallel lines, with a determinant of exactly 0, give not-a-numbers and never
/// infinities.
pos2 meeting_point(const line2d& k, const line2d& l) {
    constexpr float none = std::numeric_limits<float>::quiet_NaN();
    const float det = k.b * l.a - k.a * l.b;
    if (det == 0)
        return {none, none};
    return {(k.c * l.b - k.b * l.c) / det, (k.a * l.c - k.c * l.a) / det};
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

/// The code of the meeting points relative to the triangle's other edges; an edge parallel to the line has
/// none.
int outline_code(const outline_t& outline, const cut_triangle_t& triangle) {
    const auto value = [&](std::size_t edge, std::size_t meet) {
        const pos2& x = outline.meets[meet];
        return line_value(triangle.flat_edges[edge].line, x.x, x.y);
    };
    for (std::size_t k = 0; k < 3; ++k) {
        if (!std::isnan(outline.meets[k].x))
            continue;
        const std::size_t i = (k + 1) % 3;
        const std::size_t j = (k + 2) % 3;
        const bool passes = !f_gt(outline.p_values[k], 0) && f_lt(value(i, j), 0) && f_lt(value(j, i), 0);
        return passes ? 3 : 0;
    }
    const bool passes = f_le(value(0, 1), 0) && f_le(value(0, 2), 0) && f_le(value(1, 0), 0) &&
                        f_le(value(1, 2), 0) && f_le(value(2, 0), 0) && f_le(value(2, 1), 0);
    return passes ? 3 : 0;
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

int outline_test(outline_t& out, int number, const pos3& p, const pos3& q, cut_triangle_t& triangle) {
    triangle.make_flat();
    const pos3 flat_p = transform_point(p, triangle.flat);
    const pos3 flat_q = transform_point(q, triangle.flat);
    out.number = number;
    out.line = unit_line(flat_p, flat_q);
    for (std::size_t k = 0; k < 3; ++k)
        out.meets[k] = meeting_point(triangle.flat_edges[k].line, out.line);
    out.p_values = edge_values(triangle, flat_p.x, flat_p.y);
    out.q_values = edge_values(triangle, flat_q.x, flat_q.y);

    if (all_negative(out.p_values) || all_negative(out.q_values))
        return -1;
    if (all_positive(out.p_values) || all_positive(out.q_values))
        return -2;
    return outline_code(out, triangle);
}

}  // namespace ulk3d
