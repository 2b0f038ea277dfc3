#include "model/math/triangle.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#include "model/math/matrices.h"
#include "model/math/number_format.h"
#include "model/math/print.h"
#include "model/math/rotations.h"
#include "model/math/vectors.h"

namespace ulk3d {
namespace {

/// The angle between sides p and q, opposite to side r, folded into 0 to 90 degrees: taking the absolute
/// value is intended. Rounding above 1 must not lose the angle of a thin triangle.
float corner_angle(float p, float q, float r) {
    const float cosine = std::fabs((p * p + q * q - r * r) / (2 * p * q));
    return std::acos(std::min(cosine, 1.0F));
}

line2d line_through(const pos3& from, const pos3& to) {
    return {from.y - to.y, -(from.x - to.x), from.x * to.y - to.x * from.y};
}

std::ostream& print_triple(std::ostream& os, const std::array<float, 3>& v) {
    return os << v[0] << ", " << v[1] << ", " << v[2] << '\n';
}

}  // namespace

triangle_t::triangle_t(const pos3& p0, const pos3& p1, const pos3& p2)
    : points{{{p0}, {p1}, {p2}}}, lengths{length(p2 - p1), length(p0 - p2), length(p1 - p0)} {
    const auto [a, b, c] = lengths;
    angles = {corner_angle(b, c, a), corner_angle(c, a, b), corner_angle(a, b, c)};
    altitudes = {std::sin(angles[1]) * c, std::sin(angles[2]) * a, std::sin(angles[0]) * b};

    const dir3 normal = unit_face_normal(p0, p1, p2);
    plane = {normal.x, normal.y, normal.z, -dot(normal, p0)};
    to_plane = rotation_to_level(normal);

    const std::array<pos3, 3> flat{transform_point(p0, to_plane), transform_point(p1, to_plane),
                                   transform_point(p2, to_plane)};
    for (std::size_t i = 0; i < 3; ++i)
        edges[i].line = line_through(flat[i], flat[(i + 1) % 3]);
}

bool triangle_crossing(const triangle_t& triangle, float& t, pos3& point, const pos3& a, const pos3& b) {
    const float da = plane_value(triangle.plane, a);
    const float db = plane_value(triangle.plane, b);
    const bool passes = (f_gt(da, 0) && f_lt(db, 0)) || (f_lt(da, 0) && f_gt(db, 0));
    if (!passes)
        return false;

    t = -da / (db - da);
    point = a + (b - a) * t;
    const pos3 flat = transform_point(point, triangle.to_plane);
    return std::all_of(triangle.edges.begin(), triangle.edges.end(),
                       [&](const triangle_t::edge_t& e) { return line_value(e.line, flat.x, flat.y) >= 0; });
}

std::ostream& operator<<(std::ostream& os, const triangle_t& triangle) {
    const number_format format(os);
    const auto& [e0, e1, e2] = triangle.edges;
    const auto& [p0, p1, p2] = triangle.points;
    os << "s: " << triangle.plane << ", " << triangle.to_plane << '\n';
    os << "l: " << e0.line << ", " << e1.line << ", " << e2.line << '\n';
    os << "p: " << p0.point << ", " << p1.point << ", " << p2.point << '\n';
    print_triple(os, triangle.lengths);
    print_triple(os, triangle.angles);
    return print_triple(os, triangle.altitudes);
}

}  // namespace ulk3d
