#pragma once

namespace ulk3d {

/// Ends the process with status 1, after the line "OpenGL 3.3 or later required." on the standard output
/// stream, unless the loaded GL entry points include version 3.3.
void require_gl33();

/// Ends the process with status 1, after the line "OpenGL is not available: the GL context could not be
/// made." on the standard error stream, unless `was_made`, that is, unless the widget has its GL context.
void require_gl_context(bool was_made);

}  // namespace ulk3d
