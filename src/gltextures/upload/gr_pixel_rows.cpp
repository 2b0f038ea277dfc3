#include "gltextures/upload/gr_pixel_rows.h"

namespace libgr {

using libutils::size_product;

namespace {

std::uint32_t pixel_bits(const pixel_source_t& source) {
    return libutils::bits_per_pixel(source.format, source.bits);
}

}  // namespace

pixel_rows_t::pixel_rows_t(const pixel_source_t& source)
    : line(libutils::row_size(source.row_length != 0 ? source.row_length : source.extent.width,
                              pixel_bits(source), source.pack)),
      image(size_product(source.image_height != 0 ? source.image_height : source.extent.height, line)),
      first(source.skip_images * image + source.skip_rows * line) {}

bool holds_rows(const pixel_source_t& source) {
    const auto& [dimensions, width, height, depth] = source.extent;
    if (width == 0 || height == 0 || depth == 0)
        return true;
    const pixel_rows_t rows(source);
    const std::uint64_t size = source.bytes.size();
    const std::uint64_t before = size_product(std::uint64_t{source.skip_images} + depth - 1, rows.image);
    const std::uint64_t last_row = size_product(std::uint64_t{source.skip_rows} + height - 1, rows.line);
    const std::uint64_t pixels = std::uint64_t{source.skip_pixels} + width;
    const std::uint64_t row_end = (size_product(pixels, pixel_bits(source)) + 7) / 8;
    return before <= size && last_row <= size - before && row_end <= size - before - last_row;
}

}  // namespace libgr
