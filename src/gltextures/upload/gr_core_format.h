#pragma once

#include <GL/glew.h>

#include <array>

#include "gltextures/upload/gr_format.h"

namespace libgr {

/// A triple as the current context takes it, and how the channels that it stores are read in a shader.
struct stored_format_t {
    gl_triple_t triple;
    std::array<GLint, 4> swizzle{GL_RED, GL_GREEN, GL_BLUE, GL_ALPHA};
};

/// True when the current context has no luminance, intensity, alpha and colour index formats and no pixel
/// maps.
bool is_core_context();

/// The nearest that a core context has for a triple.
///
/// Luminance, intensity and alpha become one or two channels with a swizzle that reads as the old format did.
/// Signed colours of 8 and 16 bits are normals: their storage becomes signed too, because that of GL_RGB8
/// would cut off whatever slopes down. Other triples stay as they are.
stored_format_t core_format(const gl_triple_t& triple);

}  // namespace libgr
