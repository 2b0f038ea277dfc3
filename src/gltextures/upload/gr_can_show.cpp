#include "gltextures/upload/gr_can_show.h"

#include "gltextures/upload/gr_level_upload.h"
#include "gltextures/upload/gr_pixel_rows.h"

namespace libgr {

namespace {

/// Asks GL for a texture without making one.
bool has_texture_for(GLenum target, const image_extent_t& extent, const gl_triple_t& triple) {
    const GLenum proxy = target == GL_TEXTURE_CUBE_MAP ? GL_PROXY_TEXTURE_CUBE_MAP : GL_PROXY_TEXTURE_2D;
    const GLenum largest = target == GL_TEXTURE_CUBE_MAP ? GL_MAX_CUBE_MAP_TEXTURE_SIZE : GL_MAX_TEXTURE_SIZE;
    GLint side = 0;
    glGetIntegerv(largest, &side);
    const auto longest = static_cast<std::uint32_t>(side);
    if (extent.width > longest || extent.height > longest)
        return false;
    // The proxy of a cube map takes square sides only; faces that are not are a matter of their own.
    const auto width = static_cast<GLsizei>(extent.width);
    const GLsizei height = target == GL_TEXTURE_CUBE_MAP ? width : static_cast<GLsizei>(extent.height);
    glTexImage2D(proxy, 0, static_cast<GLint>(triple.internal_format), width, height, 0, triple.format,
                 triple.type, nullptr);
    GLint given = 0;
    glGetTexLevelParameteriv(proxy, 0, GL_TEXTURE_WIDTH, &given);
    return given == width;
}

}  // namespace

bool grCanShow(GLenum target, const libutils::image2d& image) {
    if (image.empty() || image.width == 0 || image.height == 0)
        return false;
    const pixel_source_t source = pixel_source(image);
    if (!holds_rows(source))
        return false;
    gl_triple_t triple;
    return grFormatSelect(triple, image.format, image.type, image.bits, false) &&
           has_texture_for(target, source.extent, stored_format(source, triple).triple);
}

}  // namespace libgr
