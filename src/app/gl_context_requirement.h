#pragma once

#include <gtkmm/glarea.h>

namespace ulk3d {

/// Ends the process with exit status 1 when a realized area has no GL context: prints the line "OpenGL is not
/// available: the GL context could not be made." on the standard error stream first.
void require_gl_context(const Gtk::GLArea& area);

}  // namespace ulk3d
