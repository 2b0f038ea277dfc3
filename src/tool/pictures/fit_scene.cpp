#include "tool/pictures/fit_scene.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "model/polygon/strip_walk.h"
#include "render/gl/mapped_span.h"

namespace ulktool {

using ulk3d::camera_t;
using ulk3d::matrix_pair_t;
using ulk3d::model_entry_t;
using ulk3d::model_kind_t;
using ulk3d::model_list_t;
using ulk3d::mtx3w;
using ulk3d::pos3;
using ulk3d::view_layout_t;

namespace {

/// What of half a view the scene may fill.
constexpr double filled = 0.95;

/// Coordinates may be as large as single precision goes, and their squares larger.
using point_t = std::array<double, 3>;

struct range_t {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void add(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    double middle() const { return low <= high ? (low + high) / 2 : 0; }
    double half() const { return low <= high ? (high - low) / 2 : 0; }
};

using box_t = std::array<range_t, 3>;

void add(box_t& box, const point_t& p) {
    for (std::size_t axis = 0; axis < 3; ++axis)
        box[axis].add(p[axis]);
}

template <class Visit>
void visit_point(const pos3& p, Visit&& visit) {
    if (std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z))
        visit(point_t{p.x, p.y, p.z});
}

template <class Record, class Visit>
void visit_records(const ulk3d::array_t& array, Visit&& visit) {
    if (array.element_count() <= 0)
        return;
    const ulk3d::array_span<const Record> records(array);
    for (const Record& record : records.span())
        visit_point(record.position, visit);
}

template <class Visit>
void visit_points(const model_entry_t& entry, Visit&& visit) {
    if (entry.kind == model_kind_t::nurbs)
        visit_records<ulk3d::control_point_t>(entry.nurbs.ctlpts, visit);
    else
        visit_records<ulk3d::vertex_t>(entry.polygon.vertices, visit);
}

/// The corners of the triangles.
template <class Visit>
void visit_surface(const model_entry_t& entry, Visit&& visit) {
    const ulk3d::polygon_t& polygon = entry.polygon;
    if (polygon.vertex_count() == 0 || polygon.element_count() == 0)
        return;
    const ulk3d::const_index_span elements(polygon.elements);
    const ulk3d::array_span<const ulk3d::vertex_t> vertices(polygon.vertices);
    ulk3d::walk_strips(elements.span(), vertices.size(), [&](const ulk3d::strip_triangle_t& triangle) {
        for (const std::uint32_t corner : {triangle.a, triangle.b, triangle.c})
            visit_point(vertices[corner].position, visit);
    });
}

/// All that the perspective view shows.
template <class Visit>
void visit_shown(const model_list_t& models, bool with_points, Visit&& visit) {
    for (const auto& entry : models) {
        visit_surface(*entry, visit);
        if (with_points)
            visit_points(*entry, visit);
    }
}

/// Moves by -`centre`, turns, and then scales by `factor` and moves by `shift`: an affine matrix for row
/// vectors that takes numbers of any size, as none of them is moved in single precision before it is small.
mtx3w placing(const point_t& centre, const mtx3w& turn, double factor, const point_t& shift) {
    mtx3w matrix = ulk3d::mtx_identity;
    for (std::size_t column = 0; column < 3; ++column) {
        double moved = shift[column];
        for (std::size_t row = 0; row < 3; ++row) {
            const double scaled = static_cast<double>(turn[row * 4 + column]) * factor;
            matrix[row * 4 + column] = static_cast<float>(scaled);
            moved -= centre[row] * scaled;
        }
        matrix[12 + column] = static_cast<float>(moved);
    }
    return matrix;
}

point_t turned(const point_t& p, const mtx3w& turn) {
    point_t result{};
    for (std::size_t column = 0; column < 3; ++column)
        for (std::size_t row = 0; row < 3; ++row)
            result[column] += p[row] * static_cast<double>(turn[row * 4 + column]);
    return result;
}

/// The tangents of half the opening of the perspective view, to the right and to the top.
struct opening_t {
    double x, y;
};

/// A frustum matrix scales by the reciprocals of these.
opening_t opening_of(const camera_t& camera) {
    const mtx3w& frustum = camera.perspective.matrix;
    return {filled / static_cast<double>(frustum[0]), filled / static_cast<double>(frustum[5])};
}

/// The planes of the two edges of the picture along one axis, pushed outwards until no point lies beyond
/// them.
struct edges_t {
    double right = -std::numeric_limits<double>::infinity();
    double left = -std::numeric_limits<double>::infinity();

