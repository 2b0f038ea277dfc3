#pragma once

#include "utils/pictures/rgba_picture.h"

namespace ulktool {

/// A picture of an `n`-th of the width and height, rounded down. Each pixel is the mean of a square of `n` by
/// `n`; colours count by their opacity.
libutils::rgba_picture_t averaged_picture(const libutils::rgba_picture_t& picture, int n);

}  // namespace ulktool
