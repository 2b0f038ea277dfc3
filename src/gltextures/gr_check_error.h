#pragma once

namespace libgr {

/// Reports at most one pending GL error: one glGetError call.
///
/// Returns false and prints nothing when there is none. Otherwise writes the line
/// "<mark>: Error <decimal code>: <text of gluErrorString>" to the standard error stream (without
/// "<mark>: " when `mark` is null) and returns true. A current GL context is required.
bool grCheckError(const char* mark);

}  // namespace libgr
