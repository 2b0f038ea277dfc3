#pragma once

namespace ulk3d {

/// Loads the GL entry points for the current context, whichever window system made it. True when the context
/// offers GL 3.3 and all of it was found. The loader's version flags tell the context's version after.
[[nodiscard]] bool load_gl_entry_points();

}  // namespace ulk3d
