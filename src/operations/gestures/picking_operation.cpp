#include "operations/gestures/picking_operation.h"

namespace ulk3d {

std::uint32_t picking_operation_t::on_double_click(std::uint32_t button, int, int) {
    if (button != right_button)
        return 0;
    tools().clear.emit();
    return 1;
}

std::uint32_t picking_operation_t::on_button(std::uint32_t button, bool release, int x, int y) {
    if (release)
        return 0;
    switch (button) {
        case left_button:
            return paint(tools().left, x, y);
        case right_button:
            return paint(tools().right, x, y);
        default:
            return 0;
    }
}

std::uint32_t picking_operation_t::on_motion(int x, int y) {
    switch (input->held()) {
        case left_button_held:
            return paint(tools().left, x, y);
        case right_button_held:
            return paint(tools().right, x, y);
        default:
            return 0;
    }
}

std::uint32_t picking_operation_t::paint(const brush_t& brush, int x, int y) {
    if (!tools().pick.emit(x, y, brush.size, brush.size, brush.receiver))
        return 0;
    after_hit();
    return 1;
}

}  // namespace ulk3d
