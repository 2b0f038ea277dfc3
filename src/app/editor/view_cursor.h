#pragma once

#include "app/editor/view_layout.h"
#include "model/math/records.h"

namespace ulk3d {

/// A position in the view area: which of the four views it is in, and where in that view, in device pixels
/// with y counted up.
struct view_cursor_t {
    bool left = false;    ///< front or top view
    bool bottom = false;  ///< front or side view
    int x = 0, y = 0;

    bool in_perspective() const { return !left && !bottom; }
};

/// The cursor at a position of the view area; `y` is counted down from its top.
view_cursor_t cursor_at(const view_layout_t& layout, int x, int y);

/// The same position relative to the view of `cursor`, whichever view it lies in: a drag stays in the view in
/// which it began.
view_cursor_t moved_cursor(const view_cursor_t& cursor, const view_layout_t& layout, int x, int y);

/// Half the size of a view in pixels, not truncated.
struct half_view_t {
    float width, height;
};
half_view_t half_view(const view_layout_t& layout);

/// The place of a cursor in its view, from -1 to 1 on both axes.
pos2 normalised(const view_cursor_t& cursor, const view_layout_t& layout);

}  // namespace ulk3d
