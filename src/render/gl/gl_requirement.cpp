#include "render/gl/gl_requirement.h"

#include <GL/glew.h>

#include <cstdlib>
#include <iostream>

namespace ulk3d {

void require_gl33() {
    if (GLEW_VERSION_3_3)
        return;
    std::cout << "OpenGL 3.3 or later required." << std::endl;
    std::exit(EXIT_FAILURE);
}

void require_gl_context(bool was_made) {
    if (was_made)
        return;
    std::cerr << "OpenGL is not available: the GL context could not be made." << std::endl;
    std::exit(EXIT_FAILURE);
}

}  // namespace ulk3d
