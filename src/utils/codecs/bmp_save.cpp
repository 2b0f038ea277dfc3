#include <algorithm>
#include <array>
#include <iostream>
#include <limits>
#include <utility>

#include "utils/codecs/bmp_file.h"
#include "utils/codecs/file_rows.h"
#include "utils/files/byte_output.h"
#include "utils/memory/byteorder.h"
#include "utils/pictures/image_transforms.h"

namespace libutils {
namespace {

constexpr std::uint16_t magic = 'B' | 'M' << 8;
constexpr std::uint32_t pixel_offset = sizeof(tagBITMAPFILEHEADER) + sizeof(tagBITMAPINFOHEADER);
constexpr std::uint64_t most_pixel_bytes = std::numeric_limits<std::uint32_t>::max() - pixel_offset;
constexpr std::int32_t resolution = 72;

struct depth_row_t {
    std::uint32_t format;
    std::uint32_t bits;
    std::uint16_t bit_count;
};

constexpr std::array<depth_row_t, 4> depth_rows{{
    {image_format::grey, image_bits::bits_1, 1},
    {image_format::grey, image_bits::bits_4, 4},
    {image_format::grey, image_bits::bits_8, 8},
    {image_format::bgr, image_bits::bits_8, 24},
}};

/// The bits of a pixel in the file; 0 for an image that a bitmap can not hold.
std::uint16_t bit_count_of(const image2d& image) {
    if (image.type > image_type::unsigned_integer)
        return 0;
    const auto row = std::ranges::find_if(depth_rows, [&image](const depth_row_t& candidate) {
        return candidate.format == image.format && candidate.bits == image.bits;
    });
    return row != depth_rows.end() ? row->bit_count : std::uint16_t{0};
}

void put16(byte_output& file, std::uint16_t value) {
    const std::uint16_t stored = intel_to_host16(value);
    file.write(&stored, sizeof stored);
}

void put32(byte_output& file, std::uint32_t value) {
    const std::uint32_t stored = intel_to_host32(value);
    file.write(&stored, sizeof stored);
}

void put_info_header(byte_output& file, const tagBITMAPINFOHEADER& header) {
    put32(file, sizeof header);
    put32(file, static_cast<std::uint32_t>(header.biWidth));
    put32(file, static_cast<std::uint32_t>(header.biHeight));
    put16(file, header.biPlanes);
    put16(file, header.biBitCount);
    put32(file, header.biCompression);
    put32(file, header.biSizeImage);
    put32(file, static_cast<std::uint32_t>(header.biXPelsPerMeter));
    put32(file, static_cast<std::uint32_t>(header.biYPelsPerMeter));
    put32(file, header.biClrUsed);
    put32(file, header.biClrImportant);
}

}  // namespace

bool convert(bmp_save_t& bmp, const image2d& image) {
    if (image.compressed)
        return false;
    const std::uint16_t bit_count = bit_count_of(image);
    if (bit_count == 0) {
        std::cerr << "convert(to bmp): not supported format.\n";
        return false;
    }
    if (!file_rows(bmp.pixels, image) || bmp.pixels.elements().size() > most_pixel_bytes)
        return false;
    bmp.info_header = {};
    bmp.info_header.biSize = sizeof bmp.info_header;
    bmp.info_header.biWidth = static_cast<std::int32_t>(image.width);
    bmp.info_header.biHeight = static_cast<std::int32_t>(image.height);
    bmp.info_header.biPlanes = 1;
    bmp.info_header.biBitCount = bit_count;
    bmp.info_header.biSizeImage = static_cast<std::uint32_t>(bmp.pixels.elements().size());
    bmp.info_header.biXPelsPerMeter = resolution;
    bmp.info_header.biYPelsPerMeter = resolution;
    return true;
}

bool save(const bmp_save_t& bmp, const char* path) {
    image_window_t window = bmp.pixels;
    if (bmp.pixels.elements().size() > most_pixel_bytes || !unmap_bytes(window))
        return false;
    const auto pixels = std::as_const(window).elements();
    byte_output file(path, fifo_t::refuse);
    put16(file, magic);
    put32(file, pixel_offset + static_cast<std::uint32_t>(pixels.size()));
    put16(file, 0);
    put16(file, 0);
    put32(file, pixel_offset);
    put_info_header(file, bmp.info_header);
    file.write(pixels.data(), pixels.size());
    return file.complete();
}

// Grey images too could be stored, but only what has its channels exchanged gets so far.
bool save_bmp(const image2d& image, const char* path) {
    image2d bgr;
    bmp_save_t bmp;
    return rgb2bgr(bgr, image) && convert(bmp, bgr) && save(bmp, path);
}

}  // namespace libutils
