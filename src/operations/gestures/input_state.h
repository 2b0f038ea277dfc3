#pragma once

#include <array>
#include <cstdint>

namespace ulk3d {

/// Modifier states of the view. Only one is active at a time: that of the first key pressed.
enum : std::uint32_t {
    modifier_none = 0,
    modifier_shift = 1,
    modifier_ctrl = 2,
    modifier_alt = 3,
};

/// Buttons by their numbers in events. Higher numbers are further buttons and wheels.
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
/// Each modifier state has a button of its own: a button that is pressed with Shift and released without it
/// remains held in the Shift state until it is released there.
struct input_state_t {
    std::uint32_t modifier = modifier_none;
    std::array<std::uint32_t, 5> button{};  ///< by `modifier`: code of the held button

    /// The code of the button that is held in the current modifier state.
    std::uint32_t held() const { return button[modifier]; }

    /// Records the press or release of a button in the current modifier state. False for the press of a
    /// second button while one is held, which is refused. Buttons with numbers above the right one are never
    /// held.
    bool press_or_release(std::uint32_t event_button, bool release);
};

}  // namespace ulk3d
