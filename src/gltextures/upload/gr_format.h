#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <span>

namespace libgr {

/// How GL is to store the pixels of an image, and how they lie in memory.
struct gl_triple_t {
    GLenum internal_format = 0;
    GLenum format = 0;
    GLenum type = 0;
    bool operator==(const gl_triple_t&) const = default;
};

/// One combination of codes that has a triple.
struct format_cell_t {
    std::uint32_t type;
    std::uint32_t bits;
    GLenum internal_format;
    GLenum gl_type;
};

/// The combinations of an image format code. A format without cells is not supported.
struct format_row_t {
    std::uint32_t format;
    GLenum gl_format;
    std::span<const format_cell_t> cells;
};

/// All image formats that have a GL format, by rising code.
std::span<const format_row_t> format_rows();

/// The GL triple of an image's codes (utils/pictures/image_format.h).
///
/// It is the same on every context, with the formats that a core context no longer has, and with those that
/// GL refuses at the upload. With `compress` GL_ALPHA becomes GL_COMPRESSED_ALPHA; the other formats have no
/// compressed form here.
///
/// For a combination without a triple: false, and four lines on the standard error stream, "Not supported
/// image format!", "imgformat: " with the format, "imgtype: " with the type, "imgbits: " with the bits.
[[nodiscard]] bool grFormatSelect(gl_triple_t& out, std::uint32_t format, std::uint32_t type,
                                  std::uint32_t bits, bool compress);

/// True when compressed images can be handed to the current context: by the extension, or by GL itself, which
/// has had them since 1.3, so that core contexts no longer list the extension.
bool has_texture_compression();

}  // namespace libgr
