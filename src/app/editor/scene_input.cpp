// The handling of mouse and keys in scene_input_t.

#include "app/editor/scene_input.h"

#include <algorithm>
#include <iostream>

#include "model/print.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

namespace {

// X key symbols.
constexpr std::uint32_t key_return = 0xff0d;
constexpr std::uint32_t key_tab = 0xff09;

constexpr float zoom_per_pixel = 0.015625F;
/// A step of 64 pixels or more down would turn the views inside out.
constexpr float least_zoom = 0.015625F;
constexpr float zoom_per_notch = 0.0625F;
constexpr float units_per_notch = 0.25F;

}  // namespace

scene_input_t::scene_input_t(edited_scene_t& edited_scene, scene_view_t& scene_view)
    : scene(edited_scene), view(scene_view) {
    connect_operations();
}

void scene_input_t::set_mode(operation_mode_t mode) {
    operation_t* const objects[] = {&selection, &punish, &clipping, &folding};
    operation = objects[static_cast<std::size_t>(mode)];
    scene_view_t::give_back_picks(scene.models());
}

operation_t& scene_input_t::driven() {
    return scene.gate().is_open() ? *operation : nothing;
}

bool scene_input_t::mouse_button(std::uint32_t button, bool release, int x, int y) {
    switch (input.modifier) {
        case modifier_none:
            return input.press_or_release(button, release) && driven().on_button(button, release, x, y) != 0;
        case modifier_shift:
            return input.press_or_release(button, release) &&
                   driven().on_shift_button(button, release, x, y) != 0;
        case modifier_alt:
            press_camera(button, release, x, y);
            static_cast<void>(input.press_or_release(button, release));
            return false;
        default:
            return false;
    }
}

bool scene_input_t::double_click(std::uint32_t button, int x, int y) {
    const bool drives_operation = input.modifier == modifier_none || input.modifier == modifier_shift;
    return drives_operation && driven().on_double_click(button, x, y) != 0;
}

bool scene_input_t::mouse_motion(int x, int y) {
    switch (input.modifier) {
        case modifier_none:
            return driven().on_motion(x, y) != 0;
        case modifier_shift:
            return driven().on_shift_motion(x, y) != 0;
        case modifier_alt:
            return move_camera(x, y);
        default:
            return false;
    }
}

bool scene_input_t::mouse_wheel(int delta, int x, int y) {
    switch (input.modifier) {
        case modifier_shift:
            return driven().on_shift_wheel(delta, x, y) != 0;
        case modifier_alt:
            return wheel_camera(delta, x, y);
        default:
            return false;
    }
}

bool scene_input_t::press_modifier(std::uint32_t modifier, std::uint32_t key) {
    if (input.modifier != modifier_none)
        return false;
    input.modifier = modifier;
    modifier_key = key;
    return modifier != modifier_none;
}

bool scene_input_t::release_key(std::uint32_t key) {
    return key == modifier_key && forget_modifiers();
}

bool scene_input_t::forget_modifiers() {
    const bool was_held = input.modifier != modifier_none;
    input.modifier = modifier_none;
    return was_held;
}

bool scene_input_t::key_command(std::uint32_t keyval) {
    switch (keyval) {
        case key_return:
            view.fit(scene.models());
            return true;
        case 'z':
            return input.modifier == modifier_ctrl && take_back(&edit_steps_t::undo);
        case 'y':
            return input.modifier == modifier_ctrl && take_back(&edit_steps_t::redo);
        case 'i':
            print_models();
            return false;
        default:
            return false;
    }
}

bool scene_input_t::take_back(bool (edit_steps_t::*step)()) {
    return scene.gate().pass([&] {
        const bool changed = (scene.steps.*step)();
        if (changed)
            update_models();
        return changed;
    });
}

void scene_input_t::key_released(std::uint32_t keyval) {
    // Alt+Tab moves the focus to another window before the release of Alt can arrive.
    if (keyval == key_tab && input.modifier == modifier_alt)
        input.modifier = modifier_none;
}

void scene_input_t::press_camera(std::uint32_t button, bool release, int x, int y) {
    if (!release)
        begin_gesture(x, y);
    if (!place.in_perspective())
        return;
    if (release) {
        view.cameras.trackball.release(button);
        return;
    }
    if (button == left_button)
        pick_point = view.pick_surface(scene.models(), place);
    view.cameras.trackball.press(button, static_cast<float>(place.x), static_cast<float>(place.y));
}

bool scene_input_t::move_camera(int x, int y) {
    const view_cursor_t to = moved_cursor(place, view.areas, x, y);
    if (place.in_perspective()) {
        const half_view_t half = half_view(view.areas);
        view.cameras.trackball.move(static_cast<float>(to.x), static_cast<float>(to.y),
                                    {half.width, half.height, view.cameras.view.inverse,
                                     view.cameras.perspective.inverse, pick_point.z});
        view.cameras.update_view();
        return true;
    }
    switch (input.held()) {
        case left_button_held:
            view.pan(place, to);
            break;
        case middle_button_held:
            view.zoom(std::max(static_cast<float>(to.y - place.y) * zoom_per_pixel + 1.0F, least_zoom));
            break;
        default:
            return false;
    }
    place = to;
    return true;
}

bool scene_input_t::wheel_camera(int delta, int x, int y) {
    begin_gesture(x, y);
    if (place.in_perspective()) {
        view.cameras.trackball.translation.z -= static_cast<float>(delta) * units_per_notch;
        view.cameras.update_view();
    } else {
        view.zoom(std::max(static_cast<float>(delta) * zoom_per_notch + 1.0F, least_zoom));
    }
    return true;
}

void scene_input_t::print_models() const {
    for (const auto& entry : scene.models()) {
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
