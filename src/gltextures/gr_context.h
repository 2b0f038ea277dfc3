#pragma once

namespace libgr {

/// True when GL calls reach a context: the entry points are loaded and a context is current on this thread,
/// whatever made it (GLX, EGL). GL names are only released while this holds; a wrapper that outlives the
/// context, as at process exit, drops its name without a call.
bool grContextIsCurrent();

}  // namespace libgr
