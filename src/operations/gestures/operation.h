#pragma once

#include <sigc++/signal.h>

#include <cstdint>

#include "operations/gestures/input_state.h"

namespace ulk3d {

/// Signals of the operation objects. A signal without a connected slot returns false.
using notice_signal_t = sigc::signal<void>;
/// Receives one hit of a pick: the model's index, and the index of one of its points or the id of one of its
/// polygons.
using hit_signal_t = sigc::signal<bool, std::uint64_t, std::uint64_t>;
/// Asks what lies in the window of w by h pixels around (x, y). The handler emits the receiver once for each
/// hit and returns whether there was one.
using pick_signal_t = sigc::signal<bool, int, int, float, float, const hit_signal_t&>;
using place_signal_t = sigc::signal<bool, int, int>;
using question_signal_t = sigc::signal<bool>;
using wheel_signal_t = sigc::signal<bool, int>;

/// The current meaning of the mouse in the view: turns gestures into signals and touches no model itself.
///
/// x and y are pixels in the widget, `button` is the number of the button in events (left_button and so on),
/// and `release` is true when it goes up. Every gesture returns 1 when the view has to be redrawn, else 0; in
/// this class, where gestures have no meaning, always 0.
class operation_t {
  public:
    /// `input_state` is not owned and must outlive this object.
    explicit operation_t(const input_state_t* input_state) : input(input_state) {}
    operation_t(const operation_t&) = delete;
    operation_t& operator=(const operation_t&) = delete;

    virtual std::uint32_t on_double_click(std::uint32_t /*button*/, int /*x*/, int /*y*/) { return 0; }
    virtual std::uint32_t on_button(std::uint32_t /*button*/, bool /*release*/, int /*x*/, int /*y*/) {
        return 0;
    }
    virtual std::uint32_t on_shift_button(std::uint32_t /*button*/, bool /*release*/, int /*x*/, int /*y*/) {
        return 0;
    }
    virtual std::uint32_t on_motion(int /*x*/, int /*y*/) { return 0; }
    virtual std::uint32_t on_shift_motion(int /*x*/, int /*y*/) { return 0; }
    virtual std::uint32_t on_shift_wheel(int /*delta*/, int /*x*/, int /*y*/) { return 0; }
    virtual ~operation_t() = default;

  protected:
    const input_state_t* input;
};

}  // namespace ulk3d
