#include "operations/gestures/input_state.h"

namespace ulk3d {
namespace {

std::uint32_t code_of(std::uint32_t event_button) {
    return event_button <= right_button ? 1U << event_button : no_button_held;
}

}  // namespace

bool input_state_t::press_or_release(std::uint32_t event_button, bool release) {
    std::uint32_t& held_button = button[modifier];
    const std::uint32_t code = code_of(event_button);
    if (release) {
        if (held_button == code)
            held_button = no_button_held;
        return true;
    }
    if (held_button != no_button_held)
        return false;
    held_button = code;
    return true;
}

}  // namespace ulk3d
