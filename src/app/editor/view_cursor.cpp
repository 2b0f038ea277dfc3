#include "app/editor/view_cursor.h"

namespace ulk3d {

view_cursor_t moved_cursor(const view_cursor_t& cursor, const view_layout_t& layout, int x, int y) {
    view_cursor_t moved = cursor;
    const int up = layout.height - 1 - y;
    moved.x = cursor.left ? x : x - layout.perspective().x;
    moved.y = cursor.bottom ? up : up - layout.perspective().y;
    return moved;
}

view_cursor_t cursor_at(const view_layout_t& layout, int x, int y) {
    view_cursor_t cursor;
    cursor.left = x < layout.half_width;
    cursor.bottom = layout.height - 1 - y < layout.half_height;
    return moved_cursor(cursor, layout, x, y);
}

half_view_t half_view(const view_layout_t& layout) {
    return {static_cast<float>(layout.half_width) * 0.5F, static_cast<float>(layout.half_height) * 0.5F};
}

pos2 normalised(const view_cursor_t& cursor, const view_layout_t& layout) {
    const half_view_t half = half_view(layout);
    return {(static_cast<float>(cursor.x) - half.width) / half.width,
            (static_cast<float>(cursor.y) - half.height) / half.height};
}

}  // namespace ulk3d
