// The mouse and the keys of ulkedit_t: modifier keys say whether they drive the operation object or the
// camera.

#include <iostream>

#include "app/editor/fit_view.h"
#include "app/editor/pick_window.h"
#include "app/editor/ulkedit.h"
#include "model/math/vectors.h"
#include "model/print.h"
#include "operations/hit/polygon_hit.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

namespace {

// X key symbols.
constexpr std::uint32_t key_return = 0xff0d;
constexpr std::uint32_t key_tab = 0xff09;

constexpr float zoom_per_pixel = 0.015625F;
constexpr float zoom_per_notch = 0.0625F;
constexpr float units_per_notch = 0.25F;

}  // namespace

bool ulkedit_t::mouse_button(std::uint32_t button, bool release, int x, int y) {
    switch (input.modifier) {
        case modifier_none:
            return input.press_or_release(button, release) && !cutting &&
                   operation->on_button(button, release, x, y) != 0;
        case modifier_shift:
            return input.press_or_release(button, release) && !cutting &&
                   operation->on_shift_button(button, release, x, y) != 0;
        case modifier_alt:
            press_camera(button, release, x, y);
            static_cast<void>(input.press_or_release(button, release));
            return false;
        default:
            return false;
    }
}

bool ulkedit_t::double_click(std::uint32_t button, int x, int y) {
    const bool drives_operation = input.modifier == modifier_none || input.modifier == modifier_shift;
    return drives_operation && !cutting && operation->on_double_click(button, x, y) != 0;
}

bool ulkedit_t::mouse_motion(int x, int y) {
    switch (input.modifier) {
        case modifier_none:
            return !cutting && operation->on_motion(x, y) != 0;
        case modifier_shift:
            return !cutting && operation->on_shift_motion(x, y) != 0;
        case modifier_alt:
            return move_camera(x, y);
        default:
            return false;
    }
}

bool ulkedit_t::mouse_wheel(int delta, int x, int y) {
    switch (input.modifier) {
        case modifier_shift:
            return !cutting && operation->on_shift_wheel(delta, x, y) != 0;
        case modifier_alt:
            return wheel_camera(delta, x, y);
        default:
            return false;
    }
}

bool ulkedit_t::press_modifier(std::uint32_t modifier) {
    if (input.modifier != modifier_none)
        return false;
    input.modifier = modifier;
    return true;
}

bool ulkedit_t::release_modifier(std::uint32_t modifier) {
    if (input.modifier != modifier)
        return false;
    input.modifier = modifier_none;
    return true;
}

bool ulkedit_t::key_command(std::uint32_t keyval) {
    switch (keyval) {
        case key_return:
            fit_scene();
            return true;
        case 'z':
            return input.modifier == modifier_ctrl && !cutting && undo();
        case 'y':
            return input.modifier == modifier_ctrl && !cutting && redo();
        case 'i':
            print_models();
            return false;
        default:
            return false;
    }
}

void ulkedit_t::key_released(std::uint32_t keyval) {
    // Alt+Tab takes the window away before the release of Alt can arrive.
    if (keyval == key_tab && input.modifier == modifier_alt)
        input.modifier = modifier_none;
}

void ulkedit_t::press_camera(std::uint32_t button, bool release, int x, int y) {
    if (!release)
        cursor = cursor_at(areas, x, y);
    if (!cursor.in_perspective())
        return;
    if (release) {
        cameras.trackball.release(button);
        return;
    }
    if (button == left_button)
        pick_point = pick_surface();
    cameras.trackball.press(button, static_cast<float>(cursor.x), static_cast<float>(cursor.y));
}

bool ulkedit_t::move_camera(int x, int y) {
    const view_cursor_t to = moved_cursor(cursor, areas, x, y);
    if (cursor.in_perspective()) {
        const half_view_t half = half_view(areas);
        cameras.trackball.move(
            static_cast<float>(to.x), static_cast<float>(to.y),
            {half.width, half.height, cameras.view.inverse, cameras.perspective.inverse, pick_point.z});
        cameras.update_view();
        return true;
    }
    switch (input.held()) {
        case left_button_held:
            pan_views(to);
            return true;
        case middle_button_held:
            zoom_views(static_cast<float>(to.y - cursor.y) * zoom_per_pixel + 1.0F);
            cursor = to;
            return true;
        default:
            return false;
    }
}

bool ulkedit_t::wheel_camera(int delta, int x, int y) {
    cursor = cursor_at(areas, x, y);
    if (cursor.in_perspective()) {
        cameras.trackball.translation.z -= static_cast<float>(delta) * units_per_notch;
        cameras.update_view();
    } else {
        zoom_views(static_cast<float>(delta) * zoom_per_notch + 1.0F);
    }
    return true;
}

void ulkedit_t::pan_views(const view_cursor_t& to) {
    const auto in_model = [this](const view_cursor_t& at) {
        const pos2 p = normalised(at, areas);
        return transform_point(transform_point({p.x, p.y, 0}, cameras.ortho.inverse),
                               view_of(cursor).inverse);
    };
    const dir3 moved = in_model(to) - in_model(cursor);
    cameras.fit = {translation(moved) * cameras.fit.matrix, cameras.fit.inverse * translation(-moved)};
    cursor = to;
    update_ortho_views();
}

void ulkedit_t::zoom_views(float factor) {
    const float back = 1 / factor;
    cameras.fit = {scale(factor, factor, factor) * cameras.fit.matrix,
                   cameras.fit.inverse * scale(back, back, back)};
    update_ortho_views();
}

const matrix_pair_t& ulkedit_t::view_of(const view_cursor_t& at) const {
    if (at.in_perspective())
        return cameras.view;
    if (!at.left)
        return cameras.side;
    return at.bottom ? cameras.front : cameras.top;
}

const matrix_pair_t& ulkedit_t::projection_of(const view_cursor_t& at) const {
    return at.in_perspective() ? cameras.perspective : cameras.ortho;
}

pos3 ulkedit_t::pick_surface() const {
    hit_map_t hits;
    const edge_lines_t window = edge_lines_of(pick_rectangle_at(cursor, areas, 1, 1));
    for (const auto& entry : scene_models)
        polygon_hit(hits, entry->polygon, window, cameras.perspective.matrix, cameras.view.matrix);
    return hits.empty() ? pos3{} : hits.begin()->second.point;
}

void ulkedit_t::fit_scene() {
    cameras.update_perspective(areas);
    reset_view(cameras, scene_models);
    update_ortho_views();
    cameras.update_view();
}

void ulkedit_t::print_models() const {
    for (const auto& entry : scene_models) {
        const polygon_t& polygon = entry->polygon;
        std::cout << "vertices: " << polygon.vertex_count() << "\nelements: " << polygon.element_count()
                  << '\n';
        if (polygon.element_count() == 0)
            continue;
        const array_span<const vertex_t> vertices(polygon.vertices);
        const const_index_span elements(polygon.elements);
        for (std::size_t i = 0; i < elements.size(); ++i)
            if (elements[i] < vertices.size())
                std::cout << "e[" << i << "]:" << elements[i] << ' ' << vertices[elements[i]] << '\n';
    }
    std::cout.flush();
}

}  // namespace ulk3d
