#pragma once

#include <cstdint>
#include <vector>

#include "model/math/records.h"
#include "render/overlays/line_vertex.h"

/// Where the lines of the axis grids lie. Touches no GL.
namespace ulk3d {

/// Distance of the grid lines for a range `extent` wide: the power of five that is at most `extent` and more
/// than a fifth of it. For an extent that is a power of five itself, that power or the one below. 1 for an
/// extent of 0; not-a-number for one that is negative or no number.
float grid_spacing(float extent);

/// The grid lines across one axis of a view, on multiples of their spacing.
struct grid_axis_t {
    float start = 0;          ///< the range that the view shows, in world coordinates
    float end = 0;            ///< not below `start`
    float spacing = 0;        ///< distance of the lines
    float first = 0;          ///< the last multiple of `spacing` at or below `start`
    float last = 0;           ///< the last one at or below `end`
    std::uint32_t count = 0;  ///< lines from `first` to `last`; 0 when the range has no finite extent

    /// Coordinate of line `index`.
    float at(std::uint32_t index) const { return first + static_cast<float>(index) * spacing; }
};
grid_axis_t grid_axis(float start, float end);

/// The axes of the three grids. x, y and z as in the world, whatever their direction on the screen.
struct grid_axes_t {
    grid_axis_t xy_x, xy_y;  ///< front view
    grid_axis_t xz_x, xz_z;  ///< top view
    grid_axis_t zy_z, zy_y;  ///< side view
};

/// What three orthographic views, 2 high and 2 times `aspect` wide in view space, show of the world.
grid_axes_t grid_axes(double aspect, const mtx3w& front_inverse, const mtx3w& side_inverse,
                      const mtx3w& top_inverse);

/// The grids' lines, two vertices each, grey, in the plane through the origin; every line spans the whole
/// range of the other axis, from its start to its end. First come the lines across the first-named axis of
/// the grid. A grid with an axis of no lines has none at all.
std::vector<line_vertex_t> grid_lines_xy(const grid_axes_t& axes);
std::vector<line_vertex_t> grid_lines_xz(const grid_axes_t& axes);
std::vector<line_vertex_t> grid_lines_zy(const grid_axes_t& axes);

}  // namespace ulk3d
