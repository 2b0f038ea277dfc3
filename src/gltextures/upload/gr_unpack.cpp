#include "gltextures/upload/gr_unpack.h"

#include <algorithm>
#include <limits>

namespace libgr {

namespace {

struct unpack_value_t {
    GLenum name;
    GLint tight;
};

constexpr std::array<unpack_value_t, 8> unpack_values{{
    {GL_UNPACK_SWAP_BYTES, 0},
    {GL_UNPACK_ALIGNMENT, 1},
    {GL_UNPACK_ROW_LENGTH, 0},
    {GL_UNPACK_IMAGE_HEIGHT, 0},
    {GL_UNPACK_SKIP_PIXELS, 0},
    {GL_UNPACK_SKIP_ROWS, 0},
    {GL_UNPACK_SKIP_IMAGES, 0},
    {GL_UNPACK_LSB_FIRST, 0},
}};

/// A value that GL can not take becomes its largest one, with which no image holds its pixels.
void set_pixel_store(GLenum name, std::uint32_t value) {
    constexpr std::uint32_t most = std::numeric_limits<GLint>::max();
    glPixelStorei(name, static_cast<GLint>(std::min(value, most)));
}

std::uint64_t pixel_store(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return static_cast<std::uint64_t>(value);
}

std::uint64_t channels_of(GLenum format) {
    switch (format) {
        case GL_RG:
        case GL_LUMINANCE_ALPHA:
            return 2;
        case GL_RGB:
        case GL_BGR:
            return 3;
        case GL_RGBA:
        case GL_BGRA:
            return 4;
        default:
            return 1;
    }
}

/// Bits of a pixel in memory, 0 for a type that is none.
std::uint64_t pixel_bits(GLenum format, GLenum type) {
    switch (type) {
        case GL_BITMAP:
            return channels_of(format);
        case GL_BYTE:
        case GL_UNSIGNED_BYTE:
            return 8 * channels_of(format);
        case GL_SHORT:
        case GL_UNSIGNED_SHORT:
        case GL_HALF_FLOAT:
            return 16 * channels_of(format);
        case GL_INT:
        case GL_UNSIGNED_INT:
        case GL_FLOAT:
            return 32 * channels_of(format);
        case GL_UNSIGNED_BYTE_2_3_3_REV:
            return 8;
        case GL_UNSIGNED_SHORT_5_6_5_REV:
        case GL_UNSIGNED_SHORT_4_4_4_4_REV:
        case GL_UNSIGNED_SHORT_1_5_5_5_REV:
            return 16;
        case GL_UNSIGNED_INT_2_10_10_10_REV:
            return 32;
        default:
            return 0;
    }
}

std::uint64_t sum(std::uint64_t a, std::uint64_t b) {
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    return a > most - b ? most : a + b;
}

}  // namespace

void set_unpack_state(const pixel_source_t& source) {
    constexpr libutils::pack_t unswapped;
    const libutils::pack_t& pack = source.pack != nullptr ? *source.pack : unswapped;
    glPixelStorei(GL_UNPACK_SWAP_BYTES, pack.swap);
    glPixelStorei(GL_UNPACK_ALIGNMENT, pack.alignment != 0 ? static_cast<GLint>(pack.alignment) : 4);
    if (source.extent.dimensions > 1)
        set_pixel_store(GL_UNPACK_ROW_LENGTH, source.row_length);
    if (source.extent.dimensions > 2)
        set_pixel_store(GL_UNPACK_IMAGE_HEIGHT, source.image_height);
    set_pixel_store(GL_UNPACK_SKIP_PIXELS, source.skip_pixels);
    if (source.extent.dimensions > 1)
        set_pixel_store(GL_UNPACK_SKIP_ROWS, source.skip_rows);
    if (source.extent.dimensions > 2)
        set_pixel_store(GL_UNPACK_SKIP_IMAGES, source.skip_images);
}

tight_unpack_t::tight_unpack_t() {
    for (std::size_t i = 0; i < unpack_values.size(); ++i) {
        glGetIntegerv(unpack_values[i].name, &saved[i]);
        glPixelStorei(unpack_values[i].name, unpack_values[i].tight);
    }
}

tight_unpack_t::~tight_unpack_t() {
    for (std::size_t i = 0; i < unpack_values.size(); ++i)
        glPixelStorei(unpack_values[i].name, saved[i]);
}

std::uint64_t bytes_read_by_gl(GLenum format, GLenum type, const image_extent_t& extent) {
    const auto& [dimensions, width, height, depth] = extent;
    const std::uint64_t bits = pixel_bits(format, type);
    if (bits == 0 || width == 0 || height == 0 || depth == 0)
        return 0;
    const auto or_size = [](std::uint64_t value, std::uint32_t size) { return value != 0 ? value : size; };
    const std::uint64_t alignment = pixel_store(GL_UNPACK_ALIGNMENT);
    const std::uint64_t row_bytes = (or_size(pixel_store(GL_UNPACK_ROW_LENGTH), width) * bits + 7) / 8;
    const std::uint64_t line = (row_bytes + alignment - 1) / alignment * alignment;
    const std::uint64_t last_row = pixel_store(GL_UNPACK_SKIP_ROWS) + height - 1;
    const std::uint64_t end_of_row = ((pixel_store(GL_UNPACK_SKIP_PIXELS) + width) * bits + 7) / 8;
    const std::uint64_t last_image_bytes = sum(libutils::size_product(last_row, line), end_of_row);
    if (dimensions < 3)
        return last_image_bytes;
    const std::uint64_t image =
        libutils::size_product(or_size(pixel_store(GL_UNPACK_IMAGE_HEIGHT), height), line);
    const std::uint64_t images_before = pixel_store(GL_UNPACK_SKIP_IMAGES) + depth - 1;
    return sum(libutils::size_product(images_before, image), last_image_bytes);
}

}  // namespace libgr
