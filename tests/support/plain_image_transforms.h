#pragma once

#include <array>
#include <cmath>
#include <cstdint>

#include "utils/pictures/image2d.h"

/// The image transforms by their definition, pixel by pixel, without shortcuts: the reference for the results
/// and the speed of the library's own. They take images that those accept, and write the bytes of the
/// target's rows one after the other.
namespace ulk_test {

/// Makes `target`, which is new or of the same kind already, an image of 8 bits per channel with the size of
/// `source`.
inline void plain_target(libutils::image2d& target, const libutils::image2d& source, std::uint32_t format,
                         std::uint32_t type) {
    target.format = format;
    target.type = type;
    target.bits = libutils::image_bits::bits_8;
    target.width = source.width;
    target.height = source.height;
    if (!target.allocate())
        target.clear();
}

/// Converts between RGB and BGR, or between RGBA and BGRA; `format` is that of the target.
inline void plain_swap(libutils::image2d& target, const libutils::image2d& source, std::uint32_t format) {
    plain_target(target, source, format, source.type);
    const std::uint32_t channels = libutils::channel_count(format);
    for (std::uint32_t y = 0; y < source.height; ++y) {
        const unsigned char* from = source.pixel(0, y);
        unsigned char* to = target.pixel(0, y);
        for (std::uint32_t x = 0; x < source.width; ++x, from += channels, to += channels) {
            to[0] = from[2];
            to[1] = from[1];
            to[2] = from[0];
            if (channels == 4)
                to[3] = from[3];
        }
    }
}

inline void plain_index2rgb(libutils::image2d& target, const libutils::image2d& source) {
    plain_target(target, source, libutils::image_format::rgb, libutils::image_type::unsigned_integer);
    const libutils::palette_t& palette = source.palette;
    for (std::uint32_t y = 0; y < source.height; ++y) {
        const unsigned char* const from = source.pixel(0, y);
        unsigned char* to = target.pixel(0, y);
        for (std::uint32_t x = 0; x < source.width; ++x, to += 3) {
            std::uint32_t index = 0;
            if (source.bits == libutils::image_bits::bits_8) {
                index = from[x];
            } else {
                const std::uint32_t half = source.skip_x % 2 + x;
                index = half % 2 == 0 ? from[half / 2] >> 4 : from[half / 2] & 15;
            }
            const bool known = index < palette.count;
            to[0] = known ? static_cast<unsigned char>(palette.red.at(index) >> 8) : 0;
            to[1] = known ? static_cast<unsigned char>(palette.green.at(index) >> 8) : 0;
            to[2] = known ? static_cast<unsigned char>(palette.blue.at(index) >> 8) : 0;
        }
    }
}

inline void plain_rgb2grey(libutils::image2d& target, const libutils::image2d& source) {
    plain_target(target, source, libutils::image_format::grey, libutils::image_type::unsigned_integer);
    for (std::uint32_t y = 0; y < source.height; ++y) {
        const unsigned char* from = source.pixel(0, y);
        unsigned char* to = target.pixel(0, y);
        for (std::uint32_t x = 0; x < source.width; ++x, from += 3, ++to) {
            const float sum = static_cast<float>(from[1]) * 0.587F + static_cast<float>(from[0]) * 0.299F +
                              static_cast<float>(from[2]) * 0.114F;
            *to = static_cast<unsigned char>(sum);
        }
    }
}

using plain_normal_t = std::array<float, 3>;

inline plain_normal_t plain_normalize(const plain_normal_t& v) {
    const float length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    if (length == 0)
        return {0, 0, 0};
    return {v[0] / length, v[1] / length, v[2] / length};
}

inline void plain_heightmap2normalmap(libutils::image2d& target, const libutils::image2d& source) {
    plain_target(target, source, libutils::image_format::rgb, libutils::image_type::signed_integer);
    const std::uint64_t source_line = (std::uint64_t{source.width} + 3) / 4 * 4;
    const std::uint64_t target_line = (std::uint64_t{source.width} * 3 + 3) / 4 * 4;
    const auto h = [&](std::uint32_t x, std::uint32_t y) {
        return static_cast<float>(source.begin()[y * source_line + x]) * 0.003921569F;
    };
    for (std::uint32_t y = 0; y < source.height; ++y)
        for (std::uint32_t x = 0; x < source.width; ++x) {
            const std::uint32_t x1 = (x + 1) % source.width;
            const std::uint32_t y1 = (y + 1) % source.height;
            const float dx = h(x1, y) - h(x, y);
            const float dy = h(x, y1) - h(x, y);
            plain_normal_t normal =
                plain_normalize({dx, dy, std::sqrt(1.0F - dx * dx) + std::sqrt(1.0F - dy * dy)});
            if (normal == plain_normal_t{0, 0, 0})
                normal[2] = 1;
            unsigned char* const to = target.begin() + y * target_line + std::uint64_t{x} * 3;
            for (std::size_t i = 0; i < normal.size(); ++i) {
                const float c = normal[i];
                to[i] =
                    static_cast<unsigned char>(static_cast<signed char>(127.0F * c + (c < 0 ? -0.5F : 0.5F)));
            }
        }
}

}  // namespace ulk_test
