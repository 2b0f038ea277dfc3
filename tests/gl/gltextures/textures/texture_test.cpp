#include "gl/gltextures/textures/texture_test.h"

#include <EGL/egl.h>

#include <algorithm>
#include <bit>

namespace ulk_test {

namespace {

using libutils::image2d;
namespace image_format = libutils::image_format;

template <class Image>
void set_codes(Image& image, std::uint32_t format) {
    image.format = format;
    image.type = libutils::image_type::unsigned_integer;
    image.bits = libutils::image_bits::bits_8;
}

/// Copies tight rows to where the image has them.
template <class Image>
void fill(Image& image, const bytes_t& pixels, std::size_t row_bytes) {
    ASSERT_TRUE(image.allocate());
    ASSERT_EQ(pixels.size() % row_bytes, 0U);
    for (std::size_t row = 0; row < pixels.size() / row_bytes; ++row)
        std::copy_n(pixels.begin() + static_cast<std::ptrdiff_t>(row * row_bytes), row_bytes,
                    image.begin() + row * image.linesize());
}

}  // namespace

image2d image_of(std::uint32_t format, std::uint32_t width, std::uint32_t height, const bytes_t& pixels) {
    image2d image;
    set_codes(image, format);
    image.width = width;
    image.height = height;
    fill(image, pixels, std::size_t{width} * libutils::channel_count(format));
    return image;
}

image2d plain_image(std::uint32_t width, std::uint32_t height, std::array<std::uint8_t, 4> colour) {
    return image_of(image_format::rgba, width, height,
                    repeated(std::size_t{width} * height, {colour.begin(), colour.end()}));
}

libutils::image1d row_image(const bytes_t& rgba) {
    libutils::image1d image;
    set_codes(image, image_format::rgba);
    image.width = static_cast<std::uint32_t>(rgba.size() / 4);
    fill(image, rgba, rgba.size());
    return image;
}

libutils::image3d volume_image(std::uint32_t width, std::uint32_t height, std::uint32_t depth,
                               const bytes_t& rgba) {
    libutils::image3d image;
    set_codes(image, image_format::rgba);
    image.width = width;
    image.height = height;
    image.depth = depth;
    fill(image, rgba, std::size_t{width} * 4);
    return image;
}

GLint level_parameter(GLenum target, GLint level, GLenum parameter) {
    GLint value = -1;
    glGetTexLevelParameteriv(target, level, parameter, &value);
    return value;
}

GLint texture_parameter(GLenum target, GLenum parameter) {
    GLint value = -1;
    glGetTexParameteriv(target, parameter, &value);
    return value;
}

rgba_float_t border_color_of(GLenum target) {
    rgba_float_t color{};
    glGetTexParameterfv(target, GL_TEXTURE_BORDER_COLOR, color.data());
    return color;
}

libutils::image2d unsupported_image() {
    libutils::image2d image = plain_image(2, 2, {1, 2, 3, 4});
    image.format = 7;
    return image;
}

bytes_t repeated(std::size_t count, const bytes_t& colour) {
    bytes_t bytes(count * colour.size());
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = colour[i % colour.size()];
    return bytes;
}

bytes_t stored_bytes(GLenum target, GLint level) {
    const auto width = static_cast<std::size_t>(level_parameter(target, level, GL_TEXTURE_WIDTH));
    const auto height = static_cast<std::size_t>(level_parameter(target, level, GL_TEXTURE_HEIGHT));
    const auto depth = static_cast<std::size_t>(level_parameter(target, level, GL_TEXTURE_DEPTH));
    bytes_t bytes(width * height * depth * 4);
    glGetTexImage(target, level, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
    return bytes;
}

namespace {

constexpr const char* vertex_source = R"(#version 330
void main() { gl_Position = vec4(gl_VertexID == 1 ? 3 : -1, gl_VertexID == 2 ? 3 : -1, 0, 1); }
)";
constexpr const char* plane_source = R"(#version 330
uniform sampler2D map;
uniform int level;
out vec4 colour;
void main() { colour = texelFetch(map, ivec2(gl_FragCoord.xy), level); }
)";
constexpr const char* rectangle_source = R"(#version 330
uniform sampler2DRect map;
out vec4 colour;
void main() { colour = texelFetch(map, ivec2(gl_FragCoord.xy)); }
)";

GLuint linked_program(const char* fragment_source) {
    const GLuint program = glCreateProgram();
    for (const auto& [kind, source] :
         {std::pair{GL_VERTEX_SHADER, vertex_source}, {GL_FRAGMENT_SHADER, fragment_source}}) {
        const GLuint shader = glCreateShader(static_cast<GLenum>(kind));
        glShaderSource(shader, 1, &source, nullptr);
        glCompileShader(shader);
        glAttachShader(program, shader);
        glDeleteShader(shader);
    }
    glLinkProgram(program);
    GLint linked = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    EXPECT_EQ(linked, GL_TRUE);
    return program;
}

/// A target of floats, bound while it lives.
class float_target_t {
  public:
    float_target_t(GLsizei width, GLsizei height) {
        glGenRenderbuffers(1, &renderbuffer);
        glBindRenderbuffer(GL_RENDERBUFFER, renderbuffer);
        glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA32F, width, height);
        glGenFramebuffers(1, &framebuffer);
        glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, renderbuffer);
        glViewport(0, 0, width, height);
    }
    ~float_target_t() {
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        glDeleteFramebuffers(1, &framebuffer);
        glDeleteRenderbuffers(1, &renderbuffer);
    }
    float_target_t(const float_target_t&) = delete;
    float_target_t& operator=(const float_target_t&) = delete;

  private:
    GLuint renderbuffer = 0;
    GLuint framebuffer = 0;
};

}  // namespace

