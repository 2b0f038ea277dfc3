#pragma once

#include <GL/glew.h>

#include <span>

#include "gltextures/upload/gr_format.h"
#include "gltextures/upload/gr_pixel_source.h"

/// GL's calls for texture images, by the dimensions of the image. They act on the texture that is bound to
/// the target, which for a cube map is one of its faces.
namespace libgr {

/// New storage for a level, filled from `pixels` unless that is null.
void specify_image(GLenum target, GLint level, const gl_triple_t& triple, const image_extent_t& extent,
                   GLint border, const void* pixels);

/// Pixels into storage that is there, from its first pixel on.
void replace_image(GLenum target, GLint level, const gl_triple_t& triple, const image_extent_t& extent,
                   const void* pixels);

/// The same two with compressed data.
void specify_compressed(GLenum target, GLint level, GLenum internal_format, const image_extent_t& extent,
                        GLint border, std::span<const unsigned char> bytes);
void replace_compressed(GLenum target, GLint level, GLenum internal_format, const image_extent_t& extent,
                        std::span<const unsigned char> bytes);

/// A chain of levels that GLU makes on the host, scaled to powers of two. False when GLU does not know the
/// format, the type or images of these dimensions, of which it has one and two.
[[nodiscard]] bool build_mipmaps(GLenum target, const gl_triple_t& triple, const image_extent_t& extent,
                                 const void* pixels);

}  // namespace libgr
