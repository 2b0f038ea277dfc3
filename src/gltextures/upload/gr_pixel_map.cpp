#include "gltextures/upload/gr_pixel_map.h"

#include <GL/glew.h>

#include "gltextures/upload/gr_core_format.h"

namespace libgr {

void grPixelMapSet(bool flag, const libutils::palette_t& palette) {
    if (is_core_context())
        return;
    glPixelTransferi(GL_MAP_COLOR, flag);
    if (!flag)
        return;
    const auto size = static_cast<GLsizei>(palette.count);
    glPixelMapusv(GL_PIXEL_MAP_I_TO_R, size, palette.red.begin());
    glPixelMapusv(GL_PIXEL_MAP_I_TO_G, size, palette.green.begin());
    glPixelMapusv(GL_PIXEL_MAP_I_TO_B, size, palette.blue.begin());
}

}  // namespace libgr
