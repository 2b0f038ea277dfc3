#pragma once

#include <GL/glew.h>

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "support/gl_context.h"
#include "utils/pictures/image1d.h"
#include "utils/pictures/image2d.h"
#include "utils/pictures/image3d.h"

namespace ulk_test {

using bytes_t = std::vector<std::uint8_t>;
using rgba_float_t = std::array<float, 4>;

/// A grey, RGB, RGBA or indexed image of 8-bit unsigned channels, its rows aligned to 4 bytes. `pixels` are
/// tight, row 0 first.
libutils::image2d image_of(std::uint32_t format, std::uint32_t width, std::uint32_t height,
                           const bytes_t& pixels);
/// An RGBA image of one colour.
libutils::image2d plain_image(std::uint32_t width, std::uint32_t height, std::array<std::uint8_t, 4> colour);
libutils::image1d row_image(const bytes_t& rgba);
libutils::image3d volume_image(std::uint32_t width, std::uint32_t height, std::uint32_t depth,
                               const bytes_t& rgba);

/// An image of a format that no texture takes, and what is said of it.
libutils::image2d unsupported_image();
inline constexpr const char* unsupported_7 =
    "Not supported image format!\nimgformat: 7\nimgtype: 1\nimgbits: 3\n";
/// The bytes of `count` pixels of one colour.
bytes_t repeated(std::size_t count, const bytes_t& colour);

/// A channel of a level as GL stores it, in bytes; RGBA of all texels.
bytes_t stored_bytes(GLenum target, GLint level = 0);
/// A level of the texture bound to GL_TEXTURE_2D, or of the rectangle texture, as a shader sees it.
std::vector<rgba_float_t> shown_texels(GLenum target = GL_TEXTURE_2D, GLint level = 0);
GLint level_parameter(GLenum target, GLint level, GLenum parameter);
GLint texture_parameter(GLenum target, GLenum parameter);
rgba_float_t border_color_of(GLenum target);

/// The loader's flags of what GL has; those of a scope's beginning are back at its end.
class gl_flags_t {
  public:
    gl_flags_t() = default;
    ~gl_flags_t();
    gl_flags_t(const gl_flags_t&) = delete;
    gl_flags_t& operator=(const gl_flags_t&) = delete;

    void without_gl_3_0() { __GLEW_VERSION_3_0 = GL_FALSE; }
    void with_mipmap_flag() { __GLEW_SGIS_generate_mipmap = GL_TRUE; }
    void without_mipmap_flag() { __GLEW_SGIS_generate_mipmap = GL_FALSE; }
    void without_compression();

  private:
    GLboolean version_1_3 = __GLEW_VERSION_1_3;
    GLboolean version_3_0 = __GLEW_VERSION_3_0;
    GLboolean compression = __GLEW_ARB_texture_compression;
    GLboolean mipmap_flag = __GLEW_SGIS_generate_mipmap;
};

/// Arguments of a call that hands compressed data to GL. While it lives, such calls are noted here and do not
/// reach GL, which knows no compressed form of the formats that images have.
class compressed_calls_t {
  public:
    struct call_t {
        std::string function;
        GLenum target;
        GLint level;
        GLenum format;
        std::vector<GLsizei> extent;
        GLint border;  ///< -1 for a call that has none
        GLsizei length;
        const void* data;
    };

    compressed_calls_t();
    ~compressed_calls_t();
    compressed_calls_t(const compressed_calls_t&) = delete;
    compressed_calls_t& operator=(const compressed_calls_t&) = delete;

    static const std::vector<call_t>& calls();

  private:
    PFNGLCOMPRESSEDTEXIMAGE1DPROC image_1d;
    PFNGLCOMPRESSEDTEXIMAGE2DPROC image_2d;
    PFNGLCOMPRESSEDTEXIMAGE3DPROC image_3d;
    PFNGLCOMPRESSEDTEXSUBIMAGE2DPROC part_2d;
};

/// A context with the old formats, made current for a scope; the test's one is back after. `is_current()` is
/// false where the driver has none.
class legacy_context_t {
  public:
    legacy_context_t();
    ~legacy_context_t();
    legacy_context_t(const legacy_context_t&) = delete;
    legacy_context_t& operator=(const legacy_context_t&) = delete;

    bool is_current() const { return current; }

  private:
    void* display;
    void* surface;
    void* former;
    void* context = nullptr;
    bool current = false;
};

/// Base of tests of uploads: a fresh texture can be bound, and the unpack state is GL's own at the beginning
/// and at the end.
class texture_test : public gl_test {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// Binds a new texture, unfiltered.
    GLuint bind_fresh(GLenum target);

  private:
    struct bound_t {
        GLenum target;
        GLuint name;
    };
    std::vector<bound_t> bound;
};

}  // namespace ulk_test
