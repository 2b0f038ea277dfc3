#include "gltextures/upload/gr_mipmap_flag.h"

#include <algorithm>
#include <array>

namespace libgr {

bool has_mipmap_flag_for(GLenum internal_format) {
    constexpr std::array<GLenum, 7> formats{GL_RGB, GL_RGBA, GL_RGB5, GL_RGB8, GL_RGBA8, GL_BGR, GL_BGRA};
    return GLEW_SGIS_generate_mipmap &&
           std::find(formats.begin(), formats.end(), internal_format) != formats.end();
}

void set_mipmap_flag(GLenum target, bool on) {
    glTexParameteri(target, GL_GENERATE_MIPMAP, on);
}

}  // namespace libgr
