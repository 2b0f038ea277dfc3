#include "support/exact_volume.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ulk_test {
namespace {

constexpr double on_plane = 1e-12;

double volume_of(const body_t& body) {
    double sum = 0;
    for (const std::vector<point_t>& face : body)
        for (std::size_t n = 2; n < face.size(); ++n)
            sum += dot(face[0], cross(face[n - 1], face[n])) / 6;
    return sum;
}

double area_of(const std::vector<point_t>& polygon) {
    point_t sum;
    for (std::size_t n = 2; n < polygon.size(); ++n)
        sum = sum + cross(polygon[n - 1] - polygon[0], polygon[n] - polygon[0]) * 0.5;
    return length(sum);
}

void add_once(std::vector<point_t>& points, const point_t& p) {
    if (std::ranges::none_of(points, [&](const point_t& q) { return length(p - q) <= on_plane; }))
        points.push_back(p);
}

/// The face that a cut has, of the points on its plane.
std::vector<point_t> cap_of(std::vector<point_t> points, const half_space_t& side) {
    point_t middle;
    for (const point_t& p : points)
        middle = middle + p * (1 / static_cast<double>(points.size()));
    const point_t across = std::fabs(side.normal.x) < 0.5 ? point_t{1, 0, 0} : point_t{0, 1, 0};
    const point_t u = cross(side.normal, across), v = cross(side.normal, u);
    std::ranges::sort(points, {},
                      [&](const point_t& p) { return std::atan2(dot(p - middle, v), dot(p - middle, u)); });
    return points;
}

/// What is left of a body when convex cutters are taken out, which is what is left without the first less
/// what of that is inside of it.
double volume_without(const body_t& body, std::span<const std::vector<half_space_t>> cutters) {
    if (body.empty())
        return 0;
    if (cutters.empty())
        return volume_of(body);
    body_t inside = body;
    for (const half_space_t& side : cutters[0])
        inside = clipped(inside, side);
    return volume_without(body, cutters.subspan(1)) - volume_without(inside, cutters.subspan(1));
}

}  // namespace

double volume_of(std::span<const face_t> faces) {
    double sum = 0;
    for (const face_t& f : faces)
        sum += dot(f[0], cross(f[1], f[2])) / 6;
    return sum;
}

double volume_of(const strip_mesh_t& mesh) {
    return volume_of(faces_of(mesh));
}

half_space_t::half_space_t(const face_t& f) {
    const point_t across = cross(f[1] - f[0], f[2] - f[0]);
    normal = across * (1 / length(across));
    distance = dot(normal, f[0]);
}

body_t clipped(const body_t& body, const half_space_t& side) {
    body_t result;
    std::vector<point_t> cut;
    const auto height = [&](const point_t& p) { return dot(side.normal, p) - side.distance; };
    for (const std::vector<point_t>& face : body) {
        std::vector<point_t> kept;
        bool is_in_plane = true;
        for (std::size_t n = 0; n < face.size(); ++n) {
            const point_t &p = face[n], &q = face[(n + 1) % face.size()];
            const double a = height(p), b = height(q);
            is_in_plane = is_in_plane && std::fabs(a) <= on_plane;
            if (a <= on_plane)
                kept.push_back(p);
            if (std::fabs(a) <= on_plane)
                add_once(cut, p);
            if (std::min(a, b) < -on_plane && std::max(a, b) > on_plane) {
                kept.push_back(p + (q - p) * (a / (a - b)));
                add_once(cut, kept.back());
            }
        }
        // One in the plane becomes part of the cut's own face.
        if (!is_in_plane && area_of(kept) > 1e-13)
            result.push_back(kept);
    }
    if (cut.size() >= 3)
        result.push_back(cap_of(cut, side));
    // What touches the plane from outside has no volume.
    const bool has_inside = std::ranges::any_of(result, [&](const std::vector<point_t>& face) {
        return std::ranges::any_of(face, [&](const point_t& p) { return height(p) < -on_plane; });
    });
    return has_inside ? result : body_t{};
}

namespace {

struct tetrahedron_t {
    std::array<point_t, 4> corners;  ///< the first three run counter-clockwise as seen from outside
    double sign;
};

/// The tetrahedra over the faces of a closed surface. Those over faces that look away from their common
/// corner count positive, the others negative: their sum is what the surface encloses.
std::vector<tetrahedron_t> tetrahedra_of(const strip_mesh_t& mesh) {
    const std::vector<face_t> faces = faces_of(mesh);
    const point_t apex = faces.front()[0] * 0.37 + faces[faces.size() / 2][1] * 0.22 + faces.back()[2] * 0.41;
    std::vector<tetrahedron_t> all;
    for (const auto& [a, b, c] : faces) {
        const double sixfold = dot(a - apex, cross(b - apex, c - apex));
        if (std::fabs(sixfold) > 1e-15)
            all.push_back({{a, sixfold > 0 ? b : c, sixfold > 0 ? c : b, apex}, sixfold > 0 ? 1.0 : -1.0});
    }
    return all;
}

std::array<face_t, 4> faces_of_one(const tetrahedron_t& tetrahedron) {
    const auto& [a, b, c, d] = tetrahedron.corners;
    return {{{a, b, c}, {d, b, a}, {d, c, b}, {d, a, c}}};
}

body_t body_of(const tetrahedron_t& tetrahedron) {
    body_t body;
    for (const auto& [a, b, c] : faces_of_one(tetrahedron))
        body.push_back({a, b, c});
    return body;
}

}  // namespace

namespace {

/// The planes of a convex body's faces. Triangles of one face have planes that differ by the rounding of
/// their corners, and a cut along the line in which these meet would be anywhere: the first one counts.
std::vector<half_space_t> sides_of(const strip_mesh_t& cutter) {
    std::vector<half_space_t> sides;
    for (const face_t& face : faces_of(cutter)) {
        const half_space_t side(face);
        const bool is_known = std::ranges::any_of(sides, [&](const half_space_t& other) {
            return length(other.normal - side.normal) < 1e-5 &&
                   std::fabs(other.distance - side.distance) < 1e-5;
        });
        if (!is_known)
            sides.push_back(side);
    }
    return sides;
}

}  // namespace

double volume_without(const strip_mesh_t& victim, std::span<const strip_mesh_t> cutters) {
    std::vector<std::vector<half_space_t>> sides;
    for (const strip_mesh_t& cutter : cutters)
        sides.push_back(sides_of(cutter));
    double sum = 0;
    for (const tetrahedron_t& part : tetrahedra_of(victim))
        sum += part.sign * volume_without(body_of(part), sides);
    return sum;
}

double volume_of_both(const strip_mesh_t& a, const strip_mesh_t& b) {
    double sum = 0;
    const std::vector<tetrahedron_t> parts_of_b = tetrahedra_of(b);
    for (const tetrahedron_t& part_of_a : tetrahedra_of(a))
        for (const tetrahedron_t& part_of_b : parts_of_b) {
            body_t inside = body_of(part_of_a);
            for (const face_t& face : faces_of_one(part_of_b))
                if (!inside.empty())
                    inside = clipped(inside, half_space_t(face));
            sum += part_of_a.sign * part_of_b.sign * volume_of(inside);
        }
    return sum;
}

}  // namespace ulk_test
