#include "app/editor/trackball.h"

#include "model/math/vectors.h"

namespace ulk3d {

namespace {

constexpr float units_per_pixel = 0.0625F;
constexpr float wheel_units = 0.25F;

/// The position in model space of a pixel at the depth of a drag.
pos3 unproject(float x, float y, const drag_view_t& view) {
    const vec3w on_screen{(x - view.half_width) / view.half_width, (y - view.half_height) / view.half_height,
                          view.depth, 1};
    return transform_point(dehomogenize(vec_times_mtx(on_screen, view.perspective_inverse)),
                           view.view_inverse);
}

void apply(const rot3& step, rot3& rotation, rot3& inverse) {
    const qua forward = rot3_to_qua(step);
    const qua backward{forward.w, -forward.x, -forward.y, -forward.z};
    rotation = qua_to_rot3(qua_mul(forward, rot3_to_qua(rotation)));
    inverse = qua_to_rot3(qua_mul(rot3_to_qua(inverse), backward));
}

}  // namespace

void trackball_t::press(unsigned button, float x, float y) {
    if (button < drag.size())
        drag[button] = {true, x, y};
    else if (button == wheel_up)
        translation.z -= wheel_units;
    else if (button == wheel_down)
        translation.z += wheel_units;
}

void trackball_t::release(unsigned button) {
    if (button < drag.size())
        drag[button].down = false;
}

void trackball_t::move(float x, float y, const drag_view_t& view) {
    for (unsigned button = left; button <= right; ++button) {
        drag_t& last = drag[button];
        if (!last.down || (alternate && button != right))
            continue;
        const float dx = x - last.x;
        const float dy = y - last.y;
        if (button == left) {
            pan(last, x, y, view);
        } else if (button == middle) {
            translation.z += dy * units_per_pixel;
            turn({dx, {0, 0, 1}});
        } else {
            turn(qua_to_rot3(qua_mul(rot3_to_qua({-dy, {1, 0, 0}}), rot3_to_qua({dx, {0, 1, 0}}))));
        }
        last.x = x;
        last.y = y;
    }
}

void trackball_t::pan(const drag_t& from, float x, float y, const drag_view_t& view) {
    if (view.depth == 0) {
        translation.x += (x - from.x) * units_per_pixel;
        translation.y += (y - from.y) * units_per_pixel;
        return;
    }
    const dir3 moved = unproject(x, y, view) - unproject(from.x, from.y, view);
    const vec3w turned = vec_times_mtx({moved.x, moved.y, moved.z, 0}, rot3_to_mtx(rotation));
    translation += dir3{turned.x, turned.y, turned.z};
}

void trackball_t::turn(const rot3& step) {
    if (alternate)
        apply(step, alternate_rotation, alternate_inverse);
    else
        apply(step, rotation, rotation_inverse);
}

void trackball_t::reset() {
    rotation = rotation_inverse = alternate_rotation = alternate_inverse = rot3_identity;
    translation = {0, 0, 0};
}

}  // namespace ulk3d
