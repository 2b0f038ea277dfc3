#include "utils/codecs/png_library.h"

#include <array>
#include <cstring>
#include <iostream>

namespace libutils {
namespace {

struct pair_t {
    int library;
    std::uint32_t image;
};

constexpr std::array<pair_t, 5> colours{{
    {PNG_COLOR_TYPE_GRAY, image_format::grey},
    {PNG_COLOR_TYPE_GRAY_ALPHA, image_format::grey_alpha},
    {PNG_COLOR_TYPE_RGB, image_format::rgb},
    {PNG_COLOR_TYPE_RGB_ALPHA, image_format::rgba},
    {PNG_COLOR_TYPE_PALETTE, image_format::index},
}};

constexpr std::array<pair_t, 5> depths{{
    {1, image_bits::bits_1},
    {2, image_bits::bits_2},
    {4, image_bits::bits_4},
    {8, image_bits::bits_8},
    {16, image_bits::bits_16},
}};

template <std::size_t count>
bool to_image(const std::array<pair_t, count>& pairs, int library, std::uint32_t& image) {
    for (const pair_t& pair : pairs)
        if (pair.library == library) {
            image = pair.image;
            return true;
        }
    return false;
}

template <std::size_t count>
bool to_library(const std::array<pair_t, count>& pairs, std::uint32_t image, int& library) {
    for (const pair_t& pair : pairs)
        if (pair.image == image) {
            library = pair.library;
            return true;
        }
    return false;
}

}  // namespace

bool same_png_version(const char* header, const char* source) {
    if (std::strcmp(header, source) == 0)
        return true;
    std::cerr << "libpng version different.\n  header: " << header << "\n  source: " << source << '\n';
    return false;
}

int report_png_failure() {
    std::cerr << "FAIL\n";
    return png_code::failed;
}

bool png_colour_to_format(int colour_type, std::uint32_t& format) {
    return to_image(colours, colour_type, format);
}

bool png_format_to_colour(std::uint32_t format, int& colour_type) {
    return to_library(colours, format, colour_type);
}

bool png_depth_to_bits(int depth, std::uint32_t& bits) {
    return to_image(depths, depth, bits);
}

bool png_bits_to_depth(std::uint32_t bits, int& depth) {
    return to_library(depths, bits, depth);
}

std::vector<png_bytep> png_rows(const image2d& image) {
    std::vector<png_bytep> rows(image.height);
    // The library's type for rows has no const; it does not write to what it writes to a file.
    for (std::uint32_t y = 0; y < image.height; ++y)
        rows[y] = const_cast<png_bytep>(image.pixel(0, image.height - 1 - y));
    return rows;
}

}  // namespace libutils
