#include "operations/gestures/selection_operation.h"

namespace ulk3d {

std::uint32_t selection_t::on_shift_button(std::uint32_t button, bool release, int x, int y) {
    if (button != left_button)
        return 0;
    return release ? move_end.emit() : move_begin.emit(x, y);
}

std::uint32_t selection_t::on_shift_motion(int x, int y) {
    return input->held() == left_button_held && move.emit(x, y);
}

std::uint32_t selection_t::on_shift_wheel(int delta, int, int) {
    return input->held() == no_button_held && wheel.emit(delta);
}

}  // namespace ulk3d
