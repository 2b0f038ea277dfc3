#pragma once

#include <algorithm>
#include <array>
#include <cmath>
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

double distance(const point_t& p, const face_t& f);

/// True when the point is nearer than `reach` to one of the faces.
bool is_within(const point_t& p, std::span<const face_t> faces, double reach);

/// Tests the winding number, computed as the sum of the solid angles of all faces.
bool is_inside(const point_t& p, std::span<const face_t> faces);

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
/// the tolerance are skipped, since there both answers are right.
cut_area_t measure_cut(const strip_mesh_t& before, const strip_mesh_t& after, const strip_mesh_t& cutter,
                       std::uint32_t samples, unsigned seed, double tolerance = 1e-4);

/// The length of edges of the result that have no neighbour, though they are away from the cutter and the
/// victim has no open edge there: seams that the cut has torn.
double length_of_cracks(const strip_mesh_t& before, const strip_mesh_t& after, const strip_mesh_t& cutter,
                        double tolerance);

/// How many faces have a longest side of more than 1,000 times their height.
std::size_t count_slivers(const std::vector<face_t>& faces);

}  // namespace ulk_test
