#pragma once

#include "utils/pictures/image_format.h"

namespace libgr {

/// With `flag`, makes GL look up colour indices in the palette, which must have colours; without, no longer.
/// Nothing happens on a core context: it has no such lookup, and the upload does it itself.
void grPixelMapSet(bool flag, const libutils::palette_t& palette);

}  // namespace libgr
