#include "operations/cut/inside_test.h"

#include <algorithm>
#include <array>
#include <limits>

#include "model/math/vectors.h"
#include "model/polygon/strip_walk.h"
#include "operations/cut/exact_face.h"
#include "operations/cut/reach_codes.h"

namespace ulk3d {
namespace {

/// Where rays end in unit coordinates: clearly above all models. A ray that ended at the cutter's highest z
/// would meet a level top or pass below it, depending on how the plane of the top was rounded, and points
/// below it would count as inside or outside by chance.
constexpr float ray_end = 2;

/// The triangles over or in a box that have an area and are finite.
std::vector<corners_t> triangles_over(box3 box, const strip_mesh_t& mesh, const unit_space_t& space) {
    box.high.z = std::numeric_limits<float>::infinity();
    const reach_codes_t codes(mesh.vertices, box);
    std::vector<corners_t> triangles;
    const auto position = [&](std::uint32_t index) { return space.to_unit(mesh.vertices[index].position); };
    walk_strips(mesh.elements, mesh.vertices.size(), [&](const strip_triangle_t& t) {
        if (!codes.may_meet(t.a, t.b, t.c))
            return;
        const corners_t corners{position(t.a), position(t.b), position(t.c)};
        if (are_finite(corners) && unit_face_normal(corners[0], corners[1], corners[2]) != dir3{})
            triangles.push_back(corners);
    });
    return triangles;
}

std::vector<box3> boxes_of(std::span<const corners_t> triangles) {
    std::vector<box3> boxes;
    boxes.reserve(triangles.size());
    for (const corners_t& corners : triangles)
        boxes.push_back(box_of(corners));
    return boxes;
}

/// The centroid, and points between it and the corners.
std::array<pos3, 7> inner_points(const corners_t& triangle) {
    const pos3 centroid = (triangle[0] + triangle[1] + triangle[2]) * 0.33333334F;
    std::array<pos3, 7> points{centroid};
    for (std::size_t k = 0; k < 3; ++k) {
        points[1 + k] = centroid + (triangle[k] - centroid) * 0.3F;
        points[4 + k] = centroid + (triangle[k] - centroid) * 0.7F;
    }
    return points;
}

}  // namespace

void insert_hit(std::vector<crossing_hit_t>& hits, const crossing_hit_t& hit) {
    const auto place = std::ranges::upper_bound(hits, hit.t, {}, &crossing_hit_t::t);
    hits.insert(place, hit);
}

int sum_of_hits(std::span<const crossing_hit_t> hits) {
    int sum = 0;
    const crossing_hit_t* corner = nullptr;
    for (const crossing_hit_t& hit : hits) {
        const int direction = hit.side == 0 ? 1 : -1;
        if (hit.kind == edge_on_outline)
            sum += direction;
        else if (hit.kind == edge_inside)
            sum += 2 * direction;
        else if (corner == nullptr || (hit.t == corner->t && hit.slope < corner->slope))
            // The triangles around a corner give it slightly different t: a hit above the first is most
            // likely the same corner again, and is not counted.
            corner = &hit;
    }
    if (corner != nullptr)
        sum += corner->side == 0 ? 2 : -2;
    return sum;
}

inside_test_t::inside_test_t(const strip_mesh_t& cutter, const unit_space_t& space, const box3& victim_box)
    : triangles(triangles_over(space.widened(victim_box, 4 * double{eps}), cutter, space)),
      boxes(boxes_of(triangles)),
      grid(boxes, eps) {}

bool inside_test_t::is_inside(const corners_t& triangle) {
    const std::array<pos3, 7> points = inner_points(triangle);
    if (const int direction = direction_of_common_faces(triangle, points[0]))
        return direction > 0;
    return is_between_faces(points);
}

bool inside_test_t::is_inside_and_not_on_it(const corners_t& triangle) {
    const std::array<pos3, 7> points = inner_points(triangle);
    return !is_on_face(triangle, points[0]) && is_between_faces(points);
}

bool inside_test_t::is_on_face(const corners_t& triangle, const pos3& centroid) {
    return std::ranges::any_of(grid.numbers_at(centroid.x, centroid.y), [&](std::uint32_t number) {
        return is_on_ray(number, centroid) &&
               direction_of_common_face(triangle, centroid, triangles[number]) != 0;
    });
}

/// By the first clear ray from one of the points, or else by the sum from the first one.
bool inside_test_t::is_between_faces(const std::array<pos3, 7>& points) {
    for (const pos3& start : points)
        if (int sum = 0; sum_of_clear_hits(start, sum))
            return sum < 0;
    return sum_of_all_hits(points[0]) < 0;
}

/// How many of the cutter's triangles under the centroid, in the triangle's plane, look the same way, less
/// those that look the opposite way.
int inside_test_t::direction_of_common_faces(const corners_t& triangle, const pos3& centroid) {
    int sum = 0;
    for (const std::uint32_t number : grid.numbers_at(centroid.x, centroid.y))
        if (is_on_ray(number, centroid))
            sum += direction_of_common_face(triangle, centroid, triangles[number]);
    return sum;
}

/// Returns whether no triangle is met at its outline, and the sum of those that are met inside.
bool inside_test_t::sum_of_clear_hits(const pos3& start, int& sum) {
    sum = 0;
    for (const std::uint32_t number : grid.numbers_at(start.x, start.y)) {
        if (!is_on_ray(number, start))
            continue;
        const std::optional<int> hit = clear_hit(triangles[number], start);
        if (!hit)
            return false;
        sum += *hit;
    }
    return true;
}

/// The sum with hits at outlines and corners.
int inside_test_t::sum_of_all_hits(const pos3& start) {
    const pos3 end{start.x, start.y, ray_end};
    hits.clear();
    for (const std::uint32_t number : grid.numbers_at(start.x, start.y)) {
        if (!is_on_ray(number, start))
            continue;
        const auto& [a, b, c] = triangles[number];
        cut_triangle_t triangle(a, b, c);
        crossing_t crossing;
        const int code = classify_edge(crossing, 6, start, end, triangle);
        if (code < edge_at_corner || code > edge_inside)
            continue;
        const bool at_corner = code == edge_at_corner;
        const float slope = at_corner ? dot(triangle.normal, normalize(start - crossing.point)) : 0;
        insert_hit(hits, {crossing.t, static_cast<std::uint32_t>(code),
                          static_cast<std::uint8_t>(crossing.side), slope});
    }
    return sum_of_hits(hits);
}

/// Whether the ray meets a triangle's box, up to the tolerance.
bool inside_test_t::is_on_ray(std::uint32_t number, const pos3& start) const {
    const auto& [low, high] = boxes[number];
    return start.x >= low.x - eps && start.x <= high.x + eps && start.y >= low.y - eps &&
           start.y <= high.y + eps && start.z <= high.z + eps;
}

}  // namespace ulk3d
