#include "render/gl/gl_loader.h"

#include <GL/glew.h>

namespace ulk3d {

bool load_gl_entry_points() {
    // glewExperimental stays off: it sets the flag of every version whose entry points can be found, which on
    // any driver is all of them. The loader supports core contexts without it, and its flags then tell the
    // version.
    const GLenum result = glewInit();
    // The loader initialises GLX last. With an EGL context there is no GLX display, but by then all GL entry
    // points have been loaded.
    if (result != GLEW_OK && result != GLEW_ERROR_NO_GLX_DISPLAY)
        return false;
    return GLEW_VERSION_3_3 != 0;
}

}  // namespace ulk3d
