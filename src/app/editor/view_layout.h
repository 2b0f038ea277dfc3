#pragma once

namespace ulk3d {

/// A GL viewport in device pixels, y counted up.
struct viewport_t {
    int x = 0, y = 0, width = 0, height = 0;
    bool operator==(const viewport_t&) const = default;
};

/// How the view area is divided: perspective at the top right, front at the bottom left, side at the bottom
/// right, top at the top left, all of the same size. An odd width or height leaves one column or row unused
/// between the views.
struct view_layout_t {
    int width = 0, height = 0;            ///< the view area
    int half_width = 0, half_height = 0;  ///< one view

    void resize(int new_width, int new_height);

    viewport_t front() const { return {0, 0, half_width, half_height}; }
    viewport_t side() const { return {right(), 0, half_width, half_height}; }
    viewport_t top() const { return {0, upper(), half_width, half_height}; }
    viewport_t perspective() const { return {right(), upper(), half_width, half_height}; }

    /// Width to height of one view; infinite or not-a-number for a view without area.
    double aspect() const { return static_cast<double>(half_width) / static_cast<double>(half_height); }

  private:
    int right() const { return half_width + (width & 1); }
    int upper() const { return half_height + (height & 1); }
};

}  // namespace ulk3d
