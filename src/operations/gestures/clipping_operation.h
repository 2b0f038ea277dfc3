#pragma once

#include "operations/gestures/picking_operation.h"

namespace ulk3d {

/// Selects polygons of polygon models as the set to fold. It clips no geometry: its name comes from the
/// clipping of triangles in the hit test behind its picks.
class clipping_t : public picking_operation_t {
  public:
    using picking_operation_t::picking_operation_t;

    notice_signal_t clear;
    pick_signal_t pick;
    hit_signal_t select;
    hit_signal_t unselect;
    notice_signal_t apply;  ///< emitted after every pick that has hit something

  protected:
    tools_t tools() const override { return {clear, pick, {3, select}, {5, unselect}}; }
    void after_hit() override { apply.emit(); }
};

}  // namespace ulk3d
