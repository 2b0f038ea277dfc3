#pragma once

#include <array>
#include <cmath>
#include <limits>

#include "model/math/triangle.h"
#include "model/math/vectors.h"
#include "operations/cut/cut_triangle.h"

/// How the mesh cut decides about one pair of triangles, written once more from its rules: step by step, with
/// lines instead of tables, and without looking for what could be left out.
namespace ulk_test {

using ulk3d::pos3;
using plain_corners_t = std::array<pos3, 3>;

struct plain_cut_t {
    int new_vertices = 0;
    int first = 0;
    float t1 = 0, t2 = 0;
    pos3 p1{}, p2{};
};

inline bool plain_near(const pos3& a, const pos3& b) {
    return std::fabs(a.x - b.x) <= ulk3d::eps && std::fabs(a.y - b.y) <= ulk3d::eps &&
           std::fabs(a.z - b.z) <= ulk3d::eps;
}

inline bool plain_finite(const plain_corners_t& corners) {
    for (const pos3& p : corners)
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z))
            return false;
    return true;
}

/// Whether two triangles have a gap of more than `room` between them along an axis.
inline bool plain_apart(const plain_corners_t& a, const plain_corners_t& b, float room) {
    for (const auto axis : {&pos3::x, &pos3::y, &pos3::z}) {
        const auto low = [axis](const plain_corners_t& c) {
            return std::min({c[0].*axis, c[1].*axis, c[2].*axis});
        };
        const auto high = [axis](const plain_corners_t& c) {
            return std::max({c[0].*axis, c[1].*axis, c[2].*axis});
        };
        if (low(b) - high(a) > room || low(a) - high(b) > room)
            return true;
    }
    return false;
}

struct plain_vec_t {
    double x, y, z;

    plain_vec_t(double a, double b, double c) : x(a), y(b), z(c) {}
    plain_vec_t(const pos3& from, const pos3& to)
        : x(double{to.x} - from.x), y(double{to.y} - from.y), z(double{to.z} - from.z) {}

    double length() const { return std::sqrt(x * x + y * y + z * z); }
};

