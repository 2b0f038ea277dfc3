#pragma once

#include "model/math/records.h"
#include "render/gl/array.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {

/// The axis grids of the three orthographic views, in planes through the origin. The distance of their lines
/// follows the zoom (grid_lines.h).
///
/// All grids share one program. Can be constructed without a context; everything but `set_size` needs it
/// current. All printing goes to the standard error stream.
class grid_t {
  public:
    grid_t() = default;
    grid_t(const grid_t&) = delete;
    grid_t& operator=(const grid_t&) = delete;

    /// Compiles and links the shared program at the first call; later calls only count. True. Files in the
    /// working directory or in `base_directory` (null for none; ends with its separator) replace the sources.
    /// A source that does not compile or link ends the process with exit status 1, after a line and GL's log.
    static bool init(const char* base_directory);

    /// Takes the size of one viewport in pixels, for the next `rebuild`.
    void set_size(float view_width, float view_height);

    /// Makes the lines for what the views show, from the inverses of their matrices. A view that shows no
    /// finite range gets no lines. False, with a line, when an array can not be allocated; those before it
    /// are allocated then and not filled.
    [[nodiscard]] bool rebuild(const mtx3w& front_inverse, const mtx3w& side_inverse,
                               const mtx3w& top_inverse);

    /// Draw the grids of the front, the top and the side view; nothing before the first `rebuild`.
    void draw_xy(const mtx3w& Projection, const mtx3w& Modelview) const;
    void draw_xz(const mtx3w& Projection, const mtx3w& Modelview) const;
    void draw_zy(const mtx3w& Projection, const mtx3w& Modelview) const;

    vertex_array_ref vertex_xy, vertex_xz, vertex_zy;  ///< the arrays at locations 0 and 1
    array_t array_xy, array_xz, array_zy;              ///< line_vertex_t, two to a line
    float width = 0;
    float height = 0;
};

}  // namespace ulk3d
