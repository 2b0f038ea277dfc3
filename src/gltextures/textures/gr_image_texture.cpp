#include "gltextures/textures/gr_image_texture.h"

namespace libgr {

std::uint64_t storage_demand(const pixel_source_t& image, std::uint64_t max_size) {
    if (max_size == 0)
        return 0;
    const auto& [dimensions, width, height, depth] = image.extent;
    return std::max({max_size, std::uint64_t{width}, std::uint64_t{height}, std::uint64_t{depth}});
}

GLenum internal_format_of(const pixel_source_t& image) {
    gl_triple_t triple;
    if (!grFormatSelect(triple, image.format, image.type, image.bits, image.compressed))
        return gl_no_object;
    return triple.internal_format;
}

}  // namespace libgr
