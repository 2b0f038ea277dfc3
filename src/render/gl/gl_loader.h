#pragma once

namespace ulk3d {

/// Loads the GL entry points for the current context, whichever window system made it. True when the context
/// offers all of GL 3.3. Afterwards the loader's version flags tell which version the context has.
[[nodiscard]] bool load_gl_entry_points();

}  // namespace ulk3d
