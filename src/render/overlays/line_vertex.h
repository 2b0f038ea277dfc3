#pragma once

#include "model/math/records.h"

namespace ulk3d {

/// A vertex of the overlays' lines as stored in a GL buffer: 7 floats, with the element list Position, RGBA.
struct line_vertex_t {
    pos3 position;
    col3a color;
    bool operator==(const line_vertex_t&) const = default;
};
static_assert(sizeof(line_vertex_t) == 28);

}  // namespace ulk3d
