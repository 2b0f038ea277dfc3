#include "gltextures/upload/gr_core_format.h"

namespace libgr {

namespace {

struct core_pixels_t {
    GLenum format;
    GLenum core;
    std::array<GLint, 4> swizzle;
};

constexpr core_pixels_t core_pixels[] = {
    {GL_LUMINANCE, GL_RED, {GL_RED, GL_RED, GL_RED, GL_ONE}},
    {GL_LUMINANCE_ALPHA, GL_RG, {GL_RED, GL_RED, GL_RED, GL_GREEN}},
    {GL_INTENSITY, GL_RED, {GL_RED, GL_RED, GL_RED, GL_RED}},
    {GL_ALPHA, GL_RED, {GL_ZERO, GL_ZERO, GL_ZERO, GL_RED}},
};

struct core_storage_t {
    GLenum internal_format;
    GLenum core;
};

constexpr core_storage_t core_storage[] = {
    {GL_LUMINANCE, GL_RED},
    {GL_LUMINANCE4, GL_R8},
    {GL_LUMINANCE8, GL_R8},
    {GL_LUMINANCE12, GL_R16},
    {GL_LUMINANCE16, GL_R16},
    {GL_LUMINANCE16F_ARB, GL_R16F},
    {GL_LUMINANCE32F_ARB, GL_R32F},
    {GL_LUMINANCE_ALPHA, GL_RG},
    {GL_LUMINANCE4_ALPHA4, GL_RG8},
    {GL_LUMINANCE6_ALPHA2, GL_RG8},
    {GL_LUMINANCE8_ALPHA8, GL_RG8},
    {GL_LUMINANCE12_ALPHA4, GL_RG16},
    {GL_LUMINANCE12_ALPHA12, GL_RG16},
    {GL_LUMINANCE16_ALPHA16, GL_RG16},
    {GL_LUMINANCE_ALPHA16F_ARB, GL_RG16F},
    {GL_LUMINANCE_ALPHA32F_ARB, GL_RG32F},
    {GL_INTENSITY, GL_RED},
    {GL_INTENSITY4, GL_R8},
    {GL_INTENSITY8, GL_R8},
    {GL_INTENSITY12, GL_R16},
    {GL_INTENSITY16, GL_R16},
    {GL_INTENSITY16F_ARB, GL_R16F},
    {GL_INTENSITY32F_ARB, GL_R32F},
    {GL_ALPHA, GL_RED},
    {GL_ALPHA4, GL_R8},
    {GL_ALPHA12, GL_R16},
    {GL_ALPHA16, GL_R16},
    {GL_ALPHA16F_ARB, GL_R16F},
    {GL_ALPHA32F_ARB, GL_R32F},
    {GL_COMPRESSED_ALPHA, GL_COMPRESSED_RED},
};

struct signed_storage_t {
    GLenum internal_format;
    GLenum type;
    GLenum core;
};

constexpr signed_storage_t signed_storage[] = {
    {GL_RGB, GL_BYTE, GL_RGB8_SNORM},     {GL_RGB8, GL_BYTE, GL_RGB8_SNORM},
    {GL_RGB16, GL_SHORT, GL_RGB16_SNORM}, {GL_RGBA, GL_BYTE, GL_RGBA8_SNORM},
    {GL_RGBA8, GL_BYTE, GL_RGBA8_SNORM},  {GL_RGBA16, GL_SHORT, GL_RGBA16_SNORM},
};

}  // namespace

bool is_core_context() {
    GLint profile = 0;
    glGetIntegerv(GL_CONTEXT_PROFILE_MASK, &profile);
    return (profile & GL_CONTEXT_CORE_PROFILE_BIT) != 0;
}

stored_format_t core_format(const gl_triple_t& triple) {
    stored_format_t stored{triple};
    for (const signed_storage_t& row : signed_storage)
        if (row.internal_format == triple.internal_format && row.type == triple.type)
            stored.triple.internal_format = row.core;
    for (const core_pixels_t& row : core_pixels) {
        if (row.format == triple.format) {
            stored.triple.format = row.core;
            stored.swizzle = row.swizzle;
        }
    }
    for (const core_storage_t& row : core_storage)
        if (row.internal_format == triple.internal_format)
            stored.triple.internal_format = row.core;
    return stored;
}

}  // namespace libgr
