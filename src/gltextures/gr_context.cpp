#include "gltextures/gr_context.h"

#include <GL/glew.h>

namespace libgr {

bool grContextIsCurrent() {
    // The loader leaves its pointers null until it has run. glGetString is linked, not loaded, and without a
    // current context the dispatch library answers null to it: no window system has to be asked.
    return glDeleteBuffers != nullptr && glGetString(GL_VERSION) != nullptr;
}

}  // namespace libgr
