#include "app/gl_context_requirement.h"

#include <cstdlib>
#include <iostream>

namespace ulk3d {

void require_gl_context(const Gtk::GLArea& area) {
    if (!area.has_error())
        return;
    std::cerr << "OpenGL is not available: the GL context could not be made." << std::endl;
    std::exit(EXIT_FAILURE);
}

}  // namespace ulk3d