    void add(double across, double depth, double tangent) {
        right = std::max(right, across + tangent * depth);
        left = std::max(left, -across + tangent * depth);
    }
    /// Where both planes meet: how far to the side, and how far in front of the origin.
    double side() const { return (right - left) / 2; }
    double distance(double tangent) const { return (right + left) / 2 / tangent; }
};

/// The view from the eye that sees all points, which are in `box`, from as near as it can.
matrix_pair_t fitted_view(const model_list_t& models, const box_t& box, const opening_t& opening,
                          const mtx3w& turn, bool with_points) {
    const point_t centre{box[0].middle(), box[1].middle(), box[2].middle()};
    const double size = std::max({box[0].half(), box[1].half(), box[2].half()});
    const double unit = size > 0 ? size : 1;

    edges_t horizontal, vertical;
    double front = 0;
    visit_shown(models, with_points, [&](const point_t& p) {
        const point_t from_centre{(p[0] - centre[0]) / unit, (p[1] - centre[1]) / unit,
                                  (p[2] - centre[2]) / unit};
        const point_t seen = turned(from_centre, turn);
        horizontal.add(seen[0], seen[2], opening.x);
        vertical.add(seen[1], seen[2], opening.y);
        front = std::max(front, seen[2]);
    });
    // A single point.
    if (!(size > 0))
        horizontal = vertical = {1, 1};
    // The nearest point is put at a distance of 1 or a little more, where the depth buffer is fine, and never
    // as near as it could be seen without being in front of the eye.
    constexpr double least = 0.05;
    const double distance =
        std::max({horizontal.distance(opening.x), vertical.distance(opening.y), front + least});
    const double factor = 1 / (distance - front);
    const point_t shift{-horizontal.side() * factor, -vertical.side() * factor, -distance * factor};
    return {placing(centre, turn, factor / unit, shift), transpose(turn)};
}

/// The scale and the move that the orthographic views share. They see x and y, z and y, and x and z.
matrix_pair_t fitted_plan(const model_list_t& models, double aspect) {
    box_t box;
    for (const auto& entry : models)
        visit_points(*entry, [&box](const point_t& p) { add(box, p); });
    const point_t centre{box[0].middle(), box[1].middle(), box[2].middle()};
    const double across = std::max(box[0].half(), box[2].half());
    const double upwards = std::max(box[1].half(), box[2].half());
    // The views see no deeper than this before and behind the centre.
    constexpr double deepest = 9;
    const double deep = std::max({box[0].half(), box[1].half(), box[2].half()});
    const double needed = std::max({across / (aspect * filled), upwards / filled, deep / deepest});
    const double factor = needed > 0 ? 1 / needed : 1;
    const auto back = static_cast<float>(1 / factor);
    mtx3w inverse = ulk3d::scale(back, back, back);
    for (std::size_t axis = 0; axis < 3; ++axis)
        inverse[12 + axis] = static_cast<float>(centre[axis]);
    return {placing(centre, ulk3d::mtx_identity, factor, {}), inverse};
}

}  // namespace

bool fit_scene(camera_t& camera, const view_layout_t& layout, const model_list_t& models, const mtx3w& turn,
               bool with_points) {
    box_t box;
    visit_shown(models, with_points, [&box](const point_t& p) { add(box, p); });
    if (box[0].low > box[0].high)
        return false;
    camera.view = fitted_view(models, box, opening_of(camera), turn, with_points);
    camera.fit = fitted_plan(models, layout.aspect());
    return true;
}

}  // namespace ulktool
