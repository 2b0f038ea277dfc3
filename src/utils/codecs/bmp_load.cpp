#include <algorithm>
#include <array>

#include "utils/codecs/bmp_file.h"
#include "utils/files/picture_files.h"
#include "utils/memory/byteorder.h"

namespace libutils {
namespace {

constexpr std::uint32_t info_header_offset = sizeof(tagBITMAPFILEHEADER);
constexpr std::uint32_t headers_size = sizeof(tagBITMAPFILEHEADER) + sizeof(tagBITMAPINFOHEADER);

struct depth_row_t {
    std::uint16_t bit_count;
    bool has_palette;
    std::uint32_t format;
    std::uint32_t bits;
};

/// What the pixels of each kind of file are. 24 bits drop a palette, 32 bits refuse one.
constexpr std::array<depth_row_t, 9> depth_rows{{
    {1, true, image_format::index, image_bits::bits_1},
    {4, true, image_format::index, image_bits::bits_4},
    {8, true, image_format::index, image_bits::bits_8},
    {24, true, image_format::bgr, image_bits::bits_8},
    {1, false, image_format::grey, image_bits::bits_1},
    {4, false, image_format::grey, image_bits::bits_4},
    {8, false, image_format::grey, image_bits::bits_8},
    {24, false, image_format::bgr, image_bits::bits_8},
    {32, false, image_format::bgra, image_bits::bits_8},
}};

const depth_row_t* find_depth(std::uint16_t bit_count, bool has_palette) {
    const auto row = std::ranges::find_if(depth_rows, [=](const depth_row_t& candidate) {
        return candidate.bit_count == bit_count && candidate.has_palette == has_palette;
    });
    return row != depth_rows.end() ? &*row : nullptr;
}

bool copy_palette(palette_t& palette, const bmp_file_t& bmp) {
    const auto colours = bmp.palette.elements();
    if (!palette.allocate(static_cast<std::uint32_t>(colours.size())))
        return false;
    for (std::uint32_t i = 0; i < palette.count; ++i)
        palette.set(i, colours[i].rgbRed, colours[i].rgbGreen, colours[i].rgbBlue);
    return true;
}

}  // namespace

bool load(bmp_file_t& bmp, const char* path) {
    image_window_t file;
    if (!map_picture(path, file) || file.size() < headers_size)
        return false;
    bmp.file_header = {file, 0, 1};
    bmp.info_header = {file, info_header_offset, 1};
    const std::uint32_t pixel_offset = intel_to_host32(bmp.file_header.front().bfOffBits);
    const std::uint64_t palette_end = std::clamp<std::uint64_t>(pixel_offset, headers_size, file.size());
    bmp.palette = {file, headers_size, (palette_end - headers_size) / sizeof(tagRGBQUAD)};
    bmp.pixels = {file, std::min<std::uint64_t>(pixel_offset, file.size())};
    return true;
}

bool convert(image2d& image, const bmp_file_t& bmp) {
    if (bmp.info_header.elements().empty())
        return false;
    const tagBITMAPINFOHEADER& header = bmp.info_header.front();
    if (intel_to_host32(header.biCompression) != 0)
        return false;
    const std::uint16_t bit_count = intel_to_host16(header.biBitCount);
    const depth_row_t* const depth = find_depth(bit_count, !bmp.palette.elements().empty());
    if (depth == nullptr)
        return false;
    image = {};
    if (depth->format == image_format::index && !copy_palette(image.palette, bmp))
        return false;
    image.format = depth->format;
    image.type = image_type::unsigned_integer;
    image.bits = depth->bits;
    image.width = intel_to_host32(static_cast<std::uint32_t>(header.biWidth));
    image.height = intel_to_host32(static_cast<std::uint32_t>(header.biHeight));
    static_cast<image_window_t&>(image) = bmp.pixels;
    return true;
}

bool load_bmp(image2d& image, const char* path) {
    bmp_file_t bmp;
    return load(bmp, path) && convert(image, bmp);
}

}  // namespace libutils
