#pragma once

#include "app/editor/view_cursor.h"
#include "app/editor/view_layout.h"
#include "operations/hit/clip_polygon.h"
#include "render/models/glnurbs.h"

namespace ulk3d {

/// The rectangle of `width` by `height` pixels around a cursor, in the view that the cursor is in.
pick_rectangle_t pick_rectangle_at(const view_cursor_t& cursor, const view_layout_t& layout, float width,
                                   float height);

/// The sides of a pick rectangle as lines in normalised coordinates: top, bottom, left, right.
edge_lines_t edge_lines_of(const pick_rectangle_t& rectangle);

}  // namespace ulk3d
