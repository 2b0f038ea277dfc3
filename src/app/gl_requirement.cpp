#include "app/gl_requirement.h"

#include <GL/glew.h>

#include <cstdlib>
#include <iostream>

namespace ulk3d {

void require_gl33() {
    if (GLEW_VERSION_3_3)
        return;
    std::cout << "OpenGL 3.3 or later required." << std::endl;
    std::exit(1);
}

}  // namespace ulk3d
