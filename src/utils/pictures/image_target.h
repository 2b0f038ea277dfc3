#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "utils/pictures/image2d.h"

/// How the transforms set their targets up. Each works on a shallow copy of its source, so that the target
/// may be the same object: a block that two hold is left alone when the target takes bytes.
namespace libutils {

/// Gives `target` the header of a fresh image, 8 bits a channel, and the size of `source`.
inline void set_header(image2d& target, std::uint32_t format, std::uint32_t type, const image2d& source) {
    target.format = format;
    target.type = type;
    target.bits = image_bits::bits_8;
    target.pack = nullptr;
    target.row_length = 0;
    target.skip_x = 0;
    target.skip_y = 0;
    target.width = source.width;
    target.height = source.height;
    target.compressed = false;
    target.palette = {};
}

/// What a refused transform leaves, and its result.
[[nodiscard]] inline bool refuse(image2d& target, const image2d& source) {
    target = source;
    return false;
}

/// Zeros behind `used` bytes of a row of `line` bytes: the block may be one that was used before.
inline void clear_row_end(unsigned char* row, std::uint64_t used, std::uint64_t line) {
    if (used < line)
        std::memset(row + used, 0, line - used);
}

/// Calls `convert(from, to)` with the first pixels of each row of both images, which are of one size, and
/// clears what follows in the target's rows.
template <class Convert>
void convert_rows(image2d& target, const image2d& source, Convert convert) {
    if (target.width == 0 || target.height == 0)
        return;
    const std::uint64_t target_line = target.linesize();
    const std::uint64_t source_line = source.linesize();
    const std::uint64_t used = std::uint64_t{target.width} * target.bitsperpixel() / 8;
    unsigned char* to = target.pixel(0, 0);
    const unsigned char* from = source.pixel(0, 0);
    for (std::uint32_t y = 0; y < target.height; ++y, to += target_line, from += source_line) {
        convert(from, to);
        clear_row_end(to, used, target_line);
    }
}

/// Stores the three low bytes of `word`.
inline void store_3(unsigned char* to, std::uint32_t word) {
    to[0] = static_cast<unsigned char>(word);
    to[1] = static_cast<unsigned char>(word >> 8);
    to[2] = static_cast<unsigned char>(word >> 16);
}

}  // namespace libutils
