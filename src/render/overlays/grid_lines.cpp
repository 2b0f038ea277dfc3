#include "render/overlays/grid_lines.h"

#include <cmath>

#include "model/math/matrices.h"
#include "model/math/projections.h"

namespace ulk3d {

namespace {

constexpr col3a grid_color{0.5F, 0.5F, 0.5F, 1.0F};
constexpr float log5_of_10 = 1.4306766F;

/// A range has up to 6 lines, or up to 17 through rounding when it is hardly wider than the steps between
/// floats at that place. A higher count than this bound is not meaningful.
constexpr float most_lines = 32;

pos3 unprojected(const mtx3w& m, float x, float y) {
    const vec3w place = vec_times_mtx({x, y, 0, 1}, m);
    return {place.x, place.y, place.z};
}

/// The lines across axis `a`, then those across `b`. `place` turns coordinates on `a` and `b` into a
/// position.
template <class Place>
std::vector<line_vertex_t> lines_across(const grid_axis_t& a, const grid_axis_t& b, Place place) {
    std::vector<line_vertex_t> lines;
    if (a.count == 0 || b.count == 0)
        return lines;
    lines.reserve(2 * (std::size_t{a.count} + b.count));
    for (std::uint32_t i = 0; i < a.count; ++i) {
        lines.push_back({place(a.at(i), b.start), grid_color});
        lines.push_back({place(a.at(i), b.end), grid_color});
    }
    for (std::uint32_t i = 0; i < b.count; ++i) {
        lines.push_back({place(a.start, b.at(i)), grid_color});
        lines.push_back({place(a.end, b.at(i)), grid_color});
    }
    return lines;
}

}  // namespace

float grid_spacing(float extent) {
    const auto decades = static_cast<float>(std::log10(static_cast<double>(extent)));
    const float power = std::floor(decades * log5_of_10);
    const auto spacing = static_cast<float>(std::pow(5.0, static_cast<double>(power)));
    return spacing == 0 ? 1 : spacing;
}

grid_axis_t grid_axis(float start, float end) {
    grid_axis_t axis{.start = start, .end = end};
    const float extent = end - start;
    if (!std::isfinite(extent) || extent < 0)
        return axis;
    axis.spacing = grid_spacing(extent);
    axis.first = std::floor(start / axis.spacing) * axis.spacing;
    axis.last = std::floor(end / axis.spacing) * axis.spacing;
    const float count = (axis.last - axis.first) / axis.spacing + 0.5F + 1.0F;
    if (count >= 1 && count <= most_lines)
        axis.count = static_cast<std::uint32_t>(count);
    return axis;
}

grid_axes_t grid_axes(double aspect, const mtx3w& front_inverse, const mtx3w& side_inverse,
                      const mtx3w& top_inverse) {
    const mtx3w inverse_projection = ortho_inverse({-aspect, aspect, -1, 1, 1, -1});
    const mtx3w front = inverse_projection * front_inverse;
    const mtx3w top = inverse_projection * top_inverse;
    const mtx3w side = inverse_projection * side_inverse;
    // On the screen the world's z increases downwards in the top view and to the left in the side view. Its
    // ranges are taken in that direction, so that start is the smaller value here too.
    return {
        .xy_x = grid_axis(unprojected(front, -1, 0).x, unprojected(front, 1, 0).x),
        .xy_y = grid_axis(unprojected(front, 0, -1).y, unprojected(front, 0, 1).y),
        .xz_x = grid_axis(unprojected(top, -1, 0).x, unprojected(top, 1, 0).x),
        .xz_z = grid_axis(unprojected(top, 0, 1).z, unprojected(top, 0, -1).z),
        .zy_z = grid_axis(unprojected(side, 1, 0).z, unprojected(side, -1, 0).z),
        .zy_y = grid_axis(unprojected(side, 0, -1).y, unprojected(side, 0, 1).y),
    };
}

std::vector<line_vertex_t> grid_lines_xy(const grid_axes_t& axes) {
    return lines_across(axes.xy_x, axes.xy_y, [](float x, float y) { return pos3{x, y, 0}; });
}

std::vector<line_vertex_t> grid_lines_xz(const grid_axes_t& axes) {
    return lines_across(axes.xz_x, axes.xz_z, [](float x, float z) { return pos3{x, 0, z}; });
}

std::vector<line_vertex_t> grid_lines_zy(const grid_axes_t& axes) {
    return lines_across(axes.zy_z, axes.zy_y, [](float z, float y) { return pos3{0, y, z}; });
}

}  // namespace ulk3d
