#pragma once

#include <array>
#include <iosfwd>

#include "model/math/records.h"

namespace ulk3d {

/// A triangle with everything that crossing tests need, derived from its three points once. It is 55 floats
/// without gaps; `zero` and `one` keep edges and points four floats apart.
struct triangle_t {
    struct edge_t {
        line2d line;
        float zero = 0;
    };
    struct corner_t {
        pos3 point;
        float one = 1;
    };

    /// Turns the plane's normal to +z.
    mtx3w to_plane;
    /// With a unit normal, so that its values are distances.
    surface plane;
    /// p0p1, p1p2, p2p0 in plane coordinates, not normalised, positive on the inner side.
    std::array<edge_t, 3> edges;
    /// p0, p1, p2
    std::array<corner_t, 3> points;
    /// Of p1p2, p2p0 and p0p1.
    std::array<float, 3> lengths{};
    float lengths_pad = 0;
    /// At p0, p1, p2, in radians. An obtuse angle is given as 180 degrees minus the angle.
    std::array<float, 3> angles{};
    float angles_pad = 0;
    /// Onto the sides, in the order of `lengths`.
    std::array<float, 3> altitudes{};

    triangle_t() = default;

    /// A triangle without area has a zero plane and the identity as to_plane; where two points coincide,
    /// angles and altitudes are not-a-numbers.
    triangle_t(const pos3& p0, const pos3& p1, const pos3& p2);
};

static_assert(sizeof(triangle_t) == 55 * sizeof(float));

/// Value of the plane equation at a point: the signed distance when the normal has unit length.
constexpr float plane_value(const surface& s, const pos3& p) {
    return s.a * p.x + s.b * p.y + s.c * p.z + s.d;
}

/// Value of the line equation at a point.
constexpr float line_value(const line2d& l, float x, float y) {
    return l.a * x + l.b * y + l.c;
}

/// Returns whether the segment from a to b passes through the triangle: its ends lie clearly (`f_gt`, `f_lt`)
/// on different sides of the plane, and it meets the plane inside the outline or exactly on it.
///
/// When the segment passes through the plane, t (0 at a, 1 at b) and `point` become the place where it does,
/// even if that is outside the outline; otherwise both stay as they are.
bool triangle_crossing(const triangle_t& triangle, float& t, pos3& point, const pos3& a, const pos3& b);

/// Prints six lines: "s: " plane and matrix, "l: " the edge lines, "p: " the points, lengths, angles,
/// altitudes.
std::ostream& operator<<(std::ostream& os, const triangle_t& triangle);

}  // namespace ulk3d
