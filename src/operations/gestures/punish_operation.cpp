#include "operations/gestures/punish_operation.h"

namespace ulk3d {

std::uint32_t punish_t::on_shift_button(std::uint32_t button, bool release, int x, int y) {
    if (button != left_button || !release || !apply.emit(x, y))
        return 0;
    refresh.emit();
    return 1;
}

}  // namespace ulk3d
