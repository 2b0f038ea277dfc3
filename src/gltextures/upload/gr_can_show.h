#pragma once

#include <GL/glew.h>

#include "utils/pictures/image2d.h"

namespace libgr {

/// True when the current context can show an image in a texture of `target`, which is GL_TEXTURE_2D or
/// GL_TEXTURE_CUBE_MAP. It is to be asked before anything is made of the image: what GL does not take is
/// shown as black.
///
/// False for an image without pixels, one whose pixels are not all in its window, and one that is larger than
/// GL takes; with the lines of grFormatSelect for one of a form that GL does not take.
[[nodiscard]] bool grCanShow(GLenum target, const libutils::image2d& image);

}  // namespace libgr
