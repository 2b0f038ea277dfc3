#include <cstddef>
#include <iostream>
#include <utility>

#include "utils/pictures/image_target.h"
#include "utils/pictures/image_transforms.h"

namespace libutils {
namespace {

/// A row of means of four from two rows. `column_step` is the way from one output pixel to the next in the
/// source, in pixels.
void mean_row(const unsigned char* lower, const unsigned char* upper, unsigned char* to, std::size_t pixels,
              std::size_t channels, std::size_t column_step) {
    for (std::size_t x = 0; x < pixels; ++x)
        for (std::size_t channel = 0; channel < channels; ++channel) {
            const std::size_t left = x * column_step * channels + channel;
            const std::size_t right = left + channels;
            const int sum = lower[left] + lower[right] + upper[left] + upper[right];
            to[x * channels + channel] = static_cast<unsigned char>(sum >> 2);
        }
}

bool can_scale(std::uint32_t format) {
    return format == image_format::grey || format == image_format::rgb || format == image_format::rgba ||
           format == image_format::bgr || format == image_format::bgra;
}

/// Where a pixel of a picture of `width` by `height` comes to lie.
std::pair<std::uint32_t, std::uint32_t> turned_place(std::uint32_t quarter_turns, std::uint32_t x,
                                                     std::uint32_t y, std::uint32_t width,
                                                     std::uint32_t height) {
    switch (quarter_turns) {
        case 1:
            return {height - 1 - y, x};
        case 2:
            return {width - 1 - x, height - 1 - y};
        default:
            return {y, width - 1 - x};
    }
}

void turn_pixels(std::uint32_t quarter_turns, image2d& target, const image2d& source) {
    const std::size_t pixel_size = source.bitsperpixel() / 8;
    const std::uint64_t source_line = source.linesize();
    const std::uint64_t target_line = target.linesize();
    for (std::uint32_t y = 0; y < source.height; ++y) {
        const unsigned char* from = source.begin() + (std::uint64_t{source.skip_y} + y) * source_line +
                                    std::uint64_t{source.skip_x} * pixel_size;
        for (std::uint32_t x = 0; x < source.width; ++x, from += pixel_size) {
            const auto [to_x, to_y] = turned_place(quarter_turns, x, y, source.width, source.height);
            std::memcpy(target.begin() + to_y * target_line + to_x * pixel_size, from, pixel_size);
        }
    }
}

}  // namespace

bool scaledown(image2d& target, const image2d& source) {
    const image2d from = source;
    if (from.compressed)
        return refuse(target, from);
    set_header(target, from.format, from.type, from);
    target.bits = from.bits;
    target.width = from.width / 2;
    target.height = from.height / 2;
    if (!target.allocate()) {
        std::cerr << "scaledown(): allocate() fail.\n";
        return refuse(target, from);
    }
    if (!can_scale(from.format)) {
        std::cerr << "scaledown(): " << from.format << ": unsupported format.\n";
        return refuse(target, from);
    }
    // The bit code plays no part, as long as each channel has its byte.
    const std::uint32_t channels = channel_count(from.format);
    if (from.bitsperpixel() < channels * 8 || !from.holds_pixels())
        return refuse(target, from);
    if (target.width == 0)
        return true;
    // Grey goes on by one source byte for each byte that it makes, and so shows the left half.
    const std::size_t column_step = from.format == image_format::grey ? 1 : 2;
    const std::uint64_t source_line = from.linesize();
    for (std::uint32_t y = 0; y < target.height; ++y) {
        const unsigned char* const lower = from.pixel(0, 2 * y);
        unsigned char* const to = target.pixel(0, y);
        mean_row(lower, lower + source_line, to, target.width, channels, column_step);
        clear_row_end(to, std::uint64_t{target.width} * channels, target.linesize());
    }
    return true;
}

bool rotate(std::uint32_t quarter_turns, image2d& target, const image2d& source) {
    const image2d from = source;
    if (quarter_turns == 0) {
        target = from;
        return true;
    }
    if (quarter_turns > 3 || from.compressed || from.bitsperpixel() % 8 != 0 || !from.holds_pixels())
        return refuse(target, from);
    set_header(target, from.format, from.type, from);
    target.bits = from.bits;
    target.palette = from.palette;
    if (quarter_turns != 2)
        std::swap(target.width, target.height);
    if (!target.allocate())
        return refuse(target, from);
    const std::uint64_t used = std::uint64_t{target.width} * target.bitsperpixel() / 8;
    for (std::uint32_t y = 0; y < target.height && target.width != 0; ++y)
        clear_row_end(target.pixel(0, y), used, target.linesize());
    turn_pixels(quarter_turns, target, from);
    return true;
}

bool tight_copy(image2d& target, const image2d& source) {
    const image2d from = source;
    if (from.compressed || !from.holds_pixels())
        return refuse(target, from);
    set_header(target, from.format, from.type, from);
    target.bits = from.bits;
    target.pack = from.pack;
    target.palette = from.palette;
    if (!target.allocate())
        return refuse(target, from);
    // Whole bytes only: the pixels that share a row's last byte with what follows them are not copied.
    const std::uint64_t used = std::uint64_t{from.width} * from.bitsperpixel() / 8;
    convert_rows(target, from,
                 [used](const unsigned char* pixels, unsigned char* to) { std::memcpy(to, pixels, used); });
    return true;
}

}  // namespace libutils
