#pragma once

#include <cstdint>

#include "model/math/records.h"

/// Conversions of colours between bytes and floats, and between RGB and YCbCr in bytes.
namespace ulk3d {

/// One 255th, with the value that every file and image conversion uses.
inline constexpr float byte_scale = 0.003921569F;

/// Matrices for row vectors. Channels are in 0..1, Cb and Cr in -1..1 (of which half is used).
inline constexpr mtx3w ycbcr_to_rgb_matrix{{1, 1, 1, 0,               //
                                            0, -0.34414F, 1.772F, 0,  //
                                            1.402F, -0.71414F, 0, 0,  //
                                            0, 0, 0, 1}};
inline constexpr mtx3w rgb_to_ycbcr_matrix{{0.299F, -0.16874F, 0.5F, 0,       //
                                            0.587F, -0.33126F, -0.41869F, 0,  //
                                            0.114F, 0.5F, -0.08131F, 0,       //
                                            0, 0, 0, 1}};

constexpr float byte_to_channel(std::uint8_t byte) {
    return static_cast<float>(byte) * byte_scale;
}

/// Treats not-a-number as 1, then clamps to 0..1 and rounds to 0..255.
std::uint8_t channel_to_byte(float channel);

col3a bytes_to_colour(const col3aub& bytes);
col3aub colour_to_bytes(const col3a& colour);

/// On the YCbCr side r, g and b hold the bytes Y, Cb and Cr, where 128 is the zero of Cb and Cr.
col3ub ycbcr_to_rgb(const col3ub& ycbcr);
col3ub rgb_to_ycbcr(const col3ub& rgb);

}  // namespace ulk3d
