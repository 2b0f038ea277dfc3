#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iostream>
#include <vector>

#include "utils/pictures/image_target.h"
#include "utils/pictures/image_transforms.h"

namespace libutils {
namespace {

/// Pixels that are converted in one go: few enough to stay close to the processor.
constexpr std::size_t piece = 256;

/// A byte as a part of 1.
constexpr float byte_step = 0.003921569F;

/// A component of a unit vector as a signed byte, in the low byte of a word.
std::uint32_t signed_byte(float component) {
    // Half a step away from zero; what becomes of a negative zero does not show, as both halves are cut off.
    const float rounded = 127.0F * component + std::copysign(0.5F, component);
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(rounded)) & 0xFFU;
}

/// The normal of a pixel in the three low bytes of a word. The slopes are not above 1, so that the vector is
/// not shorter than 1 and always has a direction.
std::uint32_t normal_of(float here, float right, float above) {
    const float dx = right - here;
    const float dy = above - here;
    const float z = std::sqrt(1.0F - dx * dx) + std::sqrt(1.0F - dy * dy);
    const float length = std::sqrt(dx * dx + dy * dy + z * z);
    return signed_byte(dx / length) | signed_byte(dy / length) << 8 | signed_byte(z / length) << 16;
}

/// Heights of a row, and once more the first one behind the last.
void read_heights(const unsigned char* row, std::vector<float>& heights) {
    const std::size_t width = heights.size() - 1;
    for (std::size_t x = 0; x < width; ++x)
        heights[x] = static_cast<float>(row[x]) * byte_step;
    heights[width] = heights[0];
}

void write_normals(const std::vector<float>& here, const std::vector<float>& above, unsigned char* to) {
    const std::size_t width = here.size() - 1;
    std::array<std::uint32_t, piece> words{};
    for (std::size_t x = 0; x < width; x += piece) {
        const std::size_t count = std::min(piece, width - x);
        for (std::size_t i = 0; i < count; ++i)
            words[i] = normal_of(here[x + i], here[x + i + 1], above[x + i]);
        // A store of four bytes; the fourth is the next pixel's first.
        for (std::size_t i = 0; i + 1 < count; ++i)
            std::memcpy(to + 3 * (x + i), &words[i], sizeof words[i]);
        store_3(to + 3 * (x + count - 1), words[count - 1]);
    }
}

bool refuse_with(image2d& target, const image2d& source, const char* text) {
    std::cerr << text << '\n';
    return refuse(target, source);
}

/// Rows of normals from rows of heights, both aligned to 4 bytes and read from the windows' beginnings.
void convert_heights(image2d& target, const image2d& source, std::uint64_t target_line,
                     std::uint64_t source_line) {
    std::vector<float> here(std::size_t{source.width} + 1);
    std::vector<float> above(here.size());
    const unsigned char* const first = source.begin();
    unsigned char* to = target.begin();
    read_heights(first, here);
    for (std::uint32_t y = 0; y < source.height; ++y, to += target_line) {
        const std::uint32_t up = y + 1 < source.height ? y + 1 : 0;
        read_heights(first + up * source_line, above);
        write_normals(here, above, to);
        clear_row_end(to, std::uint64_t{source.width} * 3, target_line);
        here.swap(above);
    }
}

}  // namespace

bool heightmap2normalmap(image2d& target, const image2d& source) {
    const image2d from = source;
    if (from.compressed)
        return refuse_with(target, from, "normalmap(): compressed format not supported.");
    const bool of_bytes = from.bits == image_bits::bits_8;
    if (from.format == image_format::rgb && from.type <= image_type::unsigned_integer && of_bytes) {
        target = from;
        return true;
    }
    if (from.format != image_format::grey || from.type != image_type::unsigned_integer || !of_bytes)
        return refuse_with(target, from, "normalmap(): image type not supported.");

    const std::uint64_t source_line = row_size(from.width, 8, nullptr);
    const std::uint64_t target_line = row_size(from.width, 24, nullptr);
    set_header(target, image_format::rgb, image_type::signed_integer, from);
    target.pack = from.pack;
    // Rows that the pack record sets closer than 4 bytes still are written 4 bytes apart.
    const std::uint64_t line = std::max(target_line, target.linesize());
    if (!claim_window(target, size_product(from.height, line))) {
        std::cerr << "normalmap allocate() fail.\n";
        return refuse(target, from);
    }
    if (size_product(from.height, source_line) > from.elements().size())
        return refuse(target, from);
    if (from.width != 0 && from.height != 0)
        convert_heights(target, from, target_line, source_line);
    return true;
}

}  // namespace libutils
