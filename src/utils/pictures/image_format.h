#pragma once

#include <array>
#include <cstdint>

#include "utils/memory/alloc_new.h"
#include "utils/memory/refvector.h"
#include "utils/memory/sizes.h"

/// What the image records of one, two and three dimensions have in common: their codes, the palette and the
/// arithmetic of rows.
namespace libutils {

/// Codes of `format`: the channels of a pixel, in the order of their bytes. 17 is the last one; the codes
/// without a name here have channels too, and nothing makes them.
namespace image_format {
inline constexpr std::uint32_t grey = 0;
inline constexpr std::uint32_t grey_alpha = 1;
inline constexpr std::uint32_t rgb = 8;
inline constexpr std::uint32_t rgba = 9;
inline constexpr std::uint32_t bgr = 10;
inline constexpr std::uint32_t bgra = 11;
inline constexpr std::uint32_t ycbcr = 14;
inline constexpr std::uint32_t index = 17;
}  // namespace image_format

/// Codes of `type`: what the bits of a channel are.
namespace image_type {
inline constexpr std::uint32_t signed_integer = 0;
inline constexpr std::uint32_t unsigned_integer = 1;
inline constexpr std::uint32_t floating_point = 2;
}  // namespace image_type

/// Codes of `bits`: bits of a channel up to 8, bits of a whole pixel, its channels packed, from 9 on. The
/// packed names give the bits of the channels.
namespace image_bits {
inline constexpr std::uint32_t bits_1 = 0;
inline constexpr std::uint32_t bits_2 = 1;
inline constexpr std::uint32_t bits_4 = 2;
inline constexpr std::uint32_t bits_8 = 3;
inline constexpr std::uint32_t bits_12 = 4;
inline constexpr std::uint32_t bits_16 = 5;
inline constexpr std::uint32_t bits_24 = 6;
inline constexpr std::uint32_t bits_32 = 7;
inline constexpr std::uint32_t bits_64 = 8;
inline constexpr std::uint32_t packed_3_3_2 = 9;
inline constexpr std::uint32_t packed_5_6_5 = 10;
inline constexpr std::uint32_t packed_5_5_5_1 = 11;
inline constexpr std::uint32_t packed_10_10_10_2 = 12;
inline constexpr std::uint32_t packed_6_2 = 13;
inline constexpr std::uint32_t packed_12_4 = 14;
inline constexpr std::uint32_t packed_depth_stencil = 15;
}  // namespace image_bits

/// How rows are laid out in memory. Records point at one that lives for the whole run; without one the bytes
/// are not swapped and rows are aligned to 4 bytes.
struct pack_t {
    /// The two bytes of each 16-bit channel stand in the other order than the machine's.
    bool swap = false;
    /// Rows begin at a multiple of this many bytes; 0 means 4.
    std::uint64_t alignment = 0;
};

/// Rows of whole bytes, without a gap.
inline constexpr pack_t tight_rows{.alignment = 1};

/// The colours of an indexed image. Copies share the channels.
struct palette_t {
    using channel_t = refvector<unsigned short, alloc_new>;

    /// The number of colours.
    std::uint32_t count = 0;
    /// One entry of 16 bits for each colour; an 8-bit value c stands as c times 257, and readers take the
    /// high byte.
    channel_t red;
    channel_t green;
    channel_t blue;

    /// Takes `colours` black entries in channels of its own; 0 drops the channels.
    [[nodiscard]] bool allocate(std::uint32_t colours);
    /// Sets an entry below `count` from 8-bit values.
    void set(std::uint32_t i, unsigned char r, unsigned char g, unsigned char b);
    /// Red, green and blue of an entry in 8 bits; black for one that is not in the channels.
    std::array<unsigned char, 3> colour(std::uint32_t i) const;
};

/// Channels of a format code. A code above 17 is a fault of the program and traps.
std::uint32_t channel_count(std::uint32_t format);

/// Bits of a whole pixel. A format code above 17 or a bit code above 15 is a fault of the program and traps.
std::uint32_t bits_per_pixel(std::uint32_t format, std::uint32_t bits);

/// Bytes of a row of `pixels` pixels: whole bytes, then whole alignments of `pack`, which may be null. All
/// ones when the number does not fit.
std::uint64_t row_size(std::uint64_t pixels, std::uint32_t pixel_bits, const pack_t* pack);

}  // namespace libutils
