#pragma once

namespace ulk3d {

/// Ends the process with status 1, after the line "OpenGL 3.3 or later required." on the standard output
/// stream, when the loaded GL entry points do not reach version 3.3.
void require_gl33();

}  // namespace ulk3d
