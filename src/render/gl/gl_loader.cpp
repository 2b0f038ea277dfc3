#include "render/gl/gl_loader.h"

#include <GL/glew.h>

namespace ulk3d {

bool load_gl_entry_points() {
    // glewExperimental stays off: it sets every version flag whose entry points can be found, which is all of
    // them on any driver. The loader knows core contexts without it, and its flags then tell the version.
    const GLenum result = glewInit();
    // The loader asks GLX last. Where an EGL context is current there is no GLX display, but by then the
    // entry points of GL are all loaded.
    if (result != GLEW_OK && result != GLEW_ERROR_NO_GLX_DISPLAY)
        return false;
    return GLEW_VERSION_3_3 != 0;
}

}  // namespace ulk3d
