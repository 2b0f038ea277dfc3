#pragma once

#include <GL/glew.h>

#include <string>

#include "utils/pictures/image2d.h"

namespace ulk3d {

/// Reads a picture for a texture of `target` (libgr::grCanShow), with the messages of the codecs. False, with
/// an image that holds nothing, when it can not be read or not be shown: a surface would show black for it.
/// A current GL context is required.
[[nodiscard]] bool load_picture(libutils::image2d& image, const std::string& path, GLenum target);

}  // namespace ulk3d
