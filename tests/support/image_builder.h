#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <random>
#include <vector>

#include "utils/pictures/image2d.h"

namespace ulk_test {

/// An unsigned image with its header set, but without bytes.
inline libutils::image2d image_header(std::uint32_t format, std::uint32_t bits, std::uint32_t width,
                                      std::uint32_t height) {
    libutils::image2d image;
    image.format = format;
    image.type = libutils::image_type::unsigned_integer;
    image.bits = bits;
    image.width = width;
    image.height = height;
    return image;
}

/// An unsigned image of 8 bits per channel. `bytes` has all its pixels, bottom row first, without row
/// padding.
inline libutils::image2d image_of(std::uint32_t format, std::uint32_t width, std::uint32_t height,
                                  std::initializer_list<int> bytes) {
    libutils::image2d image = image_header(format, libutils::image_bits::bits_8, width, height);
    EXPECT_TRUE(image.allocate());
    const std::size_t row = std::size_t{width} * libutils::channel_count(format);
    EXPECT_EQ(bytes.size(), row * height);
    std::size_t i = 0;
    for (const int byte : bytes) {
        image.pixel(0, static_cast<std::uint32_t>(i / row))[i % row] = static_cast<unsigned char>(byte);
        ++i;
    }
    return image;
}

/// The bytes of all pixels, bottom row first, without row padding.
inline std::vector<int> pixel_bytes(const libutils::image2d& image) {
    std::vector<int> bytes;
    EXPECT_TRUE(image.holds_pixels());
    if (image.holds_pixels())
        for (std::uint32_t y = 0; y < image.height; ++y)
            for (std::uint32_t i = 0; i < image.width * image.bitsperpixel() / 8; ++i)
                bytes.push_back(image.pixel(0, y)[i]);
    return bytes;
}

/// All bytes of the image's window, including row padding.
inline std::vector<int> window_bytes(const libutils::image2d& image) {
    const auto bytes = image.elements();
    return {bytes.begin(), bytes.end()};
}

inline void fill_randomly(libutils::image2d& image, std::mt19937& random) {
    for (unsigned char& byte : image.elements())
        byte = static_cast<unsigned char>(random());
}

}  // namespace ulk_test
