#pragma once

#include <GL/glew.h>

namespace libgr {

/// What the id accessors of GL wrappers give for an object that does not exist (1281). It is no name that GL
/// has handed out, so binding it fails and the next grCheckError reports it; 0 would silently bind nothing.
inline constexpr GLuint gl_no_object = GL_INVALID_VALUE;

}  // namespace libgr
