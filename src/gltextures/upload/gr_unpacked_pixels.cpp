#include "gltextures/upload/gr_unpacked_pixels.h"

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

/// Where the rows of a source lie in its bytes.
struct row_places_t {
    row_places_t(const pixel_source_t& source, std::uint32_t bits)
        : line(row_size(source.row_length != 0 ? source.row_length : source.extent.width, bits, source.pack)),
          image(size_product(source.image_height != 0 ? source.image_height : source.extent.height, line)),
          first(source.skip_images * image + source.skip_rows * line) {}

    std::uint64_t line;
    std::uint64_t image;
    std::uint64_t first;
};

bool holds_rows(const pixel_source_t& source, std::uint32_t bits) {
    const row_places_t places(source, bits);
    const std::uint64_t rows = std::uint64_t{source.skip_rows} + source.extent.height;
    const std::uint64_t size = source.bytes.size();
    const std::uint64_t images = std::uint64_t{source.skip_images} + source.extent.depth - 1;
    const std::uint64_t before = size_product(images, places.image);
    const std::uint64_t pixels = std::uint64_t{source.skip_pixels} + source.extent.width;
    const std::uint64_t row_end = (pixels * bits + 7) / 8;
    const std::uint64_t last_row = size_product(rows - 1, places.line);
    return before <= size && last_row <= size - before && row_end <= size - before - last_row;
}

std::uint32_t pixel_value(const unsigned char* row, std::uint64_t x, std::uint32_t bits) {
    const std::uint64_t bit = x * bits;
    const auto shift = static_cast<std::uint32_t>(8 - bits - bit % 8);
    return (std::uint32_t{row[bit / 8]} >> shift) & ((1U << bits) - 1U);
}

void append_pixel(std::vector<unsigned char>& pixels, const pixel_source_t& source, std::uint32_t value,
                  std::uint32_t bits) {
    if (source.format == image_format::index) {
        const auto colour = source.palette->colour(value);
        pixels.insert(pixels.end(), colour.begin(), colour.end());
    } else {
        pixels.push_back(static_cast<unsigned char>(value * 255U / ((1U << bits) - 1U)));
    }
}

}  // namespace

std::optional<std::vector<unsigned char>> unpacked_pixels(const pixel_source_t& source) {
    const std::uint32_t bits = packed_bits(source);
    if (bits == 0)
        return std::nullopt;
    std::vector<unsigned char> pixels;
    const auto& [dimensions, width, height, depth] = source.extent;
    if (width == 0 || height == 0 || depth == 0 || !holds_rows(source, bits))
        return pixels;
    const row_places_t places(source, bits);
    for (std::uint32_t z = 0; z < depth; ++z) {
        for (std::uint32_t y = 0; y < height; ++y) {
            const unsigned char* const row =
                source.bytes.data() + places.first + z * places.image + y * places.line;
            for (std::uint32_t x = 0; x < width; ++x) {
                const std::uint64_t column = std::uint64_t{source.skip_pixels} + x;
                append_pixel(pixels, source, pixel_value(row, column, bits), bits);
            }
        }
    }
    return pixels;
}

}  // namespace libgr
