#include "gltextures/textures/gr_textures.h"

#include "gltextures/upload/gr_image_calls.h"
#include "gltextures/upload/gr_pixel_map.h"

namespace libgr {

void grTexture1D::Load() {
    if (levels.empty())
        return;
    upload_levels(family_1d, sources(), settings(transfer_t::store));
    grTexParameter(parameters);
    grTexBorderColor(GL_TEXTURE_1D, border_color);
}

void grTexture2D::upload(transfer_t transfer) {
    if (levels.empty())
        return;
    upload_levels(family_2d, sources(), settings(transfer));
    grTexParameter(parameters);
    if (border)
        grTexBorderColor(GL_TEXTURE_2D, border_color);
}

void grTexture3D::Load() {
    if (levels.empty())
        return;
    upload_levels(family_3d, sources(), settings(transfer_t::store));
    grTexParameter(parameters);
    // The colour goes to the cube map that is bound, not to the volume; no volume is used with a border.
    if (border)
        grTexBorderColor(GL_TEXTURE_CUBE_MAP, border_color);
}

void grTextureCubeMap::Load() {
    if (levels.empty())
        return;
    if (upload_cube_levels(sources(), settings(transfer_t::store)))
        grTexParameter(parameters);
}

GLenum grTextureRectangle::GetInternalFormat() const {
    return image.empty() ? gl_no_object : internal_format_of(pixel_source(image));
}

void grTextureRectangle::set_image(const libutils::image2d& value, std::uint32_t side) {
    image = value;
    max_size = static_cast<std::uint32_t>(storage_demand(pixel_source(value), side));
}

void grTextureRectangle::upload(transfer_t transfer) {
    if (image.empty() || image.width == 0 || image.height == 0)
        return;
    const pixel_source_t source = pixel_source(image);
    const bool is_mapped = is_indexed(source);
    if (is_mapped)
        grPixelMapSet(true, image.palette);
    gl_triple_t triple;
    if (grFormatSelect(triple, image.format, image.type, image.bits, image.compressed)) {
        const gl_pixels_t pixels(source, triple);
        if (pixels.is_readable()) {
            pixels.set_swizzle(GL_TEXTURE_RECTANGLE);
            if (transfer == transfer_t::store)
                specify_image(GL_TEXTURE_RECTANGLE, 0, pixels.triple(), source.extent, 0, pixels.data());
            else
                replace_image(GL_TEXTURE_RECTANGLE, 0, pixels.triple(), source.extent, pixels.data());
        }
    }
    grTexParameter(parameters);
    if (is_mapped)
        grPixelMapSet(false, image.palette);
}

}  // namespace libgr
