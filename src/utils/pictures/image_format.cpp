#include "utils/pictures/image_format.h"

#include <algorithm>

namespace libutils {
namespace {

/// By format code.
constexpr std::array<std::uint8_t, 18> channel_counts{1, 2, 1, 1, 1, 1, 1, 2, 3, 4, 3, 4, 1, 2, 3, 4, 2, 1};

struct bit_size_t {
    std::uint8_t bits;
    bool of_pixel;
};

/// By bit code.
constexpr std::array<bit_size_t, 16> bit_sizes{{{1, false},
                                                {2, false},
                                                {4, false},
                                                {8, false},
                                                {12, false},
                                                {16, false},
                                                {24, false},
                                                {32, false},
                                                {64, false},
                                                {8, true},
                                                {16, true},
                                                {16, true},
                                                {32, true},
                                                {8, true},
                                                {16, true},
                                                {32, true}}};

/// Elements of a channel: its size counts the bytes of the allocation with a header of 32 bytes.
std::uint64_t entries(const palette_t::channel_t& channel) {
    constexpr std::uint64_t header = 32;
    return channel.size() > header ? (channel.size() - header) / sizeof(unsigned short) : 0;
}

}  // namespace

bool palette_t::allocate(std::uint32_t colours) {
    *this = {};
    for (channel_t* channel : {&red, &green, &blue})
        if (!channel->allocate(colours))
            return false;
    count = colours;
    return true;
}

void palette_t::set(std::uint32_t i, unsigned char r, unsigned char g, unsigned char b) {
    const auto doubled = [](unsigned char value) { return static_cast<unsigned short>(value * 257); };
    red.at(i) = doubled(r);
    green.at(i) = doubled(g);
    blue.at(i) = doubled(b);
}

std::array<unsigned char, 3> palette_t::colour(std::uint32_t i) const {
    const auto high_byte = [this, i](const channel_t& channel) -> unsigned char {
        const bool there = i < count && i < entries(channel);
        return there ? static_cast<unsigned char>(channel.at(i) >> 8) : static_cast<unsigned char>(0);
    };
    return {high_byte(red), high_byte(green), high_byte(blue)};
}

std::uint32_t channel_count(std::uint32_t format) {
    if (format >= channel_counts.size())
        __builtin_trap();
    return channel_counts[format];
}

std::uint32_t bits_per_pixel(std::uint32_t format, std::uint32_t bits) {
    const std::uint32_t channels = channel_count(format);
    if (bits >= bit_sizes.size())
        __builtin_trap();
    const bit_size_t size = bit_sizes[bits];
    return size.of_pixel ? size.bits : size.bits * channels;
}

std::uint64_t row_size(std::uint64_t pixels, std::uint32_t pixel_bits, const pack_t* pack) {
    const std::uint64_t alignment = pack != nullptr && pack->alignment != 0 ? pack->alignment : 4;
    const std::uint64_t bit_count = size_product(pixels, pixel_bits);
    if (bit_count == no_size)
        return no_size;
    const std::uint64_t bytes = bit_count / 8 + (bit_count % 8 != 0 ? 1 : 0);
    const std::uint64_t past = bytes % alignment;
    if (past == 0)
        return bytes;
    return size_sum(bytes, alignment - past);
}

}  // namespace libutils
