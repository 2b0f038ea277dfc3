#include "gltextures/upload/gr_image_calls.h"

namespace libgr {

namespace {

/// The sizes as GL takes them. One that is too large becomes negative, which GL refuses.
struct gl_sizes_t {
    explicit gl_sizes_t(const image_extent_t& extent)
        : width(static_cast<GLsizei>(extent.width)),
          height(static_cast<GLsizei>(extent.height)),
          depth(static_cast<GLsizei>(extent.depth)) {}

    GLsizei width;
    GLsizei height;
    GLsizei depth;
};

GLint as_integer(GLenum internal_format) {
    return static_cast<GLint>(internal_format);
}

}  // namespace

void specify_image(GLenum target, GLint level, const gl_triple_t& triple, const image_extent_t& extent,
                   GLint border, const void* pixels) {
    const gl_sizes_t size(extent);
    const auto& [internal_format, format, type] = triple;
    switch (extent.dimensions) {
        case 1:
            return glTexImage1D(target, level, as_integer(internal_format), size.width, border, format, type,
                                pixels);
        case 2:
            return glTexImage2D(target, level, as_integer(internal_format), size.width, size.height, border,
                                format, type, pixels);
        default:
            return glTexImage3D(target, level, as_integer(internal_format), size.width, size.height,
                                size.depth, border, format, type, pixels);
    }
}

void replace_image(GLenum target, GLint level, const gl_triple_t& triple, const image_extent_t& extent,
                   const void* pixels) {
    const gl_sizes_t size(extent);
    switch (extent.dimensions) {
        case 1:
            return glTexSubImage1D(target, level, 0, size.width, triple.format, triple.type, pixels);
        case 2:
            return glTexSubImage2D(target, level, 0, 0, size.width, size.height, triple.format, triple.type,
                                   pixels);
        default:
            return glTexSubImage3D(target, level, 0, 0, 0, size.width, size.height, size.depth, triple.format,
                                   triple.type, pixels);
    }
}

void specify_compressed(GLenum target, GLint level, GLenum internal_format, const image_extent_t& extent,
                        GLint border, std::span<const unsigned char> bytes) {
    const gl_sizes_t size(extent);
    const auto length = static_cast<GLsizei>(bytes.size());
    switch (extent.dimensions) {
        case 1:
            return glCompressedTexImage1D(target, level, internal_format, size.width, border, length,
                                          bytes.data());
        case 2:
            return glCompressedTexImage2D(target, level, internal_format, size.width, size.height, border,
                                          length, bytes.data());
        default:
            return glCompressedTexImage3D(target, level, internal_format, size.width, size.height, size.depth,
                                          border, length, bytes.data());
    }
}

void replace_compressed(GLenum target, GLint level, GLenum internal_format, const image_extent_t& extent,
                        std::span<const unsigned char> bytes) {
    const gl_sizes_t size(extent);
    const auto length = static_cast<GLsizei>(bytes.size());
    switch (extent.dimensions) {
        case 1:
            return glCompressedTexSubImage1D(target, level, 0, size.width, internal_format, length,
                                             bytes.data());
        case 2:
            return glCompressedTexSubImage2D(target, level, 0, 0, size.width, size.height, internal_format,
                                             length, bytes.data());
        default:
            return glCompressedTexSubImage3D(target, level, 0, 0, 0, size.width, size.height, size.depth,
                                             internal_format, length, bytes.data());
    }
}

bool build_mipmaps(GLenum target, const gl_triple_t& triple, const image_extent_t& extent,
                   const void* pixels) {
    const gl_sizes_t size(extent);
    const GLint internal_format = as_integer(triple.internal_format);
    switch (extent.dimensions) {
        case 1:
            return gluBuild1DMipmaps(target, internal_format, size.width, triple.format, triple.type,
                                     pixels) == 0;
        case 2:
            return gluBuild2DMipmaps(target, internal_format, size.width, size.height, triple.format,
                                     triple.type, pixels) == 0;
        default:
            return false;
    }
}

}  // namespace libgr
