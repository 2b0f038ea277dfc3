#pragma once

#include <array>

#include "model/math/matrices.h"
#include "model/math/records.h"
#include "model/math/rotations.h"

namespace ulk3d {

/// What a drag in the perspective view needs to know about the view: half its size in pixels, the matrices
/// back from the screen, and the depth (in normalised coordinates) of the surface that was under the pointer
/// when the button was pressed, 0 for none.
struct drag_view_t {
    float half_width = 0, half_height = 0;
    mtx3w view_inverse = mtx_identity;
    mtx3w perspective_inverse = mtx_identity;
    float depth = 0;
};

/// The perspective view's camera, moved by mouse drags. Positions are pixels in the view, y counted up.
///
/// Rotations are kept as records and pass through quaternions only where a step of a drag combines them; the
/// inverse is a record of its own, updated alongside and never derived.
struct trackball_t {
    enum button_t : unsigned { left = 0, middle = 1, right = 2, wheel_up = 3, wheel_down = 4 };

    struct drag_t {
        bool down = false;
        float x = 0, y = 0;  ///< where the last step ended
    };

    /// Begins a drag with one of the three buttons. Wheel notches that arrive as buttons move by a quarter of
    /// a unit along z.
    void press(unsigned button, float x, float y);
    void release(unsigned button);

    /// Performs a step of every drag under way. Left: moves, so that the surface under the pointer follows
    /// it. Middle: moves along z and rolls, a degree per pixel. Right: turns, a degree per pixel.
    void move(float x, float y, const drag_view_t& view);

    /// Resets all turns and moves; drags under way continue.
    void reset();

    std::array<drag_t, 3> drag;
    bool alternate = false;  ///< the right button turns the alternate records, others do nothing
    rot3 alternate_rotation = rot3_identity;
    rot3 alternate_inverse = rot3_identity;
    rot3 rotation = rot3_identity;
    rot3 rotation_inverse = rot3_identity;
    dir3 translation{0, 0, -7};

  private:
    void pan(const drag_t& from, float x, float y, const drag_view_t& view);
    void turn(const rot3& step);
};

}  // namespace ulk3d
