#pragma once

#include <cstdint>

#include "app/editor/edited_scene.h"
#include "app/editor/scene_view.h"
#include "app/editor/view_cursor.h"
#include "operations/gestures/clipping_operation.h"
#include "operations/gestures/folding_operation.h"
#include "operations/gestures/input_state.h"
#include "operations/gestures/punish_operation.h"
#include "operations/gestures/selection_operation.h"

namespace ulk3d {

/// What the left button does in the view.
enum class operation_mode_t : std::uint32_t { selection = 0, punish = 1, clipping = 2, folding = 3 };

/// How the scene is handled: modifier keys decide whether the mouse drives the operation object of the mode
/// or the cameras, and the signals of the operation objects become selections and edits.
///
/// Positions are device pixels of the view area, y counted down; buttons as in input_state.h. Operations with
/// a result return whether the view has to be redrawn. While the scene's gate is closed only the cameras
/// move.
class scene_input_t {
  public:
    /// The scene and its view are not owned and must outlive this object.
    scene_input_t(edited_scene_t& edited_scene, scene_view_t& scene_view);
    scene_input_t(const scene_input_t&) = delete;
    scene_input_t& operator=(const scene_input_t&) = delete;

    /// Gives the left button another meaning, and ends the use of what picks of points have taken.
    void set_mode(operation_mode_t mode);

    bool mouse_button(std::uint32_t button, bool release, int x, int y);
    bool double_click(std::uint32_t button, int x, int y);
    bool mouse_motion(int x, int y);
    bool mouse_wheel(int delta, int x, int y);
    bool press_modifier(std::uint32_t modifier, std::uint32_t key);
    bool release_key(std::uint32_t key);
    bool forget_modifiers();
    bool key_command(std::uint32_t keyval);
    void key_released(std::uint32_t keyval);

    /// Where the current gesture began or was continued: a pick, a drag or a camera move, whichever came
    /// last.
    const view_cursor_t& gesture_place() const { return place; }

  private:
    void connect_operations();
    /// What the mouse drives: the operation object of the mode, or one that does nothing.
    operation_t& driven();
    void begin_gesture(int x, int y) { place = cursor_at(view.areas, x, y); }

    // The cameras.
    void press_camera(std::uint32_t button, bool release, int x, int y);
    bool move_camera(int x, int y);
    bool wheel_camera(int delta, int x, int y);

    // The signals of the operation objects.
    bool pick_points(int x, int y, float width, float height, const hit_signal_t& receiver);
    bool polyselection(int x, int y, float width, float height, const hit_signal_t& receiver);
    void ApplySelPolygon();
    bool begin_move(int x, int y);
    bool move_selected(int x, int y);
    bool end_move();
    bool wheel_selected(int delta);
    bool punish_move(int x, int y);
    void update_models();
    dir3 drag_vector(int x, int y) const;

    bool take_back(bool (edit_steps_t::*step)());
    void print_models() const;

    edited_scene_t& scene;
    scene_view_t& view;
    input_state_t input;
    std::uint32_t modifier_key = 0;  ///< the key that holds `input.modifier`
    selection_t selection{&input};
    punish_t punish{&input};
    clipping_t clipping{&input};
    folding_t folding{&input};
    operation_t nothing{&input};
    operation_t* operation = &selection;
    view_cursor_t place;
    pos3 pick_point;  ///< what the left camera drag took hold of; z is its depth, 0 for nothing
};

}  // namespace ulk3d
