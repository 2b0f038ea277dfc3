#include "gltextures/gr_check_error.h"

#include <GL/glew.h>

#include <iostream>

namespace libgr {

bool grCheckError(const char* mark) {
    const GLenum code = glGetError();
    if (code == GL_NO_ERROR)
        return false;
    if (mark != nullptr)
        std::cerr << mark << ": ";
    // A code without a text is a null pointer: the stream then goes bad and the rest of the line is lost.
    std::cerr << "Error " << code << ": " << reinterpret_cast<const char*>(gluErrorString(code)) << std::endl;
    return true;
}

}  // namespace libgr
