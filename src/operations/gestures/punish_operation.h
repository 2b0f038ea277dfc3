#pragma once

#include "operations/gestures/picking_operation.h"

namespace ulk3d {

/// Selects control points as selection_t does, and dents the surface around the first selected one: releasing
/// the left button with Shift held applies the dent. The press with Shift has no meaning, so the dent is
/// measured from the place of the last pick.
class punish_t : public picking_operation_t {
  public:
    using picking_operation_t::picking_operation_t;

    std::uint32_t on_shift_button(std::uint32_t button, bool release, int x, int y) override;

    notice_signal_t clear;
    hit_signal_t select;
    hit_signal_t unselect;
    pick_signal_t pick;
    place_signal_t apply;
    notice_signal_t refresh;  ///< emitted after an `apply` that has changed something

  protected:
    tools_t tools() const override { return {clear, pick, {3, select}, {5, unselect}}; }
};

}  // namespace ulk3d
