#include "support/cut_area.h"

#include <algorithm>
#include <limits>
#include <numbers>
#include <random>

namespace ulk_test {
namespace {

double distance_to_segment(const point_t& p, const point_t& a, const point_t& b) {
    const point_t ab = b - a;
    const double squared = dot(ab, ab);
    const double t = squared > 0 ? std::clamp(dot(p - a, ab) / squared, 0.0, 1.0) : 0;
    return length(p - (a + ab * t));
}

}  // namespace

double distance(const point_t& p, const face_t& f) {
    const point_t normal = cross(f[1] - f[0], f[2] - f[0]);
    bool over_face = dot(normal, normal) > 0;
    for (std::size_t k = 0; k < 3; ++k)
        over_face = over_face && dot(cross(f[(k + 1) % 3] - f[k], p - f[k]), normal) >= 0;
    if (over_face)
        return std::fabs(dot(p - f[0], normal)) / length(normal);
    return std::min({distance_to_segment(p, f[0], f[1]), distance_to_segment(p, f[1], f[2]),
                     distance_to_segment(p, f[2], f[0])});
}

namespace {

/// True when the point is further than `reach` outside the face's bounding box.
bool is_clearly_beyond(const point_t& p, const face_t& f, double reach) {
    const auto apart = [&](double v, double a, double b, double c) {
        return v < std::min({a, b, c}) - reach || v > std::max({a, b, c}) + reach;
    };
    return apart(p.x, f[0].x, f[1].x, f[2].x) || apart(p.y, f[0].y, f[1].y, f[2].y) ||
           apart(p.z, f[0].z, f[1].z, f[2].z);
}

}  // namespace

bool is_within(const point_t& p, std::span<const face_t> faces, double reach) {
    return std::ranges::any_of(
        faces, [&](const face_t& f) { return !is_clearly_beyond(p, f, reach) && distance(p, f) < reach; });
}

bool is_inside(const point_t& p, std::span<const face_t> faces) {
    double sum = 0;
    for (const face_t& f : faces) {
        const point_t a = f[0] - p, b = f[1] - p, c = f[2] - p;
        const double la = length(a), lb = length(b), lc = length(c);
        sum += 2 * std::atan2(dot(a, cross(b, c)),
                              la * lb * lc + dot(a, b) * lc + dot(b, c) * la + dot(c, a) * lb);
    }
    return std::fabs(sum) > 2 * std::numbers::pi;
}

cut_area_t measure_cut(const strip_mesh_t& before, const strip_mesh_t& after, const strip_mesh_t& cutter,
                       std::uint32_t samples, unsigned seed, double tolerance) {
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

double length_of_cracks(const strip_mesh_t& before, const strip_mesh_t& after, const strip_mesh_t& cutter,
                        double tolerance) {
    const std::vector<face_t> faces = faces_of(after), old_faces = faces_of(before),
                              cutter_faces = faces_of(cutter);
    const auto count_within = [&](const point_t& p, const std::vector<face_t>& all) {
        return std::ranges::count_if(all, [&](const face_t& f) {
            return !is_clearly_beyond(p, f, tolerance) && distance(p, f) < tolerance;
        });
    };
    double sum = 0;
    for (const face_t& face : faces)
        for (std::size_t k = 0; k < 3; ++k) {
            const point_t a = face[k], ab = face[(k + 1) % 3] - a;
            for (const double share : {0.25, 0.5, 0.75}) {
                const point_t p = a + ab * share;
                const bool is_open = count_within(p, faces) < 2 && count_within(p, old_faces) >= 2;
                sum += is_open && !is_within(p, cutter_faces, 2 * tolerance) ? length(ab) / 3 : 0;
            }
        }
    return sum;
}

std::size_t count_slivers(const std::vector<face_t>& faces) {
    return static_cast<std::size_t>(std::ranges::count_if(faces, [](const face_t& f) {
        const double longest = std::max({length(f[1] - f[0]), length(f[2] - f[1]), length(f[0] - f[2])});
        return longest > 1000 * (2 * area_of(f) / longest);
    }));
}

}  // namespace ulk_test
