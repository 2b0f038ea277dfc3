#pragma once

namespace ulk3d {

/// Loads the GL entry points for the current context, whichever window system made it. True when the context
/// offers GL 3.3 and all of it was found.
[[nodiscard]] bool load_gl_entry_points();

}  // namespace ulk3d
