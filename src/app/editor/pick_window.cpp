#include "app/editor/pick_window.h"

namespace ulk3d {

pick_rectangle_t pick_rectangle_at(const view_cursor_t& cursor, const view_layout_t& layout, float width,
                                   float height) {
    return {.x = static_cast<float>(cursor.x),
            .y = static_cast<float>(cursor.y),
            .width = width,
            .height = height,
            .view_width = static_cast<float>(layout.half_width),
            .view_height = static_cast<float>(layout.half_height)};
}

edge_lines_t edge_lines_of(const pick_rectangle_t& rectangle) {
    const float half_width = rectangle.view_width * 0.5F, half_height = rectangle.view_height * 0.5F;
    const float dx = rectangle.width / 2, dy = rectangle.height / 2;
    const float left = (rectangle.x - dx - half_width) / half_width;
    const float right = (rectangle.x + dx - half_width) / half_width;
    const float bottom = (rectangle.y - dy - half_height) / half_height;
    const float top = (rectangle.y + dy - half_height) / half_height;
    return {{{0, -1, top}, {0, 1, -bottom}, {1, 0, -left}, {-1, 0, right}}};
}

}  // namespace ulk3d