std::vector<rgba_float_t> shown_texels(GLenum target, GLint level) {
    const GLint width = level_parameter(target, level, GL_TEXTURE_WIDTH);
    const GLint height = level_parameter(target, level, GL_TEXTURE_HEIGHT);
    if (width <= 0 || height <= 0)
        return {};
    std::vector<rgba_float_t> texels(static_cast<std::size_t>(width * height));
    const float_target_t picture(width, height);
    const GLuint program = linked_program(target == GL_TEXTURE_RECTANGLE ? rectangle_source : plane_source);
    GLuint vertices = 0;
    glGenVertexArrays(1, &vertices);
    glBindVertexArray(vertices);
    glUseProgram(program);
    glUniform1i(glGetUniformLocation(program, "level"), level);
    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    glDrawArrays(GL_TRIANGLES, 0, 3);
    GLint clamped = 0;
    glGetIntegerv(GL_CLAMP_READ_COLOR, &clamped);
    glClampColor(GL_CLAMP_READ_COLOR, GL_FIXED_ONLY);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_FLOAT, texels.data());
    glClampColor(GL_CLAMP_READ_COLOR, static_cast<GLenum>(clamped));
    glUseProgram(0);
    glDeleteProgram(program);
    glBindVertexArray(0);
    glDeleteVertexArrays(1, &vertices);
    return texels;
}

void gl_flags_t::without_compression() {
    __GLEW_VERSION_1_3 = GL_FALSE;
    __GLEW_ARB_texture_compression = GL_FALSE;
}

gl_flags_t::~gl_flags_t() {
    __GLEW_VERSION_1_3 = version_1_3;
    __GLEW_VERSION_3_0 = version_3_0;
    __GLEW_ARB_texture_compression = compression;
    __GLEW_SGIS_generate_mipmap = mipmap_flag;
}

namespace {

std::vector<compressed_calls_t::call_t> noted_calls;

void GLAPIENTRY note_image_1d(GLenum target, GLint level, GLenum format, GLsizei width, GLint border,
                              GLsizei length, const void* data) {
    noted_calls.push_back({"image 1d", target, level, format, {width}, border, length, data});
}

void GLAPIENTRY note_image_2d(GLenum target, GLint level, GLenum format, GLsizei width, GLsizei height,
                              GLint border, GLsizei length, const void* data) {
    noted_calls.push_back({"image 2d", target, level, format, {width, height}, border, length, data});
}

void GLAPIENTRY note_image_3d(GLenum target, GLint level, GLenum format, GLsizei width, GLsizei height,
                              GLsizei depth, GLint border, GLsizei length, const void* data) {
    noted_calls.push_back({"image 3d", target, level, format, {width, height, depth}, border, length, data});
}

void GLAPIENTRY note_part_2d(GLenum target, GLint level, GLint, GLint, GLsizei width, GLsizei height,
                             GLenum format, GLsizei length, const void* data) {
    noted_calls.push_back({"refill 2d", target, level, format, {width, height}, -1, length, data});
}

}  // namespace

compressed_calls_t::compressed_calls_t()
    : image_1d(__glewCompressedTexImage1D),
      image_2d(__glewCompressedTexImage2D),
      image_3d(__glewCompressedTexImage3D),
      part_2d(__glewCompressedTexSubImage2D) {
    noted_calls.clear();
    __glewCompressedTexImage1D = note_image_1d;
    __glewCompressedTexImage2D = note_image_2d;
    __glewCompressedTexImage3D = note_image_3d;
    __glewCompressedTexSubImage2D = note_part_2d;
}

compressed_calls_t::~compressed_calls_t() {
    __glewCompressedTexImage1D = image_1d;
    __glewCompressedTexImage2D = image_2d;
    __glewCompressedTexImage3D = image_3d;
    __glewCompressedTexSubImage2D = part_2d;
}

const std::vector<compressed_calls_t::call_t>& compressed_calls_t::calls() {
    return noted_calls;
}

legacy_context_t::legacy_context_t()
    : display(eglGetCurrentDisplay()),
      surface(eglGetCurrentSurface(EGL_DRAW)),
      former(eglGetCurrentContext()) {
    EGLint config_id = 0;
    eglQueryContext(display, former, EGL_CONFIG_ID, &config_id);
    const EGLint wanted[] = {EGL_CONFIG_ID, config_id, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    eglChooseConfig(display, wanted, &config, 1, &count);
    context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
    current = context != EGL_NO_CONTEXT && eglMakeCurrent(display, surface, surface, context) == EGL_TRUE;
}

legacy_context_t::~legacy_context_t() {
    eglMakeCurrent(display, surface, surface, former);
    if (context != EGL_NO_CONTEXT)
        eglDestroyContext(display, context);
}

namespace {

constexpr GLenum unpack_values[] = {GL_UNPACK_SWAP_BYTES,  GL_UNPACK_ROW_LENGTH, GL_UNPACK_IMAGE_HEIGHT,
                                    GL_UNPACK_SKIP_PIXELS, GL_UNPACK_SKIP_ROWS,  GL_UNPACK_SKIP_IMAGES};

void reset_unpack_state() {
    for (const GLenum name : unpack_values)
        glPixelStorei(name, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
}

}  // namespace

void texture_test::SetUp() {
    gl_test::SetUp();
    reset_unpack_state();
}

void texture_test::TearDown() {
    for (const bound_t& texture : bound) {
        glBindTexture(texture.target, 0);
        glDeleteTextures(1, &texture.name);
    }
    reset_unpack_state();
    gl_test::TearDown();
}

GLuint texture_test::bind_fresh(GLenum target) {
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(target, name);
    glTexParameteri(target, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(target, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    bound.push_back({target, name});
    return name;
}

}  // namespace ulk_test
