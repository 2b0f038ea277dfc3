#pragma once

#include <string>

#include "utils/pictures/image2d.h"

namespace ulktool {

/// What makes a picture look other than in other programs, though it is read: a transparent colour that is
/// left out, rows in another order or of another length, colours in another place. `image` is what was read
/// from the file; with `shows_opacity` it is a colour map, which makes a model invisible that has no opacity
/// anywhere. Several things are divided by "; "; empty when there is none.
std::string picture_warnings(const std::string& path, const libutils::image2d& image, bool shows_opacity);

}  // namespace ulktool
