#include "operations/cut/exact_face.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "model/math/tolerance.h"

namespace ulk3d {
namespace {

constexpr double tolerance = eps;

struct vector_t {
    double x, y, z;
};

vector_t between(const pos3& from, const pos3& to) {
    return {double{to.x} - from.x, double{to.y} - from.y, double{to.z} - from.z};
}

vector_t cross(const vector_t& a, const vector_t& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double dot(const vector_t& a, const vector_t& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

double length(const vector_t& a) {
    return std::sqrt(dot(a, a));
}

/// Not normalised.
vector_t normal_of(const corners_t& c) {
    return cross(between(c[0], c[1]), between(c[1], c[2]));
}

/// A range of places along a segment, in units of length.
struct range_t {
    double first, last;
};

/// The part of the segment from p in the direction `along` that is beside the triangle. What the edges look
/// like from further away says more about the rounding of their ends than about them.
range_t part_beside(const corners_t& triangle, const pos3& p, const vector_t& along) {
    const double whole = length(along);
    range_t range{std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
    for (const pos3& corner : triangle) {
        const double place = dot(between(p, corner), along) / whole;
        range = {std::min(range.first, place), std::max(range.last, place)};
    }
    return {std::max(range.first, 0.0), std::min(range.last, whole)};
}

}  // namespace

bool overlaps(const corners_t& triangle, const pos3& p, const pos3& q) {
    const vector_t along = between(p, q);
    const double whole = length(along);
    if (!(whole > tolerance))
        return false;
    const vector_t normal = normal_of(triangle);
    const range_t beside = part_beside(triangle, p, along);
    range_t inside = beside;
    for (std::size_t k = 0; k < 3; ++k) {
        // Distances from the edge's line, positive outside.
        const vector_t outward = cross(between(triangle[k], triangle[(k + 1) % 3]), normal);
        const double at_p = dot(outward, between(triangle[k], p)) / length(outward);
        const double growth = dot(outward, along) / (length(outward) * whole);
        const double at_first = at_p + growth * beside.first;
        const double at_last = at_p + growth * beside.last;
        // A segment along the edge is not shortened by it, whichever side rounding has put it on.
        if (at_first <= tolerance && at_last <= tolerance)
            continue;
        if (at_first >= 0 && at_last >= 0)
            return false;
        const double meeting = -at_p / growth;
        if (growth < 0)
            inside.first = std::max(inside.first, meeting);
        else
            inside.last = std::min(inside.last, meeting);
    }
    return inside.last - inside.first > tolerance;
}

std::optional<int> clear_hit(const corners_t& triangle, const pos3& start) {
    std::array<vector_t, 3> to{};
    for (std::size_t k = 0; k < 3; ++k)
        to[k] = between(start, triangle[k]);
    // Seen from above: twice the areas of the triangles that the point makes with the edges, and of all.
    const std::array areas{to[0].x * to[1].y - to[0].y * to[1].x, to[1].x * to[2].y - to[1].y * to[2].x,
                           to[2].x * to[0].y - to[2].y * to[0].x};
    const double area = areas[0] + areas[1] + areas[2];
    bool is_inside = area != 0;
    for (std::size_t k = 0; k < 3; ++k) {
        const vector_t& a = to[k];
        const vector_t& b = to[(k + 1) % 3];
        const double room = tolerance * std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
        const double inward = area < 0 ? -areas[k] : areas[k];
        if (inward < -room || (area == 0 && inward > room))
            return 0;
        is_inside = is_inside && inward > room;
    }
    // The height of the plane above the point times the area, and that as a distance from the plane.
    const double height = areas[1] * to[0].z + areas[2] * to[1].z + areas[0] * to[2].z;
    const double distance = (area < 0 ? -height : height) / length(normal_of(triangle));
    if (area != 0 && distance < -tolerance)
        return 0;
    if (!is_inside || !(distance > tolerance))
        return std::nullopt;
    return area > 0 ? -1 : 1;
}

int direction_of_common_face(const corners_t& triangle, const pos3& centroid, const corners_t& face) {
    const vector_t normal = normal_of(face);
    const double room = tolerance * length(normal);
    const auto is_in_plane = [&](const pos3& p) {
        return std::fabs(dot(normal, between(face[0], p))) <= room;
    };
    if (!is_in_plane(centroid) || !std::ranges::all_of(triangle, is_in_plane))
        return 0;
    for (std::size_t k = 0; k < 3; ++k) {
        const vector_t outward = cross(between(face[k], face[(k + 1) % 3]), normal);
        if (dot(outward, between(face[k], centroid)) > tolerance * length(outward))
            return 0;
    }
    // A needle beside the face is in its plane by the tolerance, but looks anywhere.
    constexpr double alike = 0.9;
    const vector_t own = normal_of(triangle);
    const double cosine = dot(normal, own) / (length(normal) * length(own));
    if (cosine > alike)
        return 1;
    return cosine < -alike ? -1 : 0;
}

}  // namespace ulk3d
