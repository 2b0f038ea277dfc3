#include "gltextures/upload/gr_level_upload.h"

#include <algorithm>
#include <bit>
#include <iostream>
#include <limits>

#include "gltextures/gr_check_error.h"
#include "gltextures/upload/gr_image_calls.h"
#include "gltextures/upload/gr_unpacked_pixels.h"

namespace libgr {

stored_format_t stored_format(const pixel_source_t& source, const gl_triple_t& told) {
    if (!is_core_context())
        return {told};
    stored_format_t stored = core_format(told);
    if (!is_unpacked(source))
        return stored;
    if (told.format == GL_COLOR_INDEX)
        stored.triple = {GL_RGB8, GL_RGB, GL_UNSIGNED_BYTE};
    else
        stored.triple.type = GL_UNSIGNED_BYTE;
    return stored;
}

gl_pixels_t::gl_pixels_t(const pixel_source_t& source, const gl_triple_t& told)
    : extent(source.extent), stored(stored_format(source, told)), bytes(source.bytes) {
    if (!is_core_context() || !is_unpacked(source))
        return;
    unpacked = unpacked_pixels(source);
    bytes = unpacked.elements();
    tight.emplace();
}

bool gl_pixels_t::is_readable() const {
    return bytes_read_by_gl(stored.triple.format, stored.triple.type, extent) <= bytes.size();
}

void gl_pixels_t::set_swizzle(GLenum target) const {
    if (is_core_context())
        glTexParameteriv(target, GL_TEXTURE_SWIZZLE_RGBA, stored.swizzle.data());
}

namespace {

GLint gl_border(const level_place_t& place) {
    return place.border && place.level == 0 ? 1 : 0;
}

bool upload_compressed(const level_place_t& place, const pixel_source_t& source, GLenum internal_format) {
    if (!has_texture_compression()) {
        std::cerr << "error, ARB_texture_compression unsupported when compressed image loading, skip."
                  << std::endl;
        return false;
    }
    if (source.bytes.size() > std::numeric_limits<GLsizei>::max())
        return false;
    if (place.transfer == transfer_t::store)
        specify_compressed(place.image_target, place.level, internal_format, source.extent, gl_border(place),
                           source.bytes);
    else
        replace_compressed(place.image_target, place.level, internal_format, source.extent, source.bytes);
    return true;
}

void upload_padded(const level_place_t& place, const image_extent_t& extent, const gl_pixels_t& pixels) {
    const gl_triple_t& triple = pixels.triple();
    const std::uint32_t real_max = storage_side(place.max_size, place.border);
    specify_image(place.image_target, place.level, triple, {extent.dimensions, real_max, real_max, real_max},
                  gl_border(place), nullptr);
    if (grCheckError("before-tex-sub-image2d"))
        std::cerr << "internalformat: " << triple.internal_format << "\nm_border: " << place.border
                  << "\nformat: " << triple.format << "\ntype: " << triple.type << std::endl;
    replace_image(place.image_target, place.level, triple, extent, pixels.data());
    if (grCheckError("after-tex-sub-image2d"))
        std::cerr << "real_max: " << real_max << "\nm_width: " << extent.width
                  << "\nm_height: " << extent.height << "\nformat: " << triple.format
                  << "\ntype: " << triple.type << std::endl;
}

}  // namespace

bool upload_level(const level_place_t& place, const pixel_source_t& source, const gl_triple_t& triple) {
    if (source.compressed)
        return upload_compressed(place, source, triple.internal_format);
    const gl_pixels_t pixels(source, triple);
    if (!pixels.is_readable())
        return false;
    pixels.set_swizzle(place.texture_target);
    if (place.max_size != 0 && place.transfer == transfer_t::store) {
        upload_padded(place, source.extent, pixels);
        return true;
    }
    if (!place.is_mipmap_path)
        grCheckError("before-teximage2d(not-mipmap)");
    if (place.transfer == transfer_t::store)
        specify_image(place.image_target, place.level, pixels.triple(), source.extent, gl_border(place),
                      pixels.data());
    else
        replace_image(place.image_target, place.level, pixels.triple(), source.extent, pixels.data());
    grCheckError("after-teximage2d(not-mipmap)");
    return true;
}

void upload_built_mipmaps(const level_place_t& place, const pixel_source_t& source,
                          const gl_triple_t& triple) {
    {
        const gl_pixels_t pixels(source, triple);
        if (!pixels.is_readable())
            return;
        pixels.set_swizzle(place.texture_target);
        if (build_mipmaps(place.image_target, pixels.triple(), source.extent, pixels.data()))
            return;
    }
    if (upload_level(place, source, triple) && GLEW_VERSION_3_0)
        glGenerateMipmap(place.texture_target);
}

std::uint32_t storage_side(std::uint64_t max_size, bool border) {
    constexpr std::uint64_t largest = std::uint64_t{1} << 30U;
    const std::uint64_t border_texels = border ? 2 : 0;
    const std::uint64_t inner = max_size > border_texels ? max_size - border_texels : 0;
    return static_cast<std::uint32_t>(std::bit_ceil(std::min(inner, largest)) + border_texels);
}

}  // namespace libgr
