#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <span>
#include <vector>

#include "model/polygon/strip_walk.h"
#include "support/cut_meshes.h"

/// Measures by sampling how well a cut does what it should: remove what is inside the cutter and keep
/// everything else. Computed in double precision, with methods other than those of the cut.
namespace ulk_test {

struct point_t {
    double x = 0, y = 0, z = 0;

    friend point_t operator+(const point_t& a, const point_t& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend point_t operator-(const point_t& a, const point_t& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend point_t operator*(const point_t& a, double f) { return {a.x * f, a.y * f, a.z * f}; }
};

inline double dot(const point_t& a, const point_t& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline point_t cross(const point_t& a, const point_t& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline double length(const point_t& a) {
    return std::sqrt(dot(a, a));
}

using face_t = std::array<point_t, 3>;

inline std::vector<face_t> faces_of(const strip_mesh_t& mesh) {
    std::vector<face_t> faces;
    const auto point = [&](std::uint32_t index) {
        const pos3& p = mesh.vertices[index].position;
        return point_t{p.x, p.y, p.z};
    };
    ulk3d::walk_strips(mesh.elements, mesh.vertices.size(), [&](const ulk3d::strip_triangle_t& t) {
        faces.push_back({point(t.a), point(t.b), point(t.c)});
    });
    return faces;
}

inline double area_of(const face_t& f) {
    return length(cross(f[1] - f[0], f[2] - f[0])) / 2;
}

inline double area_of(const strip_mesh_t& mesh) {
    double sum = 0;
    for (const face_t& face : faces_of(mesh))
        sum += area_of(face);
    return sum;
}

inline double distance_to_segment(const point_t& p, const point_t& a, const point_t& b) {
    const point_t ab = b - a;
    const double squared = dot(ab, ab);
    const double t = squared > 0 ? std::clamp(dot(p - a, ab) / squared, 0.0, 1.0) : 0;
    return length(p - (a + ab * t));
}

inline double distance(const point_t& p, const face_t& f) {
    const point_t normal = cross(f[1] - f[0], f[2] - f[0]);
    bool over_face = dot(normal, normal) > 0;
    for (std::size_t k = 0; k < 3; ++k)
        over_face = over_face && dot(cross(f[(k + 1) % 3] - f[k], p - f[k]), normal) >= 0;
    if (over_face)
        return std::fabs(dot(p - f[0], normal)) / length(normal);
    return std::min({distance_to_segment(p, f[0], f[1]), distance_to_segment(p, f[1], f[2]),
                     distance_to_segment(p, f[2], f[0])});
}

/// True when the point is further than `reach` outside the face's bounding box.
inline bool is_clearly_beyond(const point_t& p, const face_t& f, double reach) {
    const auto apart = [&](double v, double a, double b, double c) {
        return v < std::min({a, b, c}) - reach || v > std::max({a, b, c}) + reach;
    };
    return apart(p.x, f[0].x, f[1].x, f[2].x) || apart(p.y, f[0].y, f[1].y, f[2].y) ||
           apart(p.z, f[0].z, f[1].z, f[2].z);
}

inline bool is_within(const point_t& p, std::span<const face_t> faces, double reach) {
    return std::ranges::any_of(
        faces, [&](const face_t& f) { return !is_clearly_beyond(p, f, reach) && distance(p, f) < reach; });
}

/// Tests the winding number, computed as the sum of the solid angles of all faces.
inline bool is_inside(const point_t& p, std::span<const face_t> faces) {
    double sum = 0;
    for (const face_t& f : faces) {
        const point_t a = f[0] - p, b = f[1] - p, c = f[2] - p;
        const double la = length(a), lb = length(b), lc = length(c);
        sum += 2 * std::atan2(dot(a, cross(b, c)),
                              la * lb * lc + dot(a, b) * lc + dot(b, c) * la + dot(c, a) * lb);
    }
    return std::fabs(sum) > 2 * std::numbers::pi;
}

/// Estimated areas.
struct cut_area_t {
    double touched = 0;       ///< of the victim's triangles that extend into the cutter or have lost area
    double left_inside = 0;   ///< inside the cutter, but still there
    double lost_outside = 0;  ///< outside the cutter, but gone

    cut_area_t& operator+=(const cut_area_t& other) {
        touched += other.touched;
        left_inside += other.left_inside;
        lost_outside += other.lost_outside;
        return *this;
    }
};

/// Tests `samples` random points of each triangle of the victim. Points closer to the cutter's surface than
/// the cut's tolerance are skipped, since there both answers are right.
inline cut_area_t measure_cut(const strip_mesh_t& before, const strip_mesh_t& after,
                              const strip_mesh_t& cutter, std::uint32_t samples, unsigned seed) {
    constexpr double tolerance = 1e-4;
    const std::vector<face_t> remaining = faces_of(after);
    const std::vector<face_t> cutter_faces = faces_of(cutter);
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(0, 1);
    cut_area_t sum;
    for (const face_t& face : faces_of(before)) {
        const double share = area_of(face) / samples;
        bool touched = false;
        for (std::uint32_t n = 0; n < samples; ++n) {
            double u = unit(random), v = unit(random);
            if (u + v > 1) {
                u = 1 - u;
                v = 1 - v;
            }
            const point_t p = face[0] + (face[1] - face[0]) * u + (face[2] - face[0]) * v;
            if (is_within(p, cutter_faces, tolerance))
                continue;
            const bool inside = is_inside(p, cutter_faces);
            const bool is_there = is_within(p, remaining, tolerance / 4);
            touched = touched || inside || !is_there;
            sum.left_inside += inside && is_there ? share : 0;
            sum.lost_outside += !inside && !is_there ? share : 0;
        }
        sum.touched += touched ? area_of(face) : 0;
    }
    return sum;
}

}  // namespace ulk_test
