#pragma once

#include "operations/gestures/picking_operation.h"

namespace ulk3d {

/// Selects control points or vertices of any model and moves the selected ones.
///
/// The left button selects with a narrow brush, the right one unselects with a wide one. With Shift a drag
/// with the left button moves the selected points, and the wheel moves them while no button is held.
class selection_t : public picking_operation_t {
  public:
    using picking_operation_t::picking_operation_t;

    std::uint32_t on_shift_button(std::uint32_t button, bool release, int x, int y) override;
    std::uint32_t on_shift_motion(int x, int y) override;
    std::uint32_t on_shift_wheel(int delta, int x, int y) override;

    notice_signal_t clear;
    hit_signal_t select;
    hit_signal_t unselect;
    pick_signal_t pick;
    place_signal_t move_begin;
    place_signal_t move;
    question_signal_t move_end;
    wheel_signal_t wheel;

  protected:
    tools_t tools() const override { return {clear, pick, {3, select}, {5, unselect}}; }
};

}  // namespace ulk3d