inline double plain_dot(const plain_vec_t& a, const plain_vec_t& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline plain_vec_t plain_cross(const plain_vec_t& a, const plain_vec_t& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline plain_vec_t plain_normal(const plain_corners_t& c) {
    return plain_cross({c[0], c[1]}, {c[1], c[2]});
}

/// Whether a piece of the segment longer than the tolerance is inside the triangle or on its outline. The
/// distances from the outline are compared where the segment is beside the triangle.
inline bool plain_overlaps(const plain_corners_t& t, const pos3& p, const pos3& q) {
    const double tolerance = ulk3d::eps;
    const plain_vec_t pq(p, q);
    const double whole = pq.length();
    if (!(whole > tolerance))
        return false;
    const auto place = [&](const pos3& c) { return plain_dot({p, c}, pq) / whole; };
    const double begin = std::max(std::min({place(t[0]), place(t[1]), place(t[2])}), 0.0);
    const double end = std::min(std::max({place(t[0]), place(t[1]), place(t[2])}), whole);
    double from = begin, to = end;
    for (int k = 0; k < 3; ++k) {
        const pos3& a = t[static_cast<std::size_t>(k)];
        const pos3& b = t[static_cast<std::size_t>((k + 1) % 3)];
        const plain_vec_t out = plain_cross({a, b}, plain_normal(t));
        const double at_p = plain_dot(out, {a, p}) / out.length();
        const double slope = plain_dot(out, pq) / (out.length() * whole);
        const double at_begin = at_p + slope * begin, at_end = at_p + slope * end;
        const bool is_along_or_inside = at_begin <= tolerance && at_end <= tolerance;
        if (!is_along_or_inside && at_begin >= 0 && at_end >= 0)
            return false;
        if (!is_along_or_inside && slope < 0)
            from = std::max(from, -at_p / slope);
        if (!is_along_or_inside && !(slope < 0))
            to = std::min(to, -at_p / slope);
    }
    return to - from > tolerance;
}

/// The codes of a triangle's edges 0-1, 1-2, 2-0.
struct plain_codes_t {
    std::array<int, 3> code;
    std::array<ulk3d::crossing_t, 3> crossing;

    plain_codes_t(const plain_corners_t& c, ulk3d::cut_triangle_t& against) {
        for (std::size_t k = 0; k < 3; ++k)
            code[k] = classify_edge(crossing[k], 0, c[k], c[(k + 1) % 3], against);
    }

    int count(int wanted) const {
        return int{code[0] == wanted} + int{code[1] == wanted} + int{code[2] == wanted};
    }
};

/// The corner that a point is at, or -1.
inline int plain_corner(const pos3& p, const plain_corners_t& c) {
    return plain_near(p, c[0]) ? 0 : plain_near(p, c[1]) ? 1 : plain_near(p, c[2]) ? 2 : -1;
}

inline plain_cut_t plain_cut_one(int edge, float t, const pos3& p, const plain_corners_t& victim) {
    return plain_corner(p, victim) >= 0 ? plain_cut_t{} : plain_cut_t{1, edge, t, 0, p, {}};
}

/// Two crossings on the edge `edge` and the one behind it.
inline plain_cut_t plain_cut_two(int edge, float t, const pos3& p, float t_behind, const pos3& p_behind,
                                 const plain_corners_t& victim) {
    const int apex = (edge + 1) % 3;
    const int at = plain_corner(p, victim), at_behind = plain_corner(p_behind, victim);
    if (at == apex || at_behind == apex)
        return {};
    if (at >= 0)
        return plain_cut_one(apex, t_behind, p_behind, victim);
    if (at_behind >= 0)
        return plain_cut_one(edge, t, p, victim);
    return {2, apex, t_behind, t, p_behind, p};
}

/// Two codes of 0.
inline plain_cut_t plain_reverse(const plain_corners_t& cutter, const plain_corners_t& victim) {
    ulk3d::cut_triangle_t plane(victim[0], victim[1], victim[2]);
    if (plane.normal == ulk3d::dir3{})
        return {};
    const plain_codes_t k(cutter, plane);
    if (k.count(-1) > 0 || k.count(3) == 3 || k.count(0) == 3)
        return {};
    if (k.count(2) + k.count(3) + k.count(4) == 2 && (k.count(3) > 0 || k.count(2) == 2))
        return {};
    const ulk3d::triangle_t full(cutter[0], cutter[1], cutter[2]);
    std::array<bool, 3> hit{};
    std::array<float, 3> t{};
    std::array<pos3, 3> p{};
    for (std::size_t e = 0; e < 3; ++e)
        hit[e] = triangle_crossing(full, t[e], p[e], victim[e], victim[(e + 1) % 3]);
    for (int e = 0; e < 3; ++e) {
        const auto a = static_cast<std::size_t>(e), b = static_cast<std::size_t>((e + 1) % 3);
        if (hit[a] && hit[b])
            return plain_cut_two(e, t[a], p[a], t[b], p[b], victim);
    }
    return {};
}

inline plain_cut_t plain_cut_pair(const plain_corners_t& cutter, const plain_corners_t& victim) {
    if (!plain_finite(cutter) || !plain_finite(victim) || plain_apart(cutter, victim, ulk3d::eps))
        return {};
    ulk3d::cut_triangle_t plane(cutter[0], cutter[1], cutter[2]);
    const float d = dot(plane.normal, plane.centroid);
    std::array<float, 3> heights{};
    for (std::size_t n = 0; n < 3; ++n)
        heights[n] = dot(plane.normal, victim[n]);
    if (std::fabs(heights[0] - d) <= ulk3d::eps && std::fabs(heights[1] - d) <= ulk3d::eps &&
        std::fabs(heights[2] - d) <= ulk3d::eps)
        return {};
    const plain_codes_t r(victim, plane);
    if (r.count(-1) > 0 || r.count(0) == 3)
        return {};
    if (r.count(0) == 2)
        return plain_reverse(cutter, victim);
    for (int e = 0; e < 3; ++e) {
        const auto a = static_cast<std::size_t>(e), b = static_cast<std::size_t>((e + 1) % 3);
        const auto c = static_cast<std::size_t>((e + 2) % 3);
        if (r.count(0) == 1 && r.code[c] == 0 &&
            plain_overlaps(cutter, r.crossing[a].point, r.crossing[b].point))
            return plain_cut_two(e, r.crossing[a].t, r.crossing[a].point, r.crossing[b].t,
                                 r.crossing[b].point, victim);
        // Corner c is in the plane.
        if (r.count(0) == 0 && heights[c] == d && plain_overlaps(cutter, victim[c], r.crossing[a].point))
            return plain_cut_one(e, r.crossing[a].t, r.crossing[a].point, victim);
    }
    return {};
}

}  // namespace ulk_test
