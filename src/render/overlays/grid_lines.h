#pragma once

#include <cstdint>
#include <vector>

#include "model/math/records.h"
#include "render/overlays/line_vertex.h"

/// Where the lines of the grids lie. Uses no GL.
namespace ulk3d {

/// Spacing of the grid lines for a range of width `extent`: the power of five that is at most `extent` and
/// more than a fifth of it. For an extent that is itself a power of five, that power or, through rounding,
/// the next lower one. 1 for an extent of 0; NaN for one that is negative or NaN.
float grid_spacing(float extent);

/// The grid lines across one axis of a view, at the multiples of their spacing.
struct grid_axis_t {
    float start = 0;          ///< the range that the view shows, in world coordinates
    float end = 0;            ///< not below `start`
    float spacing = 0;        ///< distance between lines
    float first = 0;          ///< the last multiple of `spacing` at or below `start`
    float last = 0;           ///< the last multiple at or below `end`
    std::uint32_t count = 0;  ///< number of lines from `first` to `last`; 0 when the range is not finite

    /// Coordinate of line `index`.
    float at(std::uint32_t index) const { return first + static_cast<float>(index) * spacing; }
};
grid_axis_t grid_axis(float start, float end);

/// The axes of the three grids. x, y and z are those of the world, whatever their direction on the screen.
struct grid_axes_t {
    grid_axis_t xy_x, xy_y;  ///< front view
    grid_axis_t xz_x, xz_z;  ///< top view
    grid_axis_t zy_z, zy_y;  ///< side view
};

/// The ranges of the world shown by three orthographic views of height 2 and width 2 times `aspect` in view
/// space.
grid_axes_t grid_axes(double aspect, const mtx3w& front_inverse, const mtx3w& side_inverse,
                      const mtx3w& top_inverse);

/// The lines of each grid, grey, two vertices per line, in a plane through the origin. Every line spans the
/// whole range of the other axis, from start to end. The lines across the axis named first come first. If one
/// axis has no lines the grid has none at all.
std::vector<line_vertex_t> grid_lines_xy(const grid_axes_t& axes);
std::vector<line_vertex_t> grid_lines_xz(const grid_axes_t& axes);
std::vector<line_vertex_t> grid_lines_zy(const grid_axes_t& axes);

}  // namespace ulk3d
