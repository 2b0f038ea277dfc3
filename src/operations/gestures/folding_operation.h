#pragma once

#include "operations/gestures/picking_operation.h"

namespace ulk3d {

/// Picks the two vertices of the fold axis: the right button the first one, the left button the second.
class folding_t : public picking_operation_t {
  public:
    using picking_operation_t::picking_operation_t;

    notice_signal_t clear;
    hit_signal_t set_first;
    hit_signal_t set_second;
    pick_signal_t pick;

  protected:
    tools_t tools() const override { return {clear, pick, {5, set_second}, {5, set_first}}; }
};

}  // namespace ulk3d
