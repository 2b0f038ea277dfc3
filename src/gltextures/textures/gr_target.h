#pragma once

#include <GL/glew.h>

#include <cstdint>

namespace libgr {

/// The GL texture target of a target code: 1, 2, 3 and 6 are GL_TEXTURE_1D, _2D, _3D and _CUBE_MAP. Other
/// codes give `gl_no_object`, which is no target.
GLenum target_of_code(std::uint32_t code);

/// The code of one of those four targets, 0 for anything else.
std::uint32_t code_of_target(GLenum target);

}  // namespace libgr
