#include <array>
#include <cstddef>

#include "utils/pictures/image_target.h"
#include "utils/pictures/image_transforms.h"

namespace libutils {
namespace {

/// A colour in the three low bytes, in their order in memory.
using colours_t = std::array<std::uint32_t, 256>;

/// The colours of all indices that a byte can hold; black behind the palette.
colours_t colours_of(const palette_t& palette) {
    colours_t colours{};
    for (std::uint32_t i = 0; i < colours.size(); ++i) {
        const auto [red, green, blue] = palette.colour(i);
        colours[i] = red | std::uint32_t{green} << 8 | std::uint32_t{blue} << 16;
    }
    return colours;
}

/// Two pixels in a store of 8 bytes, of which the last two belong to the next pixel.
void expand_pair(unsigned first, unsigned second, unsigned char* to, const colours_t& colours) {
    const std::uint64_t both = colours[first] | std::uint64_t{colours[second]} << 24;
    std::memcpy(to, &both, sizeof both);
}

void expand_bytes(const unsigned char* from, unsigned char* to, std::size_t pixels,
                  const colours_t& colours) {
    std::size_t x = 0;
    for (; x + 8 < pixels; x += 8, from += 8, to += 24) {
        expand_pair(from[0], from[1], to, colours);
        expand_pair(from[2], from[3], to + 6, colours);
        expand_pair(from[4], from[5], to + 12, colours);
        expand_pair(from[6], from[7], to + 18, colours);
    }
    for (; x < pixels; ++x, ++from, to += 3)
        store_3(to, colours[*from]);
}

/// The pixel that comes first is in the high half of its byte. With `begins_low` the row begins with the low
/// half of its first byte.
void expand_halves(const unsigned char* from, bool begins_low, unsigned char* to, std::size_t pixels,
                   const colours_t& colours) {
    if (begins_low && pixels > 0) {
        store_3(to, colours[*from & 15]);
        ++from;
        to += 3;
        --pixels;
    }
    std::size_t x = 0;
    for (; x + 2 < pixels; x += 2)
        expand_pair(from[x / 2] >> 4, from[x / 2] & 15, to + 3 * x, colours);
    for (; x < pixels; ++x)
        store_3(to + 3 * x, colours[x % 2 == 0 ? from[x / 2] >> 4 : from[x / 2] & 15]);
}

}  // namespace

bool index2rgb(image2d& target, const image2d& source) {
    const image2d from = source;
    if (from.format != image_format::index) {
        target = from;
        return true;
    }
    if (from.compressed || !from.holds_pixels())
        return refuse(target, from);
    const bool of_bytes = from.bits == image_bits::bits_8;
    const bool of_halves = from.bits == image_bits::bits_4;
    if (!of_bytes && !of_halves)
        target.clear();
    set_header(target, image_format::rgb, image_type::unsigned_integer, from);
    if (!target.allocate())
        return refuse(target, from);
    const colours_t colours = colours_of(from.palette);
    if (of_bytes)
        convert_rows(target, from, [&](const unsigned char* indices, unsigned char* to) {
            expand_bytes(indices, to, from.width, colours);
        });
    else if (of_halves)
        convert_rows(target, from, [&](const unsigned char* indices, unsigned char* to) {
            expand_halves(indices, from.skip_x % 2 != 0, to, from.width, colours);
        });
    return of_bytes || of_halves;
}

}  // namespace libutils
