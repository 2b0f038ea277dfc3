#include "render/gl/gl_loader.h"

#include <GL/glew.h>

namespace ulk3d {

bool load_gl_entry_points() {
    // Core contexts do not list extensions in the way that the loader looks for by default.
    glewExperimental = GL_TRUE;
    const GLenum result = glewInit();
    // The loader asks GLX last. Where an EGL context is current there is no GLX display, but by then the
    // entry points of GL are all loaded.
    if (result != GLEW_OK && result != GLEW_ERROR_NO_GLX_DISPLAY)
        return false;
    return GLEW_VERSION_3_3 != 0;
}

}  // namespace ulk3d
