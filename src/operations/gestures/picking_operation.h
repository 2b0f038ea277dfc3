#pragma once

#include "operations/gestures/operation.h"

namespace ulk3d {

/// What all operations have in common: the left and the right button each paint with a brush, on the press
/// and along a drag; a double click of the right button clears.
///
/// A derived class has the signals and decides which of them receive the hits of its brushes.
class picking_operation_t : public operation_t {
  public:
    using operation_t::operation_t;

    std::uint32_t on_double_click(std::uint32_t button, int x, int y) override;
    std::uint32_t on_button(std::uint32_t button, bool release, int x, int y) override;
    std::uint32_t on_motion(int x, int y) override;

  protected:
    struct brush_t {
        float size;                    ///< width and height of the pick window, in pixels
        const hit_signal_t& receiver;  ///< receives the hits
    };
    struct tools_t {
        const notice_signal_t& clear;
        const pick_signal_t& pick;
        brush_t left, right;
    };
    virtual tools_t tools() const = 0;

    /// Called after a pick that has hit something.
    virtual void after_hit() {}

  private:
    std::uint32_t paint(const brush_t& brush, int x, int y);
};

}  // namespace ulk3d
