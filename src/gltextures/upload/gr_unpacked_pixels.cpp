#include "gltextures/upload/gr_unpacked_pixels.h"

#include <algorithm>

#include "gltextures/upload/gr_pixel_rows.h"

namespace libgr {

namespace {

using namespace libutils;

/// Bits of a pixel that has to be unpacked, 0 for one that has not.
std::uint32_t packed_bits(const pixel_source_t& source) {
    if (source.type != image_type::unsigned_integer)
        return 0;
    const bool indexed = source.format == image_format::index;
    if (!indexed && source.format != image_format::grey)
        return 0;
    switch (source.bits) {
        case image_bits::bits_1:
            return 1;
        case image_bits::bits_4:
            return indexed ? 0 : 4;
        case image_bits::bits_8:
            return indexed ? 8 : 0;
        default:
            return 0;
    }
}

std::uint64_t unpacked_size(const pixel_source_t& source) {
    const auto& [dimensions, width, height, depth] = source.extent;
    const std::uint64_t pixel_bytes = source.format == image_format::index ? 3 : 1;
    return size_product(size_product(std::uint64_t{width} * height, depth), pixel_bytes);
}

std::uint32_t pixel_value(const unsigned char* row, std::uint64_t x, std::uint32_t bits) {
    const std::uint64_t bit = x * bits;
    const auto shift = static_cast<std::uint32_t>(8 - bits - bit % 8);
    return (std::uint32_t{row[bit / 8]} >> shift) & ((1U << bits) - 1U);
}

/// Writes a pixel and returns the place of the next one.
unsigned char* put_pixel(unsigned char* to, const pixel_source_t& source, std::uint32_t value,
                         std::uint32_t bits) {
    if (source.format == image_format::index)
        return std::ranges::copy(source.palette->colour(value), to).out;
    *to = static_cast<unsigned char>(value * 255U / ((1U << bits) - 1U));
    return to + 1;
}

}  // namespace

bool is_unpacked(const pixel_source_t& source) {
    return packed_bits(source) != 0;
}

image_window_t unpacked_pixels(const pixel_source_t& source) {
    image_window_t pixels;
    const std::uint64_t size = unpacked_size(source);
    if (size == 0 || !holds_rows(source) || !fit_window(pixels, size))
        return pixels;
    const std::uint32_t bits = packed_bits(source);
    const auto& [dimensions, width, height, depth] = source.extent;
    const pixel_rows_t rows(source);
    unsigned char* to = pixels.begin();
    for (std::uint32_t z = 0; z < depth; ++z) {
        for (std::uint32_t y = 0; y < height; ++y) {
            const unsigned char* const row =
                source.bytes.data() + rows.first + z * rows.image + y * rows.line;
            for (std::uint32_t x = 0; x < width; ++x)
                to = put_pixel(to, source, pixel_value(row, std::uint64_t{source.skip_pixels} + x, bits),
                               bits);
        }
    }
    return pixels;
}

}  // namespace libgr
