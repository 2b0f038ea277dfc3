#pragma once

#include <array>
#include <cstdint>

namespace ulk3d {

/// Modifier states of the view. Only one is on at a time: the first key that was pressed.
enum : std::uint32_t {
    modifier_none = 0,
    modifier_shift = 1,
    modifier_ctrl = 2,
    modifier_alt = 3,
};

/// Buttons as events number them. Numbers above the right button are those of further buttons and wheels.
enum : std::uint32_t {
    left_button = 0,
    middle_button = 1,
    right_button = 2,
};

/// Codes of a held button.
enum : std::uint32_t {
    no_button_held = 0,
    left_button_held = 1,
    middle_button_held = 2,
    right_button_held = 4,
};

/// Which modifier key and which mouse button are held in the view.
///
/// Every modifier state has a button of its own: a button that is pressed with Shift and released without it
/// stays held in the Shift state until it is released there.
struct input_state_t {
    std::uint32_t modifier = modifier_none;
    std::array<std::uint32_t, 5> button{};  ///< by `modifier`: the code of the held button

    /// The code of the button that is held in the present modifier state.
    std::uint32_t held() const { return button[modifier]; }

    /// Notes a press or a release of an event's button in the present modifier state. False for the press of
    /// a second button while one is held: it is refused. Buttons above the right one are never held.
    bool press_or_release(std::uint32_t event_button, bool release);
};

}  // namespace ulk3d
