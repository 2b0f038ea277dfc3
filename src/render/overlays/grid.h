#pragma once

#include "model/math/records.h"
#include "render/gl/array.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {

/// The grids of the three orthographic views, in planes through the origin. The spacing of their lines
/// follows the zoom (grid_lines.h).
///
/// All grids share one program. Can be constructed without a context; everything else but `set_size` needs a
/// current one. All messages go to the standard error stream.
class grid_t {
  public:
    grid_t() = default;
    grid_t(const grid_t&) = delete;
    grid_t& operator=(const grid_t&) = delete;

    /// Compiles and links the shared program in the first call; later calls do nothing. Always returns true.
    /// A file with the name of a source, in the working directory or else in `base_directory` (null for none;
    /// ends with its separator), replaces the built-in source. A source that does not compile or link ends
    /// the process with exit status 1, after a line and GL's log.
    static bool init(const char* base_directory);

    /// Sets the size of one viewport in pixels for the next `rebuild`.
    void set_size(float view_width, float view_height);

    /// Makes the lines for the ranges that the views show, computed from the inverses of their matrices. A
    /// view whose range is not finite gets no lines. False, after a line, when an array can not be allocated:
    /// its view then has no lines, and those behind it keep the old ones.
    [[nodiscard]] bool rebuild(const mtx3w& front_inverse, const mtx3w& side_inverse,
                               const mtx3w& top_inverse);

    /// Draw the grids of the front, the top and the side view; they do nothing before the first `rebuild`.
    void draw_xy(const mtx3w& Projection, const mtx3w& Modelview) const;
    void draw_xz(const mtx3w& Projection, const mtx3w& Modelview) const;
    void draw_zy(const mtx3w& Projection, const mtx3w& Modelview) const;

    vertex_array_ref vertex_xy, vertex_xz, vertex_zy;  ///< the arrays at locations 0 and 1
    array_t array_xy, array_xz, array_zy;              ///< line_vertex_t records, two per line
    float width = 0;
    float height = 0;
};

}  // namespace ulk3d
