#pragma once

namespace ulk3d {

/// Draws lines this many device pixels wide from now on, or as wide as the context can: many know lines of
/// one pixel only. A context must be current.
void set_line_width(float pixels);

}  // namespace ulk3d
